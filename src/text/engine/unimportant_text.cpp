#include "text/engine/unimportant_text.h"

#include "text/engine/utf16_units.h"

#include <algorithm>

namespace velmora {

UnimportantText::UnimportantText(const QStringList &entries)
{
    for (const QString &entry : entries) {
        const QString text = entry.trimmed();
        if (text.isEmpty())
            continue;
        QRegularExpression expression(text);
        // An expression without special characters finds the text alone.
        const bool matches = expression.isValid() && QRegularExpression::escape(text) != text;
        if (matches)
            expression.optimize();
        m_entries.push_back({text, std::move(expression), matches});
    }
}

bool UnimportantText::isIn(QStringView line) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [line](const Entry &entry) {
        return line.contains(entry.text) || (entry.matches && entry.expression.match(line).hasMatch());
    });
}

bool UnimportantText::isIn(std::string_view utf8)
{
    return isIn(utf16Units(utf8, m_units));
}

} // namespace velmora
