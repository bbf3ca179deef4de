#include "folder/actions/past_operations_model.h"

#include "folder/actions/action_words.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>

namespace velmora {

void PastOperationsModel::setRuns(const JournalList &list)
{
    beginResetModel();
    m_runs = list.entries;
    for (const QString &id : list.unreadable) {
        JournalEntry damaged;
        damaged.id = id;
        m_runs.append(damaged);
    }
    std::sort(m_runs.begin(), m_runs.end(),
              [](const JournalEntry &left, const JournalEntry &right) { return right.id < left.id; });
    endResetModel();
}

int PastOperationsModel::rowOf(const QString &id) const
{
    const auto found =
        std::find_if(m_runs.begin(), m_runs.end(), [&id](const JournalEntry &run) { return run.id == id; });
    return found == m_runs.end() ? -1 : int(found - m_runs.begin());
}

int PastOperationsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_runs.size());
}

int PastOperationsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PastOperationsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const JournalEntry &run = m_runs[index.row()];
    switch (index.column()) {
    case Title: {
        const QString title = run.title.isEmpty() ? Velmora::tr("Unknown operation") : run.title;
        return role == Qt::ToolTipRole ? toolTipText(title) : title;
    }
    case Time:
        return QLocale().toString(run.started.toLocalTime(), QLocale::ShortFormat);
    default:
        return stateText(index.row());
    }
}

QVariant PastOperationsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Title ? Velmora::tr("Operation") : section == Time ? Velmora::tr("Time") : Velmora::tr("State");
}

QString PastOperationsModel::stateText(int row) const
{
    const JournalEntry &run = m_runs[row];
    if (!isReadable(row))
        return Velmora::tr("Cannot be read");
    if (run.isAtWork)
        return Velmora::tr("At work");
    if (run.undone)
        return Velmora::tr("Undone");
    if (run.undoneInPart)
        return Velmora::tr("Undone in part");
    if (run.continued)
        return Velmora::tr("Continued");
    return run.interrupted ? Velmora::tr("Interrupted") : Velmora::tr("Done");
}

} // namespace velmora
