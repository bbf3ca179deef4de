#pragma once

#include "core/keyed_rows.h"

#include <QStringList>

#include <optional>

namespace velmora {

/// The name of a status as lists show it.
[[nodiscard]] QString statusText(PairStatus status);

/// The rows of one comparison as a list shows them, numbered from 0 as its columns are. They do not change: another
/// comparison brings another source. What a kind words in its own way, or has columns for, it overrides; texts are made
/// when they are asked for, and are whole.
class RowSource {
public:
    enum Column { Status, Key, Left, Right };

    /// `keyHeading`: the heading of the keys, translated.
    explicit RowSource(const QString &keyHeading) : m_keyHeading(keyHeading) {}
    Q_DISABLE_COPY_MOVE(RowSource)
    virtual ~RowSource() = default;

    [[nodiscard]] virtual qsizetype count() const = 0;
    /// By its key a row is found again in other rows; its values are what the details show.
    [[nodiscard]] virtual KeyedRow row(qsizetype number) const = 0;

    // What is asked of all rows at once; a source of many has them without making the row.
    [[nodiscard]] virtual PairStatus status(qsizetype number) const { return row(number).status; }
    [[nodiscard]] virtual QString key(qsizetype number) const { return row(number).key; }
    /// Whether a row differs in what says nothing. Its status is `Same` then, but it counts neither as that nor as a
    /// difference.
    [[nodiscard]] virtual bool isNoise(qsizetype /*number*/) const { return false; }
    /// Whether keys are paths, which are told apart by their ends.
    [[nodiscard]] virtual bool hasPathKeys() const { return false; }
    /// Whether a word, in letters of any case, stands in the note or in the text of one of so many columns.
    [[nodiscard]] virtual bool holds(qsizetype number, const QString &word, int columns) const;

    /// One for each column, translated. The first two columns are those of status and key.
    [[nodiscard]] virtual QStringList headings() const;
    /// The side whose values stand in a column; none for what belongs to both.
    [[nodiscard]] virtual std::optional<Side> side(int column) const;
    [[nodiscard]] virtual QString text(qsizetype number, int column) const;
    /// Whether one row stands before another in the ascending order of a column: statuses in that of `PairStatus`,
    /// texts as people sort them.
    [[nodiscard]] virtual bool isBefore(qsizetype one, qsizetype other, int column) const;

private:
    QString m_keyHeading;
};

/// Rows that are at hand.
class KeyedList : public RowSource {
public:
    explicit KeyedList(const QString &keyHeading, QList<KeyedRow> rows = {})
        : RowSource(keyHeading), m_rows(std::move(rows))
    {}
    [[nodiscard]] qsizetype count() const override { return m_rows.size(); }
    [[nodiscard]] KeyedRow row(qsizetype number) const override { return m_rows[number]; }

private:
    QList<KeyedRow> m_rows;
};

} // namespace velmora
