#include "text/syntax/line_scanner.h"
#include "text/syntax/scanned_characters.h"

#include <algorithm>

namespace velmora {

namespace {

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

} // namespace velmora
