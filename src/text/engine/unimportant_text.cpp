#include "text/engine/unimportant_text.h"

#include "core/bounded_expression.h"
#include "text/engine/utf16_units.h"

#include <algorithm>

namespace velmora {

UnimportantText::UnimportantText(const QStringList &entries)
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
        m_entries.push_back({text, std::move(expression), matches});
    }
}

bool UnimportantText::isIn(QStringView line)
{
    return std::any_of(m_entries.begin(), m_entries.end(), [this, line](const Entry &entry) {
        if (line.contains(entry.text))
            return true;
        if (!entry.matches)
            return false;
        const QRegularExpressionMatch match = entry.expression.match(line);
        m_timesGivenUp += match.isValid() ? 0 : 1;
        return match.hasMatch();
    });
}

bool UnimportantText::isIn(std::string_view utf8)
{
    return isIn(utf16Units(utf8, m_units));
}

} // namespace velmora
