#include "app/session_kinds.h"

#include "app/help/picture_icon.h"
#include "filetypes/binary/binary_compare_widget.h"
#include "filetypes/checksum/checksum_widget.h"
#include "filetypes/image/image_compare_widget.h"
#include "filetypes/mp3/mp3_compare_widget.h"
#include "filetypes/registry/registry_compare_widget.h"
#include "filetypes/table/table_compare_widget.h"
#include "filetypes/version/version_compare_widget.h"
#include "folder/browse/archive_browse_widget.h"
#include "folder/compare/archive_compare_widget.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/duplicates/duplicate_finder_widget.h"
#include "folder/git/git_compare_widget.h"
#include "folder/merge/folder_merge_widget.h"
#include "folder/sftp/sftp_compare_widget.h"
#include "folder/snapshot/folder_snapshot_widget.h"
#include "folder/sync/folder_sync_widget.h"
#include "folder/usage/disk_usage_widget.h"
#include "merge/three_way_merge_widget.h"
#include "session/document/text_recovery.h"
#include "session/session_record.h"
#include "session/theme.h"
#include "session/translate.h"
#include "system/snapshot_widget.h"
#include "text/edit/text_edit_widget.h"
#include "text/text_compare_widget.h"
#include "vfs/place/other_tree.h"

#include <QDir>

namespace velmora {

namespace {

template <typename Widget>
SessionWidget *make(SessionHost &host, QWidget *parent)
{
    return new Widget(host, parent);
}

using enum KindGroup;

// The order is that of the "New session" and "Tools" menus, where the kinds that a menu lacks are left out.
constexpr SessionKindRow rows[] = {
    {.id = QLatin1String("folder"),
     .group = Compare,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Folder compare(&F)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Folder compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Folder compare %1"),
     .startText = QT_TRANSLATE_NOOP("Velmora", "Comparing folders..."),
     .opensPairs = true,
     .purpose = SessionHost::Purpose::CompareFolders,
     .icon = ":/icons/sessions/FolderCompare.ico",
     .slot = "onNewFolderCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "See which files two folders share, lack or hold in different versions."),
     .create = make<FolderCompareWidget>},
    {.id = QLatin1String("text"),
     .alias = QLatin1String("diff"),
     .group = Compare,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Text compare(&I)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Text compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Text compare %1"),
     .opensPairs = true,
     .filesOnly = true,
     .purpose = SessionHost::Purpose::CompareTexts,
     .icon = ":/icons/sessions/TextCompare.ico",
     .slot = "onNewTextCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare two text files line by line and edit them side by side."),
     .create = make<TextCompareWidget>,
     .holdsUnsaved = holdsUnsavedText},
    {.id = QLatin1String("textedit"),
     .group = Compare,
     .sides = 1,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Text edit"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Text edit %1"),
     .lonePath = LonePath::Any,
     .filesOnly = true,
     .icon = ":/icons/sessions/TextCompare.ico",
     .slot = "onNewTextCompareEdit",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Open, edit and save one text file."),
     .create = make<TextEditWidget>,
     .holdsUnsaved = holdsUnsavedText},
    {.id = QLatin1String("merge"),
     .group = Compare,
     .sides = 3,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Text merge(&E)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Text merge"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Three-way merge %1"),
     .lonePath = LonePath::File,
     .filesOnly = true,
     .purpose = SessionHost::Purpose::MergeTexts,
     .icon = ":/icons/sessions/TextMerge.ico",
     .slot = "onNewThreeWayMerge",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Merge two versions of a text file that come from one base."),
     .create = make<ThreeWayMergeWidget>,
     .holdsUnsaved = holdsUnsavedText},
    {.id = QLatin1String("table"),
     .group = Compare,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Table compare(&T)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Table compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Table compare %1"),
     .opensPairs = true,
     .filesOnly = true,
     .icon = ":/icons/sessions/TableCompare.ico",
     .slot = "onNewTableCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare two CSV or TSV tables cell by cell."),
     .create = make<TableCompareWidget>},
    {.id = QLatin1String("binary"),
     .group = Compare,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Hex compare(&H)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Hex compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Binary compare %1"),
     .opensPairs = true,
     .filesOnly = true,
     .purpose = SessionHost::Purpose::CompareBytes,
     .icon = ":/icons/sessions/HexCompare.ico",
     .slot = "onNewBinaryCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare two files of any kind byte by byte."),
     .create = make<BinaryCompareWidget>},
    {.id = QLatin1String("image"),
     .group = Compare,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Image compare(&P)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Image compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Image compare %1"),
     .opensPairs = true,
     .filesOnly = true,
     .icon = ":/icons/sessions/ImageCompare.ico",
     .slot = "onNewImageCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare two pictures pixel by pixel, with a tolerance."),
     .create = make<ImageCompareWidget>},
    {.id = QLatin1String("mp3"),
     .group = Compare,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "MP3 compare(&M)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "MP3 compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "MP3 compare %1"),
     .filesOnly = true,
     .icon = ":/icons/sessions/MP3Compare.ico",
     .slot = "onNewMp3Compare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare the tags and the sound of two pieces of music."),
     .create = make<Mp3CompareWidget>},
    {.id = QLatin1String("foldermerge"),
     .group = MergeAndSync,
     .sides = 3,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Folder merge(&O)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Folder merge"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Folder merge %1"),
     .startText = QT_TRANSLATE_NOOP("Velmora", "Comparing folders..."),
     .icon = ":/icons/sessions/FolderMerge.ico",
     .slot = "onNewFolderMerge",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Merge two versions of a folder that come from one base."),
     .create = make<FolderMergeWidget>},
    {.id = QLatin1String("sync"),
     .group = MergeAndSync,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Folder sync(&Y)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Folder sync"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Folder sync %1"),
     .pairTitle = QT_TRANSLATE_NOOP("Velmora", "Sync %1 <-> %2"),
     .startText = QT_TRANSLATE_NOOP("Velmora", "Comparing folders..."),
     .opensPairs = true,
     .purpose = SessionHost::Purpose::SyncFolders,
     .icon = ":/icons/sessions/FolderSync.ico",
     .slot = "onNewFolderSync",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Bring two folders to the same state, after a look at the plan."),
     .create = make<FolderSyncWidget>},
    {.id = QLatin1String("registry"),
     .group = System,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Registry compare(&R)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Registry compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Registry compare %1"),
     .opensPairs = true,
     .icon = ":/icons/sessions/RegistryCompare.ico",
     .slot = "onNewRegistryCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare the keys and values of two registry trees."),
     .create = make<RegistryCompareWidget>},
    {.id = QLatin1String("version"),
     .group = System,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Version compare(&V)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Version compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Version compare %1"),
     .opensPairs = true,
     .filesOnly = true,
     .icon = ":/icons/sessions/VersionCompare.ico",
     .slot = "onNewVersionCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare the version information of two programs or libraries."),
     .create = make<VersionCompareWidget>},
    {.id = QLatin1String("git"),
     .group = Contents,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Git compare(&G)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Git compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Git compare %1"),
     .pairTitle = QT_TRANSLATE_NOOP("Velmora", "Git: %1"),
     .loneTitle = QT_TRANSLATE_NOOP("Velmora", "Git: %1"),
     .opensPairs = true,
     .lonePath = LonePath::Any,
     .icon = ":/icons/sessions/git.png",
     .slot = "onNewGitCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare two states of a Git repository."),
     .create = make<GitCompareWidget>},
    {.id = QLatin1String("archive"),
     .group = Contents,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Archive compare(&A)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Archive compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Archive compare %1"),
     .opensPairs = true,
     .filesOnly = true,
     .icon = ":/icons/sessions/archive.png",
     .slot = "onNewArchiveCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare the contents of two archives."),
     .create = make<ArchiveCompareWidget>},
    {.id = QLatin1String("archivebrowse"),
     .alias = QLatin1String("archbrowse"),
     .group = Contents,
     .sides = 1,
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Archive browse"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Archive browse %1"),
     .loneTitle = QT_TRANSLATE_NOOP("Velmora", "Browse: %1"),
     .lonePath = LonePath::File,
     .filesOnly = true,
     .icon = ":/icons/sessions/archive.png",
     .slot = "onNewArchiveBrowse",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Look into an archive without unpacking it."),
     .create = make<ArchiveBrowseWidget>},
    {.id = QLatin1String("checksum"),
     .group = Contents,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Checksum(&K)"),
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Checksum"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Checksum %1"),
     .opensPairs = true,
     .lonePath = LonePath::Any,
     .filesOnly = true,
     .icon = ":/icons/sessions/checksum.png",
     .slot = "onNewChecksumTool",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compute the checksums of a file and match them with an expected value."),
     .create = make<ChecksumWidget>},
    {.id = QLatin1String("duplicate"),
     .group = Tools,
     .sides = 1,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Duplicate finder(&D)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Duplicates"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Duplicate finder %1"),
     .loneTitle = QT_TRANSLATE_NOOP("Velmora", "Duplicates: %1"),
     .startText = QT_TRANSLATE_NOOP("Velmora", "Scanning…"),
     .lonePath = LonePath::Folder,
     .icon = ":/icons/sessions/duplicate.png",
     .slot = "onNewDuplicateFinder",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Find the files of a folder tree that are there more than once."),
     .create = make<DuplicateFinderWidget>},
    {.id = QLatin1String("snapshot"),
     .group = Tools,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Folder snapshot(&N)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Snapshot"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Folder snapshot %1"),
     .icon = ":/icons/sessions/snapshot.png",
     .slot = "onNewFolderSnapshot",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Record the state of a folder and see later what has changed."),
     .create = make<FolderSnapshotWidget>},
    {.id = QLatin1String("env"),
     .group = Tools,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Environment compare(&E)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Environment"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Environment compare %1"),
     .icon = ":/icons/sessions/env.png",
     .slot = "onNewEnvSnapshot",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Record the environment variables and compare them with a record."),
     .create = make<EnvSnapshotWidget>},
    {.id = QLatin1String("diskusage"),
     .group = Tools,
     .sides = 1,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Disk usage(&U)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Disk usage"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Disk usage %1"),
     .loneTitle = QT_TRANSLATE_NOOP("Velmora", "Disk usage: %1"),
     .startText = QT_TRANSLATE_NOOP("Velmora", "Scanning…"),
     .lonePath = LonePath::Folder,
     .icon = ":/icons/sessions/disk.png",
     .slot = "onNewDiskUsage",
     .summary = QT_TRANSLATE_NOOP("Velmora", "See which files and folders take up the space of a folder tree."),
     .create = make<DiskUsageWidget>},
    {.id = QLatin1String("service"),
     .group = Tools,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Services snapshot(&S)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Services"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Services snapshot %1"),
     .icon = ":/icons/sessions/services.png",
     .slot = "onNewServiceSnapshot",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Record the system's services and compare them with a record."),
     .create = make<ServiceSnapshotWidget>},
    {.id = QLatin1String("startup"),
     .group = Tools,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "Startup items(&T)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "Startup"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "Startup items %1"),
     .icon = ":/icons/sessions/startup.png",
     .slot = "onNewStartupSnapshot",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Record what starts with the system and compare it with a record."),
     .create = make<StartupSnapshotWidget>},
    {.id = QLatin1String("sftp"),
     .group = Tools,
     .sides = 2,
     .menuText = QT_TRANSLATE_NOOP("Velmora", "SFTP/SSH folder compare(&H)"),
     .inTools = true,
     .displayName = QT_TRANSLATE_NOOP("Velmora", "SFTP compare"),
     .tabTitle = QT_TRANSLATE_NOOP("Velmora", "SFTP compare %1"),
     .remote = true,
     .icon = ":/icons/sessions/sftp.png",
     .slot = "onNewSftpCompare",
     .summary = QT_TRANSLATE_NOOP("Velmora", "Compare a local folder with one on a remote host over SSH."),
     .create = make<SftpCompareWidget>},
};

/// Icons by resource path, with what has been decoded of them: each kind is shown in half a dozen places.
QHash<QString, QIcon> &iconCache()
{
    static QHash<QString, QIcon> icons;
    // Pictures must not outlive the application object.
    static const bool cleared = [] {
        qAddPostRoutine([] { iconCache().clear(); });
        return true;
    }();
    Q_UNUSED(cleared)
    return icons;
}

} // namespace

std::span<const SessionKindRow> sessionKinds()
{
    return rows;
}

const SessionKindRow *findSessionKind(const QString &kind)
{
    const QString id = kind.trimmed().toLower();
    if (id.isEmpty())
        return nullptr;
    const auto *row = std::find_if(std::begin(rows), std::end(rows),
                                   [&id](const SessionKindRow &r) { return r.id == id || r.alias == id; });
    return row == std::end(rows) ? nullptr : row;
}

QString kindFor(SessionHost::Purpose purpose)
{
    const auto *row =
        std::find_if(std::begin(rows), std::end(rows), [&](const SessionKindRow &r) { return r.purpose == purpose; });
    return row == std::end(rows) ? QString() : QString(row->id);
}

const SessionKindRow &sessionKind(QLatin1String id)
{
    const SessionKindRow *row = findSessionKind(id);
    if (!row)
        qFatal("no session kind %s", id.data());
    return *row;
}

QIcon sessionKindIcon(const QString &kind)
{
    const SessionKindRow *row = findSessionKind(kind);
    if (!row)
        return {};
    const QString path = themedIconPath(QString::fromLatin1(row->icon));
    QHash<QString, QIcon> &icons = iconCache();
    auto known = icons.constFind(path);
    if (known == icons.constEnd())
        known = icons.insert(path, pictureIcon(path));
    return *known;
}

QString sessionTitle(const SessionKindRow &kind, const SessionPaths &paths)
{
    if (paths == SessionPaths())
        return Velmora::tr(kind.displayName);
    if (paths.left.isEmpty() || paths.right.isEmpty()) {
        const QString &only = paths.left.isEmpty() ? paths.right : paths.left;
        return Velmora::tr(kind.loneTitle).arg(pathName(only));
    }
    const QString format = Velmora::tr(kind.pairTitle);
    // All at once: a name may itself hold what looks like a placeholder. A format with one place takes the left name.
    return format.contains(QLatin1String("%2")) ? format.arg(pathName(paths.left), pathName(paths.right))
                                                : format.arg(pathName(paths.left));
}

QString pathName(const QString &path)
{
    // Which host or state it is tells more than the name of its folder.
    if (isOtherTree(path))
        return otherTreeTitle(path);
    const QString clean = QDir::cleanPath(QDir::fromNativeSeparators(path));
    const QString name = QFileInfo(clean).fileName();
    return name.isEmpty() ? path : name;
}

} // namespace velmora
