#pragma once

#include "system/engine/snapshot_compare.h"

#include <QAbstractTableModel>

#include <vector>

namespace velmora {

/// The name of a status as the table shows it.
[[nodiscard]] QString snapshotStatusText(SnapshotStatus status);

/// The rows of a comparison as a person reads them: all or those that differ, those that hold the words of a filter, in
/// the order of their keys or of a column. Holds the rows and one number for each that is shown.
class SnapshotRowsModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Status, Key, Left, Right, ColumnCount };

    /// `keyColumn`: the heading of the keys, translated.
    explicit SnapshotRowsModel(const QString &keyColumn, QObject *parent = nullptr);

    void setRows(QList<SnapshotRow> rows);
    [[nodiscard]] const QList<SnapshotRow> &allRows() const { return m_rows; }

    void setOnlyDifferences(bool only);
    [[nodiscard]] bool onlyDifferences() const { return m_onlyDifferences; }
    /// Shows the rows that hold every one of these words, in whatever case, in their key, note, values or status.
    void setFilter(const QString &words);

    /// Precondition: the row is there.
    [[nodiscard]] const SnapshotRow &rowAt(int row) const { return m_rows[m_shown[std::size_t(row)]]; }
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
    /// Column -1 is the order of the keys.
    void sort(int column, Qt::SortOrder order) override;

    /// Takes up a changed theme.
    void refreshTheme();

private:
    void rebuild();
    [[nodiscard]] bool isShown(const SnapshotRow &row) const;
    [[nodiscard]] static QString textOf(const SnapshotRow &row, int column);
    [[nodiscard]] static QString toolTipOf(const SnapshotRow &row, int column);

    QString m_keyColumn;
    QList<SnapshotRow> m_rows;
    std::vector<qsizetype> m_shown;
    QStringList m_words;
    bool m_onlyDifferences = false;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace velmora
