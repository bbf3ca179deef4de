#include "text/engine/unimportant_text.h"

#include "core/bounded_expression.h"
#include "text/engine/cancel_poll.h"
#include "text/engine/utf16_units.h"

#include <algorithm>

namespace velmora {

namespace {

/// What a search costs, in the steps of a CancelPoll.
constexpr qint64 stepsPerSearch = 1 << 14;

/// Odd lines that an expression may give up on before it is left out.
constexpr int chances = 3;

} // namespace

UnimportantText::UnimportantText(const QStringList &entries, std::function<void(const QString &)> onLeftOut)
    : m_onLeftOut(std::move(onLeftOut))
{
    for (const QString &entry : entries) {
        const QString text = entry.trimmed();
        if (text.isEmpty())
            continue;
        QRegularExpression expression = boundedExpression(text);
        // An expression without special characters finds the text alone.
        const bool matches = expression.isValid() && QRegularExpression::escape(text) != text;
        if (matches)
            expression.optimize();
        m_entries.push_back({text, std::move(expression), matches, 0});
    }
}

bool UnimportantText::isIn(QStringView line, CancelPoll &poll)
{
    return std::any_of(m_entries.begin(), m_entries.end(), [&](Entry &entry) {
        return !poll.stop(stepsPerSearch + line.size()) && isFound(entry, line, poll);
    });
}

bool UnimportantText::isIn(std::string_view utf8, CancelPoll &poll)
{
    return isIn(utf16Units(utf8, m_units), poll);
}

bool UnimportantText::isFound(Entry &entry, QStringView line, CancelPoll &poll)
{
    if (line.contains(entry.text))
        return true;
    if (!entry.matches)
        return false;
    const QRegularExpressionMatch match = entry.expression.match(line);
    if (!match.isValid() && line.isValidUtf16()) { // half a character is found in nothing
        ++m_timesGivenUp;
        if (++entry.timesGivenUp == chances) {
            entry.matches = false;
            m_leftOut.append(entry.text);
            if (m_onLeftOut)
                m_onLeftOut(entry.text);
        }
        poll.look(); // giving up has taken as long as a great many steps
    }
    return match.hasMatch();
}

} // namespace velmora
