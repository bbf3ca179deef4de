#pragma once

#include "folder/duplicates/duplicate_ticks.h"
#include "session/list/row_tree.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// A copy of a scan.
struct CopyPlace {
    qint32 group = 0;
    qsizetype copy = 0;
};
using CopyPlaces = QList<CopyPlace>;

/// What a scan has found, as rows of two levels: folders that are the same as a whole, groups of files, files of
/// several names; and below each its paths. Knows which copies are ticked to be deleted.
///
/// Making one takes long where there is much: it may be done on a worker.
class DuplicateTree final : public FixedRowTree {
public:
    enum Column { Name, Size, Modified, Digest };
    enum class Kind : quint8 { Folders, Files, Names };

    explicit DuplicateTree(DuplicateScan scan);
    DuplicateTree(DuplicateScan scan, DuplicateTicks ticks);

    [[nodiscard]] const DuplicateScan &scan() const { return m_scan; }
    [[nodiscard]] const DuplicateTicks &ticks() const { return m_ticks; }

    [[nodiscard]] bool isGroup(qint32 node) const { return parent(node) < 0; }
    [[nodiscard]] Kind kindOf(qint32 node) const { return entryOf(node).kind; }
    /// The file or folder of a row of the second level.
    [[nodiscard]] const QString &pathAt(qint32 node) const;
    /// The group of files that a row is or lies in; -1 for other kinds.
    [[nodiscard]] qint32 groupOf(qint32 node) const;
    /// The copy that a row of the second level stands for; none of those that are no copies.
    [[nodiscard]] std::optional<CopyPlace> copyAt(qint32 node) const;
    /// Whether the row has a tick: one that may be deleted, while ticks are shown.
    [[nodiscard]] bool hasTick(qint32 node) const;

    /// Shows ticks before the files that may be deleted.
    void setTicking(bool ticking) { m_ticking = ticking; }
    void tick(qint32 node, bool ticked);
    /// Ticks in these groups what the rule would have deleted, and nothing else there.
    void tickByRule(const QList<qint32> &groups, KeepRule rule, const QStringList &folders);
    /// Ticks, or clears, every copy of these groups that lies in `folder`.
    void tickFolder(const QList<qint32> &groups, const QString &folder, bool ticked);
    void clearTicks();
    /// Takes over the digest of a group.
    void setDigest(qint32 group, const QByteArray &digest) { m_scan.groups[group].digest = digest; }

    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 node, int column) const override;
    [[nodiscard]] RowPicture picture(qint32 node) const override;
    [[nodiscard]] QVariant data(qint32 node, int column, int role) const override;
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override;
    /// A group holds the words of its paths, so that it is shown whole.
    [[nodiscard]] bool holds(qint32 node, const QString &word) const override;

private:
    /// A row of the first level.
    struct Entry {
        Kind kind = Kind::Files;
        qint32 number = 0; ///< in the list of the scan
    };

    void addEntries();
    void rankNames();
    void findTimes();

    [[nodiscard]] const Entry &entryOf(qint32 node) const
    {
        return m_entries[std::size_t(m_entryOf[std::size_t(node)])];
    }
    [[nodiscard]] qint32 pathCount(qint32 group) const { return end(group) - group - 1; }
    [[nodiscard]] qint64 sizeOf(qint32 node) const;
    [[nodiscard]] bool losesAll(qint32 node) const;
    [[nodiscard]] QString groupName(qint32 node) const;
    [[nodiscard]] QString copyName(const DuplicateCopy &copy) const;
    [[nodiscard]] const DuplicateCopy &at(const CopyPlace &place) const
    {
        return m_scan.groups.at(place.group).copies.at(place.copy);
    }

    DuplicateScan m_scan;
    DuplicateTicks m_ticks;
    std::vector<Entry> m_entries;
    std::vector<qint32> m_entryOf; ///< of each node
    std::vector<qint32> m_ranks;   ///< of each node its place among its siblings by name
    std::vector<qint64> m_times;   ///< of each node when it was modified; of a group, the latest of its copies
    bool m_ticking = false;
};

/// What is left of a scan and of the ticks in it when copies are no longer there: without these, groups of which no two
/// are left, and folders that are no longer the same.
[[nodiscard]] std::unique_ptr<DuplicateTree> treeWithout(const DuplicateScan &scan, const DuplicateTicks &ticks,
                                                         const CopyPlaces &gone);

} // namespace velmora
