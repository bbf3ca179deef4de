#include "folder/compare/archive_compare_widget.h"

#include "core/content_compare.h"
#include "core/path_names.h"
#include "folder/actions/archive_words.h"
#include "folder/actions/other_words.h"
#include "folder/compare/folder_compare_bar.h"
#include "session/dialogs.h"
#include "session/frame/status_line.h"
#include "session/translate.h"
#include "vfs/local_folder.h"
#include "vfs/place/other_tree.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace velmora {

namespace {

QString placeOf(const TreeAt &tree)
{
    return tree.folder.source ? tree.folder.source->location().place : QString();
}

bool sameStamp(const std::optional<FolderEntry> &left, const std::optional<FolderEntry> &right)
{
    return left && right && left->size == right->size && left->modifiedMs == right->modifiedMs;
}

bool isFolderPath(const QString &path)
{
    return QFileInfo(path).isDir();
}

} // namespace

ArchiveCompareWidget::ArchiveCompareWidget(SessionHost &host, QWidget *parent) : FolderCompareWidget(host, parent)
{
    bar().syncFolders->setVisible(false);
    connect(this, &SessionWidget::comparisonFinished, this, [this] {
        if (mayReadUnread())
            readUnread();
    });
    // What the two are as a whole says more than how many contents were read for it.
    connect(&comparison(), &FolderComparison::contentsCompared, this, &ArchiveCompareWidget::showSummary,
            Qt::QueuedConnection);
    connect(&m_runner, &Runner::runningChanged, this, &ArchiveCompareWidget::showRunning);
    showReady();
}

QString ArchiveCompareWidget::kind() const
{
    return QStringLiteral("archive");
}

FolderCompareWidget::TreeWords ArchiveCompareWidget::words() const
{
    return {Velmora::tr("Archive compare ready: drag archives or folders to the left/right pane."),
            Velmora::tr("Select two archives to compare, or an archive and a folder"),
            Velmora::tr("Drop an archive or a folder on each side, or enter the two paths above."),
            Velmora::tr("Drop an archive or a folder on the other side, or enter its path above."),
            Velmora::tr("There is no such archive or folder: %1")};
}

bool ArchiveCompareWidget::takesPath(const QString &path) const
{
    return QFileInfo::exists(path);
}

void ArchiveCompareWidget::browse(Side side)
{
    const SessionPaths now = paths();
    Dialogs::instance().openFile(
        this, side == Side::Left ? Velmora::tr("Select left archive") : Velmora::tr("Select right archive"),
        side == Side::Left ? now.left : now.right, Velmora::tr("All files (*.*)"),
        [this, side](const QString &path) { takeSidePath(side, path); });
}

// Opening -------------------------------------------------------------------------------------------------------------

TreeFolder ArchiveCompareWidget::folderAt(Side side, const QString &path) const
{
    const TreeAt &tree = m_opened.sides[side].tree;
    const QString place = placeOf(tree);
    if (isFolderPath(path))
        return localFolder(path);
    const QString clean = isOtherTree(path) ? otherTreeText(path) : Location::ofFolder(path).place;
    if (place.isEmpty() || tree.isFolder || (clean != place && !clean.startsWith(place + u'/')))
        return {};
    const QString inside = clean.sliced(place.size());
    if (inside.isEmpty())
        return {tree.folder.source, QStringLiteral("/")};
    const std::optional<FolderEntry> entry = tree.folder.source->describe(inside, HiddenEntries::Listed);
    return entry && entry->kind == EntryKind::Folder ? TreeFolder{tree.folder.source, inside} : TreeFolder();
}

bool ArchiveCompareWidget::isCurrent(Side side, const QString &path) const
{
    if (isFolderPath(path))
        return true;
    if (isOtherTree(path)) // a branch may lead to another commit by now, and nobody tells what a host has
        return false;
    const TreeFolder folder = folderAt(side, path);
    return folder.isThere() &&
           sameStamp(m_opened.sides[side].stamp, FileAccess::native().describe(folder.source->location().place));
}

Sides<TreeFolder> ArchiveCompareWidget::trees(const SessionPaths &paths) const
{
    return {folderAt(Side::Left, paths.left), folderAt(Side::Right, paths.right)};
}

bool ArchiveCompareWidget::openTrees()
{
    const SessionPaths wanted = paths();
    // Archives within are files of a folder, and of a snapshot of it.
    const auto isOfFiles = [](const QString &path) { return isFolderPath(path) || snapshotPlaceOf(path); };
    const bool withFolder = isOfFiles(wanted.left) || isOfFiles(wanted.right);
    const bool isSamePairing = m_opened.sides.left.tree.isFolder == isFolderPath(wanted.left) &&
                               m_opened.sides.right.tree.isFolder == isFolderPath(wanted.right);
    if (isSamePairing && isCurrent(Side::Left, wanted.left) && isCurrent(Side::Right, wanted.right))
        return true;
    Sides<ArchiveRequest> requests;
    requests.left.path = wanted.left;
    requests.right.path = wanted.right;
    for (const Side side : bothSides) {
        requests[side].password = m_passwords[side];
        requests[side].nested = withFolder ? NestedArchives::StayFiles : NestedArchives::BecomeFolders;
    }
    showMessage(Velmora::tr("Opening the archives..."));
    m_runner.start(
        [requests](const CancelFlag &cancel, Progress &progress) { return open(requests, cancel, progress); },
        [this, wanted](RunOutcome<Opening> &&outcome) {
            if (outcome.end == RunEnd::Done && outcome.value)
                take(std::move(*outcome.value), wanted);
            else
                tellUnopened(outcome.end == RunEnd::Cancelled ? Velmora::tr("Compare cancelled")
                                                              : Velmora::tr("Not enough memory to open the archives"));
        },
        [this](const ProgressState &state) { statusLine().showProgress(state, bareName(state.item)); });
    return false;
}

ArchiveCompareWidget::Opening ArchiveCompareWidget::open(const Sides<ArchiveRequest> &requests,
                                                         const CancelFlag &cancel, Progress &progress)
{
    Opening opening;
    Sides<TreeAt> trees = treesAt(requests, cancel, progress);
    for (const Side side : bothSides) {
        opening.sides[side].tree = std::move(trees[side]);
        opening.sides[side].stamp = FileAccess::native().describe(placeOf(opening.sides[side].tree));
    }
    const Opened &left = opening.sides.left;
    const Opened &right = opening.sides.right;
    const bool areArchives = left.tree.folder.isThere() && right.tree.folder.isThere() && !left.tree.isFolder &&
                             !right.tree.isFolder && left.stamp && right.stamp;
    opening.haveSameBytes =
        areArchives && left.stamp->size == right.stamp->size &&
        ContentComparer(FileAccess::native(), cancel).sameByDigest(placeOf(left.tree), placeOf(right.tree));
    return opening;
}

void ArchiveCompareWidget::take(Opening &&opening, const SessionPaths &wanted)
{
    m_opened = std::move(opening);
    for (const Side side : bothSides) {
        const ArchiveOpening &archive = m_opened.sides[side].tree.opening;
        const QString path = side == Side::Left ? wanted.left : wanted.right;
        const bool lacksPassword = std::any_of(archive.problems.begin(), archive.problems.end(), [](const auto &one) {
            return one.kind == ArchiveProblem::Kind::Encrypted;
        });
        if ((lacksPassword && m_askedFor[side] != path) || archive.fault == ArchiveFault::WrongPassword) {
            askPassword(side, path);
            if (archive.fault == ArchiveFault::None)
                continue;
        }
        if (const QString fault = otherFaultText(path, m_opened.sides[side].tree.other); !fault.isEmpty()) {
            tellUnopened(fault);
            return;
        }
        if (archive.fault != ArchiveFault::None) {
            tellUnopened(archiveFaultText(path, archive));
            return;
        }
    }
    tellProblems();
    loadOpened();
}

void ArchiveCompareWidget::tellProblems()
{
    for (const Side side : bothSides) {
        for (const ArchiveProblem &problem : m_opened.sides[side].tree.opening.problems)
            log(placeOf(m_opened.sides[side].tree) + QLatin1String(": ") + archiveProblemText(problem));
    }
}

void ArchiveCompareWidget::askPassword(Side side, const QString &path)
{
    m_askedFor[side] = path;
    Dialogs::instance().askPassword(this, Velmora::tr("Password"),
                                    Velmora::tr("The archive %1 is encrypted. Password:").arg(bareName(path)),
                                    [this, side](const QString &password) {
                                        m_passwords[side] = password.toUtf8();
                                        m_opened.sides[side] = {};
                                        if (!password.isEmpty())
                                            onRefresh();
                                    });
}

// What the two are ----------------------------------------------------------------------------------------------------

QString ArchiveCompareWidget::caution() const
{
    for (const Side side : {Side::Right, Side::Left}) {
        const QList<ArchiveProblem> &problems = m_opened.sides[side].tree.opening.problems;
        if (!problems.isEmpty())
            return archiveProblemText(problems.first());
    }
    return {};
}

QString ArchiveCompareWidget::verdict() const
{
    const FolderCounts &counts = comparison().tree().counts();
    const Sides<TreeFolder> &roots = comparison().spec().roots;
    const bool areWhole = comparison().isWhole() && counts.hidden == 0 && counts.unknown == 0 &&
                          comparison().problems().isEmpty() && roots.left.path == u"/" && roots.right.path == u"/";
    if (!areWhole || !caution().isEmpty())
        return {};
    if (m_opened.haveSameBytes)
        return Velmora::tr("Same bytes: the two archives are one and the same");
    if (counts.leftOnly > 0 || counts.rightOnly > 0)
        return Velmora::tr("Different names");
    if (counts.different > 0)
        return Velmora::tr("Same names, different contents");
    return counts.unread > 0 ? Velmora::tr("Same names")
                             : Velmora::tr("Same contents: only order, times or packing differ");
}

} // namespace velmora
