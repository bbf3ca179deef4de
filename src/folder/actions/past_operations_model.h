#pragma once

#include "folder/operations/operation_journal.h"

#include <QAbstractTableModel>

namespace velmora {

/// The runs of a journal, the newest first, as a person reads them.
class PastOperationsModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Title, Time, State, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// The oldest first, as the journal gives them.
    void setRuns(const JournalList &list);
    /// Precondition: the row exists. Of a run whose journal is damaged all but the identifier is empty.
    [[nodiscard]] const JournalEntry &run(int row) const { return m_runs[row]; }
    [[nodiscard]] bool isReadable(int row) const { return m_runs[row].started.isValid(); }
    /// -1 when there is none.
    [[nodiscard]] int rowOf(const QString &id) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString stateText(int row) const;

    QList<JournalEntry> m_runs;
};

} // namespace velmora
