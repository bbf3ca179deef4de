#include "folder/snapshot/folder_snapshot_rows.h"

#include "core/visible_name.h"
#include "folder/snapshot/folder_snapshot_words.h"
#include "session/translate.h"

#include <algorithm>

namespace velmora {

namespace {

/// Whether a text that has digits and the marks of numbers and times alone could hold it.
bool mayBeOfNumbers(const QString &word)
{
    return std::any_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

FolderSnapshotRows::FolderSnapshotRows(FolderSnapshotComparison comparison)
    : RowSource(Velmora::tr("Relative path")), m_found(std::move(comparison))
{}

KeyedRow FolderSnapshotRows::row(qsizetype number) const
{
    const auto details = [&](Side side) {
        const FolderSnapshotEntry *entry = m_found.entry(number, side);
        return entry ? entryDetails(*entry, m_times) : QString();
    };
    return {key(number), status(number), details(Side::Left), details(Side::Right), noteText(number)};
}

PairStatus FolderSnapshotRows::status(qsizetype number) const
{
    return m_found.rows[std::size_t(number)].status;
}

QString FolderSnapshotRows::noteText(qsizetype number) const
{
    switch (m_found.rows[std::size_t(number)].remark) {
    case FolderSnapshotRemark::None:
        break;
    case FolderSnapshotRemark::Moved:
        return (status(number) == PairStatus::LeftOnly ? Velmora::tr("Moved to %1") : Velmora::tr("Moved from %1"))
            .arg(visibleName(m_found.partner(number)->path));
    case FolderSnapshotRemark::ContentOnly:
        return Velmora::tr("Other contents, though size and time are the same");
    case FolderSnapshotRemark::TimeOnly:
        return Velmora::tr("Only the time is another, the contents are the same");
    }
    return {};
}

QString FolderSnapshotRows::sideText(qsizetype number, Side side) const
{
    if (const FolderSnapshotEntry *entry = m_found.entry(number, side))
        return entryText(*entry, m_times);
    return m_found.partner(number) ? noteText(number) : QString();
}

QString FolderSnapshotRows::text(qsizetype number, int column) const
{
    if (column == Status)
        return statusText(status(number));
    if (column == Key)
        return visibleName(key(number));
    return sideText(number, column == Left ? Side::Left : Side::Right);
}

bool FolderSnapshotRows::holds(qsizetype number, const QString &word, int columns) const
{
    const bool hasRemark = m_found.rows[std::size_t(number)].remark != FolderSnapshotRemark::None;
    if (hasRemark || mayBeOfNumbers(word))
        return RowSource::holds(number, word, columns);
    return key(number).contains(word, Qt::CaseInsensitive) ||
           statusText(status(number)).contains(word, Qt::CaseInsensitive);
}

bool FolderSnapshotRows::isBefore(qsizetype one, qsizetype other, int column) const
{
    if (column == Status)
        return status(one) < status(other);
    if (column == Key)
        return one < other;
    const Side side = column == Left ? Side::Left : Side::Right;
    const auto measure = [&](qsizetype row) {
        const FolderSnapshotEntry *entry = m_found.entry(row, side);
        return entry ? std::pair(entry->size, entry->modifiedMs.value_or(0)) : std::pair<qint64, qint64>(-1, 0);
    };
    return measure(one) < measure(other);
}

std::optional<qsizetype> FolderSnapshotRows::find(const QString &path) const
{
    const auto &rows = m_found.rows;
    const auto pathOf = [this, &rows](const FolderSnapshotRow &row) { return m_found.path(&row - rows.data()); };
    const auto at =
        std::lower_bound(rows.begin(), rows.end(), path,
                         [&](const FolderSnapshotRow &row, const QString &wanted) { return pathOf(row) < wanted; });
    if (at == rows.end() || pathOf(*at) != path)
        return std::nullopt;
    return at - rows.begin();
}

} // namespace velmora
