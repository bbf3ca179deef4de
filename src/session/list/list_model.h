#pragma once

#include "core/rows_view.h"
#include "session/list/row_source.h"

#include <QAbstractTableModel>
#include <QList>

#include <memory>
#include <vector>

namespace velmora {

/// The rows of a comparison as a person reads them: all, those that differ or those that do not, as far as they hold
/// the words of a filter, in the order of their source or of a column. Holds one number for each row that is shown.
class ListModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListModel(std::unique_ptr<const RowSource> source, QObject *parent = nullptr);

    void setSource(std::unique_ptr<const RowSource> source);
    [[nodiscard]] const RowSource &source() const { return *m_source; }
    /// Noise left out.
    [[nodiscard]] const PairCounts &counts() const { return m_counts; }
    [[nodiscard]] qsizetype noise() const { return m_noise; }

    /// Columns of numbers are aligned to the right.
    void setNumberColumns(const QList<int> &columns) { m_numberColumns = columns; }
    [[nodiscard]] bool hasNumbers(int column) const { return m_numberColumns.contains(column); }

    void setView(RowsView view);
    [[nodiscard]] RowsView view() const { return m_view; }
    /// Shows the rows that hold every one of these words.
    void setFilter(const QString &words);

    /// Precondition: the row is there.
    [[nodiscard]] KeyedRow rowAt(int row) const { return m_source->row(numberOf(row)); }
    /// The row of that key, -1 when it is not shown.
    [[nodiscard]] int find(const QString &key) const;
    /// The next row that differs behind or before `row`, which may be -1; -1 when there is none.
    [[nodiscard]] int nextDifference(int row, bool forward) const;
    /// The rows as tab-separated lines; values with tabs, quotes or line feeds stand in quotes, as spreadsheets have
    /// it.
    [[nodiscard]] QString text(const std::vector<int> &rows) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Column -1 is the order of the source.
    void sort(int column, Qt::SortOrder order) override;

    /// Takes up a changed theme.
    void refreshTheme();

private:
    /// Works out what is shown after `change`.
    template <typename Change>
    void reset(Change change);
    void rebuild();
    [[nodiscard]] bool isShown(qsizetype number) const;
    /// The number that a row has in the source.
    [[nodiscard]] qsizetype numberOf(int row) const { return m_shown[std::size_t(row)]; }

    std::unique_ptr<const RowSource> m_source;
    QStringList m_headings;
    PairCounts m_counts; ///< of all rows but noise
    qsizetype m_noise = 0;
    std::vector<qsizetype> m_shown;
    QStringList m_words;
    QList<int> m_numberColumns;
    RowsView m_view = RowsView::All;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace velmora
