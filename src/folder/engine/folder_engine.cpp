#include "folder/engine/folder_engine.h"

#include "core/content_compare.h"
#include "core/crew.h"
#include "core/path_names.h"
#include "folder/engine/folder_walk.h"
#include "folder/engine/item_list.h"
#include "folder/engine/name_pairing.h"
#include "folder/engine/pair_decisions.h"
#include "folder/engine/short_path.h"

#include <QFileInfo>
#include <QStringBuilder>

#include <algorithm>
#include <atomic>
#include <functional>
#include <optional>
#include <vector>

namespace velmora {

namespace {

/// The folders of an entry that are looked into.
using Descent = Sides<const FolderEntry *>;

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

/// By what pairs of files are judged.
struct FileRule {
    CompareMethod method;
    qint32 toleranceSec;
    bool ignoresHours;
};

FileRule fileRuleOf(const FolderInput &input)
{
    return {input.method, input.toleranceSec, input.ignoresHours};
}

/// Gives `item` the status of two files, or what stands for it until their contents have been read.
void judgeFiles(const PairedEntry &pair, const FileRule &rule, FolderDiffItem &item)
{
    const FolderEntry &left = *pair.left;
    const FolderEntry &right = *pair.right;
    const bool isShifted = rule.ignoresHours && areWholeHoursApart(left.modifiedMs, right.modifiedMs);
    const std::optional<FolderDiffStatus> status =
        statusByAttributes(rule.method, left.size, right.size, left.modifiedMs,
                           isShifted ? left.modifiedMs : right.modifiedMs, rule.toleranceSec);
    if (status) {
        item.setDiffStatus(*status);
        item.isUnread = *status == FolderDiffStatus::Same && left.size > 0;
        return;
    }
    const bool regular = left.kind == EntryKind::File && right.kind == EntryKind::File;
    item.status = regular ? UndecidedFiles : UndecidedSpecial;
}

EntryRule treeRule(const FileRule &rule)
{
    return [rule](const PairedEntry &pair, FolderDiffItem &item) {
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
            judgeFiles(pair, rule, item);
        return folders;
    };
}

/// Contents are read by the full paths of pairs; of other entries nobody needs one before they are carried somewhere.
EntryRule withShortPaths(const EntryRule &rule, const Sides<QString> &roots)
{
    return [rule, roots](const PairedEntry &pair, FolderDiffItem &item) {
        if (!pair.right)
            shortenPath(item.leftPath, item.name, roots.left);
        else if (!pair.left)
            shortenPath(item.rightPath, item.name, roots.right);
        return rule(pair, item);
    };
}

EntryRule levelRule(const FileRule &rule)
{
    return [rule](const PairedEntry &pair, FolderDiffItem &item) {
        item.isDir = isFolder(pair.left ? pair.left : pair.right);
        if (!pair.left || !pair.right)
            item.setDiffStatus(oneSidedStatus(pair));
        else if (isFolder(pair.left) != isFolder(pair.right))
            item.setDiffStatus(FolderDiffStatus::Different);
        else if (item.isDir)
            item.setDiffStatus(FolderDiffStatus::Same);
        else
            judgeFiles(pair, rule, item);
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
    path = joinedPath(folder.path, entry->name);
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
        fillSide(node.sides.left, pair.left, item.leftPath, item.leftSize, item.leftTime);
        fillSide(node.sides.right, pair.right, item.rightPath, item.rightSize, item.rightTime);
        const Descent descent = rule(pair, item);
        if (descent.left || descent.right)
            descents.push_back({item.name, descent, node.items.size()});
        node.items.push_back(std::move(item));
    }
    return descents;
}

int threadsOf(const FolderInput &input)
{
    return input.threads > 0 ? input.threads : crewSize();
}

/// One listing: what an entry becomes, and how it is carried out.
struct Listing {
    const FolderInput &input;
    EntryRule rule;
    const CancelFlag &cancel;
    const FolderRunReport &report;
};

/// Lists; pairs of files that contents decide are left as they are, unless there is a `decider` for them.
ItemList listItems(const Listing &listing, PairDecider *decider)
{
    const NamePairing pairing(listing.input.alignRules);
    const auto visitor = [&](int worker, WalkNode &node, Sides<FolderWalk::Entries> &entries) {
        std::vector<WalkDescent> descents =
            makeItems(node, pairing.pair(entries.left, entries.right, listing.cancel), listing.rule, listing.cancel);
        node.complete = !listing.cancel.isCancelled();
        if (decider) {
            decider->decideKnown(node.items);
            decider->decideNow(worker, node.items);
        }
        return descents;
    };
    FolderWalk walk(listing.input, threadsOf(listing.input), listing.cancel, visitor);
    return takeItems(*walk.run(listing.report), listing.cancel);
}

/// Whether two times are the same as far as the coarser one tells: archives mostly have whole seconds.
bool mayBeOneTime(qint64 leftMs, qint64 rightMs, qint32 toleranceSec)
{
    const bool isCoarse = leftMs % 1000 == 0 || rightMs % 1000 == 0;
    return timesMatch(leftMs, rightMs, toleranceSec) || (isCoarse && leftMs / 1000 == rightMs / 1000);
}

/// Judges pairs of which nobody can tell the contents.
void settleByAttributes(QList<FolderDiffItem> &items, const FolderInput &input)
{
    const bool timesTell = tellTimes(sourcesOf(input.roots));
    for (FolderDiffItem &item : items) {
        if (item.status != UndecidedFiles && item.status != UndecidedSpecial)
            continue;
        const bool isSame = item.leftSize == item.rightSize &&
                            (!timesTell || mayBeOneTime(item.leftTime.toMSecsSinceEpoch(),
                                                        item.rightTime.toMSecsSinceEpoch(), input.toleranceSec));
        item.setDiffStatus(isSame ? FolderDiffStatus::Same : FolderDiffStatus::Different);
        item.isUnread = isSame && item.leftSize > 0;
    }
}

bool haveContents(const FolderInput &input)
{
    return std::all_of(bothSides.begin(), bothSides.end(), [&input](Side side) {
        const TreeFolder &root = input.roots[side];
        return !root.source || root.source->contentAccess() == ContentAccess::Readable;
    });
}

/// Lists and decides every pair.
ItemList compareItems(const Listing &listing)
{
    const FolderInput &input = listing.input;
    PairDecider decider(sourcesOf(input.roots), threadsOf(input), input.method, listing.cancel);
    ItemList list = listItems(listing, &decider);
    decider.decideRest(list.items, listing.report);
    decider.tellProblems(listing.report);
    if (!haveContents(input) && !listing.cancel.isCancelled())
        settleByAttributes(list.items, input);
    cutAtUndecided(list);
    return list;
}

QList<FolderDiffItem> compareTree(const Listing &listing)
{
    ItemList list = compareItems(listing);
    rollUpStatuses(list);
    addChildTotals(list);
    return list.items;
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

FolderInput FolderInput::of(const Sides<TreeFolder> &roots, const FolderSessionOptions &options)
{
    return {.roots = roots,
            .method = compareMethod(options.compareBasis),
            .toleranceSec = options.timeToleranceSec,
            .alignRules = options.alignOverrides,
            .hidden = hiddenEntries(options)};
}

QList<FolderDiffItem> compareFolderTree(const FolderInput &input, const CancelFlag &cancel,
                                        const FolderRunReport &report)
{
    return compareTree({input, treeRule(fileRuleOf(input)), cancel, report});
}

QList<FolderDiffItem> compareFolderTreeInShort(const FolderInput &input, const CancelFlag &cancel,
                                               const FolderRunReport &report)
{
    const Sides<QString> roots{input.roots.left.path, input.roots.right.path};
    return compareTree({input, withShortPaths(treeRule(fileRuleOf(input)), roots), cancel, report});
}

QList<FolderDiffItem> compareFolderLevel(const FolderInput &input, const CancelFlag &cancel,
                                         const FolderRunReport &report)
{
    return compareItems({input, levelRule(fileRuleOf(input)), cancel, report}).items;
}

QList<FolderDiffItem> listFolderStructure(const FolderInput &input, bool recursive, const CancelFlag &cancel,
                                          const FolderRunReport &report)
{
    return listItems({input, structureRule(recursive), cancel, report}, nullptr).items;
}

FolderTotals countFolderContents(const TreeFolder &folder, const CancelFlag &cancel, const FolderRunReport &report,
                                 HiddenEntries hidden)
{
    std::atomic<quint32> files{0};
    std::atomic<quint32> folders{0};
    std::atomic<quint64> bytes{0};
    const FolderInput input{.roots = {folder, {}}, .hidden = hidden};
    const auto visitor = [&](int, WalkNode &, Sides<FolderWalk::Entries> &entries) {
        std::vector<WalkDescent> descents;
        for (const FolderEntry &entry : entries.left) {
            if (entry.kind == EntryKind::Folder) {
                ++folders;
                descents.push_back({{}, {&entry, nullptr}, 0});
            } else {
                ++files;
                bytes += quint64(entry.size);
            }
        }
        return descents;
    };
    FolderWalk(input, threadsOf(input), cancel, visitor).run(report);
    return {files, folders, bytes};
}

void readUnread(const FolderInput &input, QList<FolderDiffItem> &items, const CancelFlag &cancel,
                const FolderRunReport &report)
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
    PairDecider decider(sourcesOf(input.roots), threadsOf(input), CompareMethod::Rules, cancel);
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
