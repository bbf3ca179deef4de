#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The texts and regular expressions that make a line unimportant, ready for many lines. Used by one thread.
class UnimportantText {
public:
    /// Entries are trimmed; empty ones mean nothing, and one that is no regular expression is a text only.
    explicit UnimportantText(const QStringList &entries);

    [[nodiscard]] bool isEmpty() const noexcept { return m_entries.empty(); }

    /// True when any entry is found in `line`.
    [[nodiscard]] bool isIn(QStringView line);
    [[nodiscard]] bool isIn(std::u16string_view line) { return isIn(QStringView(line.data(), qsizetype(line.size()))); }
    [[nodiscard]] bool isIn(std::string_view utf8);

    /// How often an expression gave up on a line, which does not count as found (see `boundedExpression`).
    [[nodiscard]] qint64 timesGivenUp() const noexcept { return m_timesGivenUp; }

private:
    struct Entry {
        QString text;
        QRegularExpression expression;
        bool matches = false; ///< `expression` can find more than `text`
    };

    std::vector<Entry> m_entries;
    std::u16string m_units;
    qint64 m_timesGivenUp = 0;
};

} // namespace velmora
