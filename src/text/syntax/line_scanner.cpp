#include "text/syntax/line_scanner.h"

#include "text/syntax/number_scan.h"

#include <algorithm>

namespace velmora {

namespace {

bool isBlank(QChar unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\f' || unit == u'\v' || unit == QChar(0xA0);
}

bool isAscii(QChar unit)
{
    return unit.unicode() < 128;
}

bool has(const AsciiSet &set, QChar unit)
{
    return isAscii(unit) && set.test(unit.unicode());
}

/// The column of what a line of a YAML-like text is about: behind its blanks and list dashes, but at the last dash
/// when nothing but `at` follows.
qint32 contentIndent(QStringView line, qsizetype at)
{
    qsizetype column = 0;
    qsizetype lastDash = 0;
    for (; column < at; ++column) {
        const bool isDash = line[column] == u'-' && isBlank(line[column + 1]);
        if (isDash)
            lastDash = column;
        else if (!isBlank(line[column]))
            return qint32(column);
    }
    return qint32(lastDash);
}

} // namespace

LineScanner::LineScanner(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line,
                         std::vector<SyntaxToken> *tokens)
    : m_definition(definition), m_line(line), m_tokens(tokens), m_open(start.open)
{
    const bool known = std::all_of(m_open.cbegin(), m_open.cend(), [&definition](const SyntaxFrame &frame) {
        return frame.context < definition.contexts.size();
    });
    if (!known)
        m_open.clear();
}

QList<SyntaxFrame> LineScanner::run()
{
    findLimit();
    while (!takeWholeLine()) {
        while (m_at < m_limit)
            step();
        if (m_embeddedFrame < 0)
            break;
        m_open.resize(m_embeddedFrame);
        findLimit();
    }
    finishLine();
    return m_open;
}

const SyntaxContext &LineScanner::contextOf(const SyntaxFrame &frame) const
{
    return m_definition.contexts[frame.context];
}

const SyntaxContext &LineScanner::context() const
{
    return m_open.isEmpty() ? m_definition.contexts.front() : contextOf(m_open.constLast());
}

const QString &LineScanner::endOf(const SyntaxContext &context) const
{
    return context.hasOwnEnd && !m_open.isEmpty() ? m_open.constLast().end : context.end;
}

void LineScanner::findLimit()
{
    m_limit = m_line.size();
    m_embeddedFrame = -1;
    for (qsizetype frame = m_open.size() - 1; frame >= 0; --frame) {
        const SyntaxContext &open = contextOf(m_open.at(frame));
        if (!open.isEmbedded)
            continue;
        const qsizetype found =
            m_line.indexOf(open.end, m_at, open.ignoresCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
        if (found >= 0 && found < m_limit) {
            m_limit = found;
            m_embeddedFrame = frame;
        }
    }
}

bool LineScanner::takeWholeLine()
{
    if (m_at > 0)
        return false;
    while (!m_open.isEmpty()) {
        const SyntaxFrame &frame = m_open.constLast();
        const SyntaxContext &open = contextOf(frame);
        const qsizetype content = behindBlanks(0);
        if (open.isHereDocument) {
            const qsizetype start = frame.indent > 0 ? content : 0;
            if (m_line.sliced(start) != frame.end)
                return false;
            take(m_line.size(), open.edge);
            m_open.removeLast();
            return true;
        }
        if (!open.isIndented)
            return false;
        if (content == m_line.size() || content > frame.indent) {
            take(m_line.size(), open.role);
            return true;
        }
        m_open.removeLast();
    }
    return false;
}

void LineScanner::finishLine()
{
    while (!m_open.isEmpty() && !context().multiline && !m_isContinued) {
        const QChar continued = context().continued;
        if (!continued.isNull() && !m_line.isEmpty() && m_line.back() == continued)
            break;
        m_open.removeLast();
    }
    // The one that was named first comes first.
    for (auto frame = m_fromNextLine.crbegin(); frame != m_fromNextLine.crend(); ++frame) {
        if (m_open.size() < deepest)
            m_open.append(*frame);
    }
}

void LineScanner::step()
{
    const SyntaxContext &open = context();
    if (takeEnd(open) || takeEscape(open) || takeNested(open) || takeRule() || takeNumber() || takeWord())
        return;
    takePlain(open);
}

// Spans -------------------------------------------------------------------------------------------------------------

bool LineScanner::takeEnd(const SyntaxContext &context)
{
    if (m_open.isEmpty() || context.isEmbedded)
        return false;
    const QString &end = endOf(context);
    if (end.isEmpty() || (context.endsAtLineStart && !m_atLineStart) || !isAt(m_at, end, context.ignoresCase))
        return false;
    if (context.doubled && isAt(m_at + end.size(), end, context.ignoresCase)) {
        take(2 * end.size(), SyntaxRole::Escape);
        return true;
    }
    take(end.size(), context.edge);
    if (context.role != SyntaxRole::Comment)
        m_wantsOperand = false;
    m_open.removeLast();
    if (context.then >= 0)
        push(context.then);
    return true;
}

bool LineScanner::takeEscape(const SyntaxContext &context)
{
    if (context.escape.isNull() || m_line[m_at] != context.escape)
        return false;
    m_isContinued = m_at + 1 == m_line.size();
    take(nextCharacter(m_at + 1) - m_at, SyntaxRole::Escape);
    return true;
}

bool LineScanner::takeNested(const SyntaxContext &context)
{
    if (!context.nested || m_open.isEmpty() || !isAt(m_at, context.start, context.ignoresCase))
        return false;
    take(context.start.size(), context.role);
    push(m_open.constLast().context);
    return true;
}

void LineScanner::push(int context, const QString &end)
{
    // Beyond the deepest place, ends and starts no longer agree; nothing worse happens.
    if (context < 0 || m_open.size() >= deepest)
        return;
    m_open.append({quint16(context), 0, end});
    if (m_definition.contexts[std::size_t(context)].isEmbedded) {
        m_wantsOperand = true;
        findLimit();
    }
}

// Rules -------------------------------------------------------------------------------------------------------------

bool LineScanner::takeRule()
{
    const SyntaxSet &rules = set();
    const QChar unit = m_line[m_at];
    if (isAscii(unit)) {
        for (const quint16 index : rules.byStart[unit.unicode()]) {
            if (takeRule(rules.rules[index]))
                return true;
        }
    }
    if (m_atLineStart && !isBlank(unit)) {
        for (const quint16 index : rules.atLineStart) {
            if (takeRule(rules.rules[index]))
                return true;
        }
    }
    return false;
}

bool LineScanner::takeRule(const SyntaxRule &rule)
{
    if (!isAt(m_at, rule.start, rule.ignoresCase) || !isPlace(rule) || !isNext(rule.next, m_at + rule.start.size()))
        return false;
    switch (rule.kind) {
    case SyntaxRule::Kind::Delimited:
        return takeDelimited(rule);
    case SyntaxRule::Kind::HereDocument:
        return takeHereDocument(rule);
    case SyntaxRule::Kind::Indented:
        return takeIndented(rule);
    case SyntaxRule::Kind::UpTo:
        return takeUpTo(rule);
    case SyntaxRule::Kind::Plain:
        break;
    }
    qsizetype behind = m_at + rule.start.size();
    if (rule.takesWord)
        behind = behindWord(behind);
    else if (rule.takesName)
        behind = behindName(behind);
    else if (rule.takesCharacter)
        behind = nextCharacter(behind);
    if ((rule.mustClose || !rule.before.isNull()) && !closes(rule, behind))
        return false;
    const bool wasAtLineStart = m_atLineStart;
    take(behind - m_at, rule.role);
    m_atLineStart = m_atLineStart || (rule.keepsLineStart && wasAtLineStart);
    m_wantsOperand = rule.context >= 0;
    push(rule.context);
    return true;
}

bool LineScanner::isPlace(const SyntaxRule &rule) const
{
    switch (rule.place) {
    case SyntaxRule::Place::Anywhere:
        return true;
    case SyntaxRule::Place::LineStart:
        return m_atLineStart;
    case SyntaxRule::Place::Column:
        return m_at == rule.column;
    case SyntaxRule::Place::WordStart:
        return m_at == 0 || !isWordCharacter(m_at - 1);
    case SyntaxRule::Place::BehindBlank:
        return m_at == 0 || isBlank(m_line[m_at - 1]);
    case SyntaxRule::Place::Operand:
        return m_wantsOperand;
    }
    return false;
}

bool LineScanner::isNext(SyntaxRule::Next next, qsizetype at) const
{
    const bool isEnd = at >= m_limit;
    switch (next) {
    case SyntaxRule::Next::Anything:
        return true;
    case SyntaxRule::Next::Letter:
        return !isEnd && (m_line[at].isLetter() || m_line[at] == u'_');
    case SyntaxRule::Next::WordCharacter:
        return !isEnd && isWordCharacter(at);
    case SyntaxRule::Next::NoWordCharacter:
        return isEnd || !isWordCharacter(at);
    case SyntaxRule::Next::Blank:
        return isEnd || isBlank(m_line[at]);
    case SyntaxRule::Next::Digit:
        return !isEnd && m_line[at] >= u'0' && m_line[at] <= u'9';
    }
    return false;
}

bool LineScanner::closes(const SyntaxRule &rule, qsizetype from)
{
    if (std::find(m_unclosed.cbegin(), m_unclosed.cend(), &rule) != m_unclosed.cend())
        return false;
    const SyntaxContext &span = m_definition.contexts[std::size_t(rule.context)];
    const auto end = findEnd(span, from, rule.atMost);
    if (!end) {
        // A bounded look is cheap and says nothing about later places.
        if (rule.atMost == 0)
            m_unclosed.append(&rule);
        return false;
    }
    if (rule.before.isNull())
        return true;
    const qsizetype behind = behindBlanks(*end + span.end.size());
    return behind < m_limit && m_line[behind] == rule.before;
}

std::optional<qsizetype> LineScanner::findEnd(const SyntaxContext &context, qsizetype from, int atMost) const
{
    int count = 0;
    for (qsizetype at = from; at < m_limit; ++count) {
        if (isAt(at, context.end, context.ignoresCase)) {
            if (!context.doubled || !isAt(at + context.end.size(), context.end, context.ignoresCase))
                return at;
            at += 2 * context.end.size();
        } else {
            if (atMost > 0 && count >= atMost)
                return {};
            const bool escapes = !context.escape.isNull() && m_line[at] == context.escape;
            at = nextCharacter(escapes ? at + 1 : at);
        }
    }
    return {};
}

bool LineScanner::takeDelimited(const SyntaxRule &rule)
{
    constexpr qsizetype longestDelimiter = 64;
    const qsizetype first = m_at + rule.start.size();
    const qsizetype last = std::min(first + longestDelimiter, m_limit);
    const auto belongs = [this, &rule](qsizetype at) {
        return rule.delimiterCharacters.isEmpty() ? isWordCharacter(at) : rule.delimiterCharacters.contains(m_line[at]);
    };
    qsizetype behind = first;
    while (behind < last && belongs(behind))
        ++behind;
    if (!isAt(behind, rule.open, false))
        return false;
    QString end = m_definition.contexts[std::size_t(rule.context)].end;
    end.replace(QStringLiteral("%1"), m_line.sliced(first, behind - first).toString());
    take(behind + rule.open.size() - m_at, rule.role);
    push(rule.context, end);
    return true;
}

bool LineScanner::takeHereDocument(const SyntaxRule &rule)
{
    qsizetype at = m_at + rule.start.size();
    const bool stripsTabs = at < m_limit && (m_line[at] == u'-' || m_line[at] == u'~');
    at = behindBlanks(stripsTabs ? at + 1 : at);
    const bool isQuoted = at < m_limit && QStringView(u"'\"\\").contains(m_line[at]);
    const QChar quote = isQuoted ? m_line[at] : QChar();
    const qsizetype first = isQuoted ? at + 1 : at;
    if (first >= m_limit || !(m_line[first].isLetter() || m_line[first] == u'_'))
        return false;
    qsizetype behind = behindName(first);
    const QString word = m_line.sliced(first, behind - first).toString();
    if (behind < m_limit && m_line[behind] == quote)
        ++behind;
    m_fromNextLine.append({quint16(rule.context), stripsTabs ? 1 : 0, word});
    take(behind - m_at, rule.role);
    return true;
}

bool LineScanner::takeIndented(const SyntaxRule &rule)
{
    qsizetype at = m_at + rule.start.size();
    while (at < m_limit && QStringView(u"+-0123456789").contains(m_line[at]))
        ++at;
    const qsizetype rest = behindBlanks(at);
    if (rest < m_limit && (m_line[rest] != u'#' || rest == at))
        return false;
    m_fromNextLine.append({quint16(rule.context), contentIndent(m_line, m_at), {}});
    take(at - m_at, rule.role);
    return true;
}

bool LineScanner::takeUpTo(const SyntaxRule &rule)
{
    auto known =
        std::find_if(m_upTo.cbegin(), m_upTo.cend(), [&rule](const UpToPlace &place) { return place.rule == &rule; });
    if (known == m_upTo.cend()) {
        qsizetype stop = m_at;
        while (stop < m_limit && !(rule.stops.contains(m_line[stop]) &&
                                   (!rule.stopsBeforeBlank || stop + 1 >= m_limit || isBlank(m_line[stop + 1]))))
            ++stop;
        m_upTo.append({&rule, stop < m_limit ? stop : -1});
        known = m_upTo.cend() - 1;
    }
    if (known->at <= m_at)
        return false;
    take(known->at - m_at, rule.role);
    return true;
}

// Numbers, words and the rest -----------------------------------------------------------------------------------------

bool LineScanner::takeNumber()
{
    const SyntaxSet &here = set();
    if (!here.numbers)
        return false;
    const bool goesOn = m_at > 0 && (isWordCharacter(m_at - 1) || (m_line[m_at] == u'.' && m_line[m_at - 1] == u'.'));
    if (goesOn)
        return false;
    const qsizetype length = numberLength(m_line.sliced(m_at, m_limit - m_at), here.numberSigns, here.numberSeparator);
    if (length == 0)
        return false;
    take(length, SyntaxRole::Number);
    m_wantsOperand = false;
    return true;
}

bool LineScanner::isWordCharacter(qsizetype at) const
{
    const QChar unit = m_line[at];
    if (!isAscii(unit))
        return unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate();
    return set().wordCharacters.test(unit.unicode());
}

qsizetype LineScanner::behindWord(qsizetype from) const
{
    while (from < m_limit && isWordCharacter(from))
        ++from;
    return from;
}

qsizetype LineScanner::behindName(qsizetype from) const
{
    while (from < m_limit && (m_line[from].isLetterOrNumber() || m_line[from] == u'_'))
        ++from;
    return from;
}

qsizetype LineScanner::behindBlanks(qsizetype from) const
{
    while (from < m_limit && isBlank(m_line[from]))
        ++from;
    return from;
}

qsizetype LineScanner::nextCharacter(qsizetype at) const
{
    if (at >= m_limit)
        return m_limit;
    const bool isPair = m_line[at].isHighSurrogate() && at + 1 < m_limit && m_line[at + 1].isLowSurrogate();
    return at + (isPair ? 2 : 1);
}

bool LineScanner::takeWord()
{
    const SyntaxSet &here = set();
    const QChar unit = m_line[m_at];
    const bool starts = isAscii(unit) ? has(here.wordStarts, unit) : here.wordStarts.any() && isWordCharacter(m_at);
    if (!starts)
        return false;
    const qsizetype behind = behindWord(m_at + 1);
    // A member may have the name of a keyword; what follows two points is none.
    const bool isMember =
        m_at > 0 && m_line[m_at - 1] == u'.' && !(m_at > 1 && (m_line[m_at - 2] == u'.' || m_line[m_at - 2] == u' '));
    SyntaxRole role = isMember ? SyntaxRole::Text : here.words.roleOf(m_line.sliced(m_at, behind - m_at));
    const bool isKeyword = role == SyntaxRole::Keyword;
    if (role == SyntaxRole::Text) {
        const qsizetype next = behindBlanks(behind);
        const QChar follower = next < m_limit ? m_line[next] : QChar();
        if (follower == u'(' && here.calls != SyntaxRole::Text && next == behind)
            role = here.calls;
        else if (follower == u':' && here.keys != SyntaxRole::Text)
            role = here.keys;
        else
            role = here.otherWords != SyntaxRole::Text ? here.otherWords : context().role;
    }
    take(behind - m_at, role);
    m_wantsOperand = isKeyword;
    return true;
}

void LineScanner::takePlain(const SyntaxContext &context)
{
    const bool minded = !set().rules.empty() || context.endsAtLineStart;
    if (m_atLineStart && minded && isBlank(m_line[m_at])) {
        const bool operand = m_wantsOperand;
        take(behindBlanks(m_at) - m_at, context.role);
        m_atLineStart = true;
        m_wantsOperand = operand;
        return;
    }
    const bool namesBeyondAscii = set().wordStarts.any();
    const auto stops = [&](QChar unit) { return isAscii(unit) ? has(context.stops, unit) : namesBeyondAscii; };
    qsizetype end = nextCharacter(m_at);
    while (end < m_limit && !stops(m_line[end]))
        ++end;
    for (qsizetype at = end - 1; at >= m_at; --at) {
        if (isBlank(m_line[at]))
            continue;
        m_wantsOperand = !QStringView(u")]}").contains(m_line[at]) && !m_line[at].isLetterOrNumber();
        break;
    }
    take(end - m_at, context.role);
}

bool LineScanner::isAt(qsizetype at, const QString &text, bool ignoresCase) const
{
    if (text.size() > m_limit - at)
        return false;
    const QStringView here = m_line.sliced(at, text.size());
    return ignoresCase ? here.compare(text, Qt::CaseInsensitive) == 0 : here == text;
}

void LineScanner::take(qsizetype length, SyntaxRole role)
{
    if (m_tokens && role != SyntaxRole::Text && length > 0) {
        if (!m_tokens->empty() && m_tokens->back().role == role &&
            m_tokens->back().start + m_tokens->back().length == m_at)
            m_tokens->back().length += length;
        else
            m_tokens->push_back({m_at, length, role});
    }
    if (role != SyntaxRole::Comment)
        m_atLineStart = false;
    m_at += length;
}

} // namespace velmora
