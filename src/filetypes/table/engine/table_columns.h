#pragma once

#include "core/side.h"
#include "core/text_lines.h"
#include "filetypes/table/engine/table_text.h"

#include <QString>

#include <vector>

namespace velmora {

struct InternedLines;

/// The columns of a comparison: their names, without a string for each.
class TableColumns {
public:
    TableColumns() = default;
    /// Names from the first rows: those of the left table, and behind them the names of the right table that are not
    /// among them; those of the right table where the left one has no row.
    [[nodiscard]] static TableColumns named(const TableText &left, const TableText &right, const CancelFlag &cancel);
    /// The same names with the columns of both tables paired by them, of equal names the first with the first and so
    /// on; columns that only the right table has follow, all of them. As `named` where the names do not differ.
    [[nodiscard]] static TableColumns pairedByName(const TableText &left, const TableText &right,
                                                   const CancelFlag &cancel);
    /// "Col1", "Col2", …, as many as the longest row of both has fields.
    [[nodiscard]] static TableColumns numbered(const TableText &left, const TableText &right, const CancelFlag &cancel);

    [[nodiscard]] qint32 count() const noexcept { return m_count; }
    [[nodiscard]] QString name(qint32 column) const;
    /// The first column of that name, -1 when there is none.
    [[nodiscard]] qint32 find(const QString &name) const;
    /// True when the first rows of both tables name their columns, and not alike.
    [[nodiscard]] bool namesDiffer() const noexcept { return m_namesDiffer; }

    /// False where column k is field k of both tables.
    [[nodiscard]] bool arePairedByName() const noexcept { return !m_rightColumns.empty(); }
    /// For each field of the right table its column. Precondition: they are paired by name.
    [[nodiscard]] const std::vector<qint32> &rightColumns() const noexcept { return m_rightColumns; }
    /// The field of a table that a column shows, -1 where it has none.
    [[nodiscard]] qint32 fieldOf(Side side, qint32 column) const noexcept;

private:
    enum class Pairing { ByPosition, ByName };

    [[nodiscard]] static TableColumns make(const TableText &left, const TableText &right, Pairing pairing,
                                           const CancelFlag &cancel);
    void join(const TextLines &names, Pairing pairing, const CancelFlag &cancel);
    /// The columns that each field of the right table goes to.
    [[nodiscard]] std::vector<qint32> columnsByName(const InternedLines &numbers) const;

    std::vector<qint32> m_rightColumns; ///< empty where columns are paired by position
    qint32 m_leftCount = 0;
    TextLines m_names; ///< empty where columns are numbered
    qint32 m_count = 0;
    bool m_namesDiffer = false;
};

} // namespace velmora
