#include "folder/engine/sync_moves.h"

#include "core/message_digest.h"
#include "core/path_names.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/short_path.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

namespace {

constexpr qint64 pieceLength = 256 * 1024;
constexpr qint64 beginningLength = 64 * 1024; // files of one size that differ do so in here, most of the time

/// Files that are alike as far as is known.
using Group = Sides<std::vector<const FolderDiffItem *>>;

bool isFileOfOneSide(const FolderDiffItem &item)
{
    const bool isOnOneSide = item.leftPath.isEmpty() != item.rightPath.isEmpty();
    return isOnOneSide && !item.isDir && std::max(item.leftSize, item.rightSize) > 0;
}

Side sideOf(const FolderDiffItem &item)
{
    return item.leftPath.isEmpty() ? Side::Right : Side::Left;
}

/// The files by what `keyOf` says of them; without those for which it says nothing, and without groups of one side.
template <typename Key>
std::vector<Group> grouped(const std::vector<const FolderDiffItem *> &files,
                           const std::function<std::optional<Key>(const FolderDiffItem &)> &keyOf)
{
    QMap<Key, Group> groups; // in an order that does not change from run to run
    for (const FolderDiffItem *file : files) {
        if (const std::optional<Key> key = keyOf(*file))
            groups[*key][sideOf(*file)].push_back(file);
    }
    std::vector<Group> pairs;
    for (const Group &group : std::as_const(groups)) {
        if (!group.left.empty() && !group.right.empty())
            pairs.push_back(group);
    }
    return pairs;
}

std::vector<const FolderDiffItem *> filesOf(const std::vector<Group> &groups)
{
    std::vector<const FolderDiffItem *> files;
    for (const Group &group : groups) {
        for (const Side side : bothSides)
            files.insert(files.end(), group[side].begin(), group[side].end());
    }
    return files;
}

std::vector<const FolderDiffItem *> candidates(const QList<FolderDiffItem> &items)
{
    std::vector<const FolderDiffItem *> files;
    for (const FolderDiffItem &item : items) {
        if (isFileOfOneSide(item))
            files.push_back(&item);
    }
    return files;
}

qint64 sizeOfOneSide(const FolderDiffItem &item)
{
    return sizeOn(item, sideOf(item));
}

qint64 timeOfOneSide(const FolderDiffItem &item)
{
    return timeOn(item, sideOf(item)).toMSecsSinceEpoch();
}

using SizeAndDigest = std::pair<qint64, QByteArray>;

/// Reads files, on one thread.
class FileDigests {
public:
    FileDigests(const Sides<TreeFolder> &roots, const CancelFlag &cancel, Progress &progress)
        : m_roots(roots),
          m_openers{roots.left.source->makeOpener(), roots.right.source->makeOpener()},
          m_cancel(cancel),
          m_progress(progress),
          m_buffer(std::size_t(pieceLength))
    {}

    /// Groups of files that are the same in their first `length` bytes.
    [[nodiscard]] std::vector<Group> split(const std::vector<Group> &groups, qint64 length)
    {
        const std::vector<const FolderDiffItem *> files = filesOf(groups);
        m_total = qint64(files.size());
        m_done = 0;
        return grouped<SizeAndDigest>(files, [&](const FolderDiffItem &file) { return digestOf(file, length); });
    }

private:
    std::optional<SizeAndDigest> digestOf(const FolderDiffItem &file, qint64 length)
    {
        const Side side = sideOf(file);
        const QString path = fullPathOn(file, side, m_roots[side].path);
        m_progress.report(int(FolderPhase::Comparing), m_done++, m_total, path);
        const std::optional<FolderEntry> entry = m_roots[side].source->describe(path, HiddenEntries::Listed);
        if (!entry || entry->isLink) // moved, it might lead elsewhere
            return std::nullopt;
        const std::unique_ptr<OpenFile> open = m_openers[side]->open(path, OpenHint::ListedAsFile);
        const qint64 end = std::min(length, sizeOn(file, side));
        MessageDigest digest(MessageDigest::Kind::Sha256);
        for (qint64 offset = 0; offset < end; offset += pieceLength) {
            const qint64 wanted = std::min(pieceLength, end - offset);
            const FilePiece piece = open ? open->readAt(offset, m_buffer.data(), wanted) : FilePiece{0, true};
            if (piece.failed || piece.length != wanted || m_cancel.isCancelled())
                return std::nullopt;
            digest.update(QByteArrayView(m_buffer.data(), wanted));
        }
        return SizeAndDigest(sizeOn(file, side), digest.value());
    }

    Sides<TreeFolder> m_roots;
    Sides<std::unique_ptr<FileOpener>> m_openers;
    CancelFlag m_cancel;
    Progress &m_progress;
    std::vector<char> m_buffer;
    qint64 m_total = 0;
    qint64 m_done = 0;
};

/// Pairs what is left of a group where `belong` says so, and takes it out of the group.
template <typename Belong>
void pairOff(Group &group, QList<MovedFile> &moved, Belong belong)
{
    std::erase_if(group.left, [&](const FolderDiffItem *left) {
        const auto right = std::find_if(group.right.begin(), group.right.end(),
                                        [&](const FolderDiffItem *other) { return belong(*left, *other); });
        if (right == group.right.end())
            return false;
        moved.append({left->name, (*right)->name});
        group.right.erase(right);
        return true;
    });
}

void pairOff(Group group, QList<MovedFile> &moved)
{
    pairOff(group, moved, [](const FolderDiffItem &left, const FolderDiffItem &right) {
        return bareName(left.name) == bareName(right.name);
    });
    pairOff(group, moved,
            [](const FolderDiffItem &left, const FolderDiffItem &right) { return left.leftTime == right.rightTime; });
    pairOff(group, moved, [](const FolderDiffItem &, const FolderDiffItem &) { return true; });
}

} // namespace

QList<MovedFile> findMovedFiles(const Sides<TreeFolder> &roots, const QList<FolderDiffItem> &items,
                                const CancelFlag &cancel, Progress &progress)
{
    QList<MovedFile> moved;
    if (!roots.left.isThere() || !roots.right.isThere())
        return moved;
    FileDigests digests(roots, cancel, progress);
    std::vector<Group> groups = grouped<qint64>(
        candidates(items), [](const FolderDiffItem &file) { return std::optional(sizeOfOneSide(file)); });
    groups = digests.split(groups, beginningLength);
    groups = digests.split(groups, std::numeric_limits<qint64>::max());
    for (const Group &group : groups)
        pairOff(group, moved);
    std::sort(moved.begin(), moved.end(),
              [](const MovedFile &one, const MovedFile &other) { return one.left < other.left; });
    return moved;
}

qint64 countLikelyMoves(const QList<FolderDiffItem> &items)
{
    using SizeAndTime = std::pair<qint64, qint64>;
    const std::vector<Group> groups = grouped<SizeAndTime>(candidates(items), [](const FolderDiffItem &file) {
        return std::optional(SizeAndTime(sizeOfOneSide(file), timeOfOneSide(file)));
    });
    qint64 count = 0;
    for (const Group &group : groups)
        count += qint64(std::min(group.left.size(), group.right.size()));
    return count;
}

QList<SyncPlanItem> withMoves(const QList<SyncPlanItem> &plan, const QList<MovedFile> &moved)
{
    QHash<QString, SyncAction> actions;
    for (const SyncPlanItem &item : plan)
        actions.insert(item.name, item.syncAction());
    QHash<QString, SyncPlanItem> moves; // by the new name, with the old one
    QSet<QString> movedAway;
    for (const MovedFile &file : moved) {
        const SyncAction left = actions.value(file.left, SyncAction::Skip);
        const SyncAction right = actions.value(file.right, SyncAction::Skip);
        SyncPlanItem move;
        if (left == SyncAction::CopyToRight && right == SyncAction::DeleteRight) {
            move.action = qint32(SyncAction::MoveOnRight);
            move.movedFrom = file.right;
            moves.insert(file.left, move);
        } else if (right == SyncAction::CopyToLeft && left == SyncAction::DeleteLeft) {
            move.action = qint32(SyncAction::MoveOnLeft);
            move.movedFrom = file.left;
            moves.insert(file.right, move);
        } else {
            continue;
        }
        movedAway.insert(move.movedFrom);
    }
    QList<SyncPlanItem> result;
    for (const SyncPlanItem &item : plan) {
        if (movedAway.contains(item.name))
            continue;
        result.append(item);
        const auto move = moves.constFind(item.name);
        if (move != moves.constEnd()) {
            result.last().action = move->action;
            result.last().movedFrom = move->movedFrom;
        }
    }
    return result;
}

} // namespace velmora
