#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class CancelPoll;

/// The texts and regular expressions that make a line unimportant, ready for many lines. Used by one thread.
///
/// An expression that has given up on a few lines (see `boundedExpression`) would cost some milliseconds on each of the
/// others, too: from then on it finds nothing.
class UnimportantText {
public:
    /// Entries are trimmed; empty ones mean nothing, and one that is no regular expression is a text only. `onLeftOut`
    /// is called with each expression that finds nothing from then on.
    explicit UnimportantText(const QStringList &entries, std::function<void(const QString &)> onLeftOut = {});

    [[nodiscard]] bool isEmpty() const noexcept { return m_entries.empty(); }

    /// True when any entry is found in `line`. Looks at `poll` between the entries; once that has stopped the answer
    /// means nothing.
    [[nodiscard]] bool isIn(QStringView line, CancelPoll &poll);
    [[nodiscard]] bool isIn(std::u16string_view line, CancelPoll &poll)
    {
        return isIn(QStringView(line.data(), qsizetype(line.size())), poll);
    }
    [[nodiscard]] bool isIn(std::string_view utf8, CancelPoll &poll);

    /// How often an expression gave up on a line, which does not count as found.
    [[nodiscard]] qint64 timesGivenUp() const noexcept { return m_timesGivenUp; }
    /// The expressions that find nothing any more, in the order in which they were left out.
    [[nodiscard]] const QStringList &leftOut() const noexcept { return m_leftOut; }

private:
    struct Entry {
        QString text;
        QRegularExpression expression;
        bool matches = false; ///< `expression` can find more than `text`
        int timesGivenUp = 0;
    };

    bool isFound(Entry &entry, QStringView line, CancelPoll &poll);

    std::vector<Entry> m_entries;
    std::u16string m_units;
    std::function<void(const QString &)> m_onLeftOut;
    QStringList m_leftOut;
    qint64 m_timesGivenUp = 0;
};

} // namespace velmora
