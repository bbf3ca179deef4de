#pragma once

#include "core/text_lines.h"
#include "filetypes/table/engine/table_text.h"

#include <QString>

namespace velmora {

/// The columns of a comparison: their names, without a string for each.
class TableColumns {
public:
    TableColumns() = default;
    /// Names from the first rows: those of the left table, and behind them the names of the right table that are not
    /// among them; those of the right table where the left one has no row.
    [[nodiscard]] static TableColumns named(const TableText &left, const TableText &right, const CancelFlag &cancel);
    /// "Col1", "Col2", …, as many as the longest row of both has fields.
    [[nodiscard]] static TableColumns numbered(const TableText &left, const TableText &right, const CancelFlag &cancel);

    [[nodiscard]] qint32 count() const noexcept { return m_count; }
    [[nodiscard]] QString name(qint32 column) const;
    /// The first column of that name, -1 when there is none.
    [[nodiscard]] qint32 find(const QString &name) const;
    /// True when the first rows of both tables name their columns, and not alike.
    [[nodiscard]] bool namesDiffer() const noexcept { return m_namesDiffer; }

private:
    void join(const TextLines &names, const CancelFlag &cancel);

    TextLines m_names; ///< empty where columns are numbered
    qint32 m_count = 0;
    bool m_namesDiffer = false;
};

} // namespace velmora
