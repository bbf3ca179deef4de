#include "text/syntax/line_scanner.h"

#include "text/syntax/number_scan.h"
#include "text/syntax/scanned_characters.h"

#include <algorithm>

namespace velmora {

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
