#include "folder/engine/folder_engine.h"

#include "core/content_compare.h"
#include "core/crew.h"
#include "folder/engine/folder_engine_internal.h"
#include "folder/engine/folder_walk.h"
#include "folder/engine/item_list.h"
#include "folder/engine/name_pairing.h"
#include "folder/engine/pair_decisions.h"

#include <QDir>
#include <QFileInfo>
#include <QStringBuilder>

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

namespace velmora {

namespace {

/// The folders of an entry that are looked into.
struct Descent {
    const FolderEntry *left = nullptr;
    const FolderEntry *right = nullptr;
};

/// Gives `item` its status and folder flag, and may change its sizes, which are those of the entries before.
using EntryRule = std::function<Descent(const PairedEntry &pair, FolderDiffItem &item)>;

bool isFolder(const FolderEntry *entry)
{
    return entry && entry->kind == EntryKind::Folder;
}

Descent foldersOf(const PairedEntry &pair)
{
    return {isFolder(pair.left) ? pair.left : nullptr, isFolder(pair.right) ? pair.right : nullptr};
}

FolderDiffStatus oneSidedStatus(const PairedEntry &pair)
{
    return pair.left ? FolderDiffStatus::LeftOnly : FolderDiffStatus::RightOnly;
}

/// Gives `item` the status of two files, or what stands for it until their contents have been read.
void judgeFiles(const PairedEntry &pair, CompareMethod method, qint32 toleranceSec, FolderDiffItem &item)
{
    const FolderEntry &left = *pair.left;
    const FolderEntry &right = *pair.right;
    const std::optional<FolderDiffStatus> status =
        statusByAttributes(method, left.size, right.size, left.modifiedMs, right.modifiedMs, toleranceSec);
    if (status) {
        item.setDiffStatus(*status);
        item.isUnread = *status == FolderDiffStatus::Same && left.size > 0;
        return;
    }
    const bool regular = left.kind == EntryKind::File && right.kind == EntryKind::File;
    item.status = regular ? UndecidedFiles : UndecidedSpecial;
}

EntryRule treeRule(CompareMethod method, qint32 toleranceSec)
{
    return [method, toleranceSec](const PairedEntry &pair, FolderDiffItem &item) {
        const Descent folders = foldersOf(pair);
        item.isDir = folders.left || folders.right;
        if (pair.left && pair.right && isFolder(pair.left) != isFolder(pair.right)) {
            item.setDiffStatus(FolderDiffStatus::Different);
            return Descent{};
        }
        if (item.isDir) {
            item.leftSize = 0;
            item.rightSize = 0;
        }
        if (!pair.left || !pair.right)
            item.setDiffStatus(oneSidedStatus(pair));
        else if (item.isDir)
            item.status = UndecidedFolder;
        else
            judgeFiles(pair, method, toleranceSec, item);
        return folders;
    };
}

EntryRule levelRule(CompareMethod method, qint32 toleranceSec)
{
    return [method, toleranceSec](const PairedEntry &pair, FolderDiffItem &item) {
        item.isDir = isFolder(pair.left ? pair.left : pair.right);
        if (!pair.left || !pair.right)
            item.setDiffStatus(oneSidedStatus(pair));
        else if (isFolder(pair.left) != isFolder(pair.right))
            item.setDiffStatus(FolderDiffStatus::Different);
        else if (item.isDir)
            item.setDiffStatus(FolderDiffStatus::Same);
        else
            judgeFiles(pair, method, toleranceSec, item);
        return Descent{};
    };
}

EntryRule structureRule(bool recursive)
{
    return [recursive](const PairedEntry &pair, FolderDiffItem &item) {
        Descent folders = foldersOf(pair);
        item.isDir = folders.left || folders.right;
        item.setDiffStatus(pair.left && pair.right ? FolderDiffStatus::Same : oneSidedStatus(pair));
        // Beside a folder stands whatever has its name, also where an alignment has paired it with a file.
        if (folders.left && !folders.right && isFolder(pair.displacedRight))
            folders.right = pair.displacedRight;
        return recursive ? folders : Descent{};
    };
}

void fillSide(const WalkSide &folder, const FolderEntry *entry, QString &path, qint64 &size, QDateTime &time)
{
    if (!entry)
        return;
    path = FolderWalk::joined(folder.path, entry->name);
    size = entry->size;
    time = QDateTime::fromMSecsSinceEpoch(entry->modifiedMs, Qt::UTC);
}

/// Makes the items of one folder pair. Ends early when cancelled.
std::vector<WalkDescent> makeItems(WalkNode &node, const std::vector<PairedEntry> &pairs, const EntryRule &rule,
                                   const CancelFlag &cancel)
{
    std::vector<WalkDescent> descents;
    node.items.reserve(pairs.size());
    for (const PairedEntry &pair : pairs) {
        if (cancel.isCancelled())
            break;
        FolderDiffItem item;
        item.name = node.name.isEmpty() ? pair.name : QString(node.name % u'/' % pair.name);
        fillSide(node.left, pair.left, item.leftPath, item.leftSize, item.leftTime);
        fillSide(node.right, pair.right, item.rightPath, item.rightSize, item.rightTime);
        const Descent descent = rule(pair, item);
        if (descent.left || descent.right)
            descents.push_back({item.name, descent.left, descent.right, node.items.size()});
        node.items.push_back(std::move(item));
    }
    return descents;
}

/// The form in which a folder goes into a run; empty for "none".
QString rootPath(const QString &path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QDir(path).absolutePath());
}

/// What a listing is made from and by.
struct ListRequest {
    const FolderRunResources &resources;
    const QString &left;
    const QString &right;
    QString prefix;
    EntryRule rule;
    const QList<ManualAlignRule> &alignRules;
    const CancelFlag &cancel;
    const FolderRunReport &report;
};

/// Lists; pairs of files that contents decide are left as they are, unless there is a `decider` for them.
ItemList listItems(const ListRequest &request, PairDecider *decider)
{
    const NamePairing pairing(request.alignRules);
    const auto visitor = [&](int worker, WalkNode &node, FolderWalk::Entries &left, FolderWalk::Entries &right) {
        std::vector<WalkDescent> descents =
            makeItems(node, pairing.pair(left, right, request.cancel), request.rule, request.cancel);
        node.complete = !request.cancel.isCancelled();
        if (decider)
            decider->decideNow(worker, node.items);
        return descents;
    };
    FolderWalk walk(request.resources.files, request.cancel, visitor, request.resources.threads);
    WalkNode *const root = walk.run(rootPath(request.left), rootPath(request.right), request.prefix, request.report);
    return takeItems(*root, request.cancel);
}

/// Lists and decides every pair.
ItemList compareItems(const ListRequest &request, CompareMethod method)
{
    PairDecider decider(request.resources.files, request.resources.threads, method, request.cancel);
    ItemList list = listItems(request, &decider);
    decider.decideRest(list.items, request.report);
    decider.tellProblems(request.report);
    cutAtUndecided(list);
    return list;
}

struct FileAttributes {
    qint64 size = 0;
    qint64 modifiedMs = 0;
};

/// What `info` says of a file, or, of one whose name or path is beyond it, what the system says.
FileAttributes attributesOf(const QFileInfo &info)
{
    if (!info.exists()) {
        const std::optional<FolderEntry> entry = FileAccess::native().describe(info.absoluteFilePath());
        return entry ? FileAttributes{entry->size, entry->modifiedMs} : FileAttributes{};
    }
    const QDateTime time = info.lastModified();
    return {info.size(), time.isValid() ? time.toMSecsSinceEpoch() : 0};
}

std::optional<FolderDiffStatus> statusByInfo(const QFileInfo &left, const QFileInfo &right, CompareMethod method,
                                             qint32 toleranceSec)
{
    if (method == CompareMethod::Crc)
        return std::nullopt;
    const FileAttributes l = attributesOf(left);
    const FileAttributes r = attributesOf(right);
    return statusByAttributes(method, l.size, r.size, l.modifiedMs, r.modifiedMs, toleranceSec);
}

bool sameContentOf(const QFileInfo &left, const QFileInfo &right, CompareMethod method, const CancelFlag &cancel)
{
    ContentComparer comparer(FileAccess::native(), cancel);
    return sameContent(comparer, method, left.absoluteFilePath(), right.absoluteFilePath(), OpenHint::Unknown);
}

} // namespace

FolderRunResources FolderRunResources::standard(HiddenEntries hidden)
{
    return {hidden == HiddenEntries::Listed ? FileAccess::nativeWithHidden() : FileAccess::native(), crewSize()};
}

QList<FolderDiffItem> compareFolderTree(const FolderRunResources &resources, const QString &leftRoot,
                                        const QString &rightRoot, const QString &relativePrefix, CompareMethod method,
                                        const CancelFlag &cancel, qint32 toleranceSec,
                                        const QList<ManualAlignRule> &alignRules, const FolderRunReport &report)
{
    ItemList list = compareItems(
        {resources, leftRoot, rightRoot, relativePrefix, treeRule(method, toleranceSec), alignRules, cancel, report},
        method);
    rollUpStatuses(list);
    addChildTotals(list);
    return list.items;
}

QList<FolderDiffItem> compareFolderLevel(const FolderRunResources &resources, const QString &leftFolder,
                                         const QString &rightFolder, CompareMethod method, const CancelFlag &cancel,
                                         qint32 toleranceSec, const QList<ManualAlignRule> &alignRules,
                                         const FolderRunReport &report)
{
    return compareItems(
               {resources, leftFolder, rightFolder, {}, levelRule(method, toleranceSec), alignRules, cancel, report},
               method)
        .items;
}

QList<FolderDiffItem> listFolderStructure(const FolderRunResources &resources, const QString &leftFolder,
                                          const QString &rightFolder, bool recursive, const CancelFlag &cancel,
                                          const QList<ManualAlignRule> &alignRules, const FolderRunReport &report)
{
    return listItems({resources, leftFolder, rightFolder, {}, structureRule(recursive), alignRules, cancel, report},
                     nullptr)
        .items;
}

FolderTotals countFolderContents(const FolderRunResources &resources, const QString &folder, const CancelFlag &cancel,
                                 const FolderRunReport &report)
{
    std::atomic<quint32> files{0};
    std::atomic<quint32> folders{0};
    std::atomic<quint64> bytes{0};
    const auto visitor = [&](int, WalkNode &, FolderWalk::Entries &entries, FolderWalk::Entries &) {
        std::vector<WalkDescent> descents;
        for (const FolderEntry &entry : entries) {
            if (entry.kind == EntryKind::Folder) {
                ++folders;
                descents.push_back({{}, &entry, nullptr, 0});
            } else {
                ++files;
                bytes += quint64(entry.size);
            }
        }
        return descents;
    };
    FolderWalk(resources.files, cancel, visitor, resources.threads).run(rootPath(folder), {}, {}, report);
    return {files, folders, bytes};
}

QList<FolderDiffItem> compareFolderTree(const QString &leftRoot, const QString &rightRoot,
                                        const QString &relativePrefix, CompareMethod method, const CancelFlag &cancel,
                                        qint32 toleranceSec, const QList<ManualAlignRule> &alignRules,
                                        const FolderRunReport &report, HiddenEntries hidden)
{
    return compareFolderTree(FolderRunResources::standard(hidden), leftRoot, rightRoot, relativePrefix, method, cancel,
                             toleranceSec, alignRules, report);
}

QList<FolderDiffItem> compareFolderLevel(const QString &leftFolder, const QString &rightFolder, CompareMethod method,
                                         const CancelFlag &cancel, qint32 toleranceSec,
                                         const QList<ManualAlignRule> &alignRules, const FolderRunReport &report,
                                         HiddenEntries hidden)
{
    return compareFolderLevel(FolderRunResources::standard(hidden), leftFolder, rightFolder, method, cancel,
                              toleranceSec, alignRules, report);
}

QList<FolderDiffItem> listFolderStructure(const QString &leftFolder, const QString &rightFolder, bool recursive,
                                          const CancelFlag &cancel, const QList<ManualAlignRule> &alignRules,
                                          const FolderRunReport &report, HiddenEntries hidden)
{
    return listFolderStructure(FolderRunResources::standard(hidden), leftFolder, rightFolder, recursive, cancel,
                               alignRules, report);
}

FolderTotals countFolderContents(const QString &folder, const CancelFlag &cancel, const FolderRunReport &report,
                                 HiddenEntries hidden)
{
    return countFolderContents(FolderRunResources::standard(hidden), folder, cancel, report);
}

void readUnread(QList<FolderDiffItem> &items, const CancelFlag &cancel, const FolderRunReport &report)
{
    ItemList list;
    list.parents = parentsByName(items);
    list.items = std::move(items);
    std::vector<qsizetype> unread;
    for (qsizetype i = 0; i < list.items.size(); ++i) {
        FolderDiffItem &item = list.items[i];
        if (item.isUnread && !item.isDir) {
            item.status = UndecidedFiles;
            unread.push_back(i);
        }
    }
    const FolderRunResources resources = FolderRunResources::standard();
    PairDecider decider(resources.files, resources.threads, CompareMethod::Rules, cancel);
    decider.decideRest(list.items, report);
    decider.tellProblems(report);
    for (const qsizetype i : unread) {
        FolderDiffItem &item = list.items[i];
        item.isUnread = item.status == UndecidedFiles;
        if (item.isUnread)
            item.setDiffStatus(FolderDiffStatus::Same);
    }
    for (FolderDiffItem &item : list.items) {
        if (item.isDir && item.isUnread)
            item.status = UndecidedFolder;
    }
    rollUpStatuses(list);
    items = std::move(list.items);
}

bool compareFilePair(const QFileInfo &left, const QFileInfo &right, CompareMethod method, const CancelFlag &cancel,
                     qint32 toleranceSec)
{
    const std::optional<FolderDiffStatus> status = statusByInfo(left, right, method, toleranceSec);
    // Under the rules the contents decide even when the sizes differ: they may be those of an earlier moment.
    const bool decided = status == FolderDiffStatus::Same || (status && method == CompareMethod::Binary);
    return decided ? status == FolderDiffStatus::Same : sameContentOf(left, right, method, cancel);
}

FolderDiffStatus fileStatus(const QFileInfo &left, const QFileInfo &right, CompareMethod method,
                            const CancelFlag &cancel, qint32 toleranceSec)
{
    if (const std::optional<FolderDiffStatus> status = statusByInfo(left, right, method, toleranceSec))
        return *status;
    return sameContentOf(left, right, method, cancel) ? FolderDiffStatus::Same : FolderDiffStatus::Different;
}

bool timestampsMatch(const QFileInfo &left, const QFileInfo &right, qint32 toleranceSec)
{
    return timesMatch(attributesOf(left).modifiedMs, attributesOf(right).modifiedMs, toleranceSec);
}

bool sameContentByDigest(const QString &left, const QString &right, const CancelFlag &cancel)
{
    return ContentComparer(FileAccess::native(), cancel).sameByDigest(left, right);
}

bool sameContentByBlocks(const QString &left, const QString &right, const CancelFlag &cancel)
{
    return ContentComparer(FileAccess::native(), cancel).sameByBlocks(left, right);
}

} // namespace velmora
