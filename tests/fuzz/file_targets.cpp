#include "app/library/session_files.h"
#include "core/json_reader.h"
#include "folder/operations/journal_lines.h"
#include "folder/sftp/engine/remote_listing.h"
#include "fuzz/targets.h"
#include "settings/options/folder_session_options.h"
#include "settings/options/text_importance_file.h"
#include "settings/options/text_session_options.h"
#include "support/bytes_source.h"
#include "system/engine/snapshot_file.h"
#include "vfs/archive/archive_tree.h"
#include "vfs/remote/remote_tree_listing.h"
#include "vfs/safe_name.h"
#include "vfs/snapshot/folder_snapshot_file.h"

#include <QBuffer>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace velmora::fuzz {

void journal(const QByteArray &input)
{
    test::BytesSource source(input);
    FileError error;
    const std::optional<JournalRecord> record = readJournal(source, {}, error);
    if (!record)
        return;
    require(readHeaderLine(headerLine(record->header)) == record->header, "a header is read as it was written");
    for (const JournalStep &step : record->steps) {
        require(!beginLine(step, step.step.kind).contains('\n') && !endLine(step).contains('\n'),
                "a step stays on its line");
        for (const Place &place : {step.step.from, step.step.to})
            require(place.root < record->header.roots.size(), "no step leaves the roots");
    }
}

void snapshot(const QByteArray &input)
{
    for (const SnapshotForm form : {SnapshotForm::TextObject, SnapshotForm::ServiceArray}) {
        const SnapshotReading read = parseSnapshot(input, form);
        require(read.ok() || read.snapshot.isEmpty(), "where a snapshot has a fault nothing is read");
        if (!read.ok())
            continue;
        const QByteArray written = snapshotToJson(read.snapshot, form);
        const SnapshotReading again = parseSnapshot(written, form);
        require(again.ok() && snapshotToJson(again.snapshot, form) == written, "a snapshot is read as it was written");
    }
}

namespace {

FolderSnapshotReading readFrom(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    Progress silent;
    require(buffer.open(QIODevice::ReadOnly), "a buffer can be read");
    return readFolderSnapshot(buffer, {}, silent);
}

bool isJson(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    require(buffer.open(QIODevice::ReadOnly), "a buffer can be read");
    JsonReader json(buffer);
    return json.skip(json.next()) && json.next() == JsonReader::Token::End;
}

} // namespace

void folderSnapshot(const QByteArray &input)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(input, &error);
    const bool isDocument = document.isObject() || document.isArray();
    require(!isDocument || isJson(document.toJson()), "what others write is read");
    const FolderSnapshotReading read = readFrom(input);
    require(read.ok() || read.snapshot.entries.empty(), "where a snapshot has a fault nothing is read");
    if (!read.ok())
        return;
    require(document.isObject(), "what is no JSON is no snapshot");
    for (const FolderSnapshotEntry &entry : read.snapshot.entries)
        require(entry.size >= 0 && staysInFolder(entry.path), "no entry leaves the folder");
    QBuffer buffer;
    require(buffer.open(QIODevice::WriteOnly) && writeFolderSnapshot(buffer, read.snapshot, {}),
            "a snapshot can be written");
    const FolderSnapshotReading again = readFrom(buffer.data());
    require(again.ok() && again.repeated == 0 && again.snapshot.entries == read.snapshot.entries,
            "a snapshot is read as it was written");
}

void remoteListing(const QByteArray &input)
{
    for (const char *folder : {".", "/", "/srv/a", "a"}) {
        const RemoteListing listing = parseRemoteListing(input, QString::fromLatin1(folder));
        for (std::size_t i = 0; i < listing.files.size(); ++i) {
            const ListedSize &file = listing.files[i];
            require(staysInFolder(file.path) && file.size >= 0, "no file leaves the folder");
            require(!file.path.contains(u'\t') && !file.path.contains(u'\n'), "a name is on one line");
            require(i == 0 || listing.files[i - 1].path < file.path, "paths are in order, each once");
        }
        require(listing.unlisted + qsizetype(listing.files.size()) <= input.count('\n') + 1,
                "a line is one file at most");
    }
}

void remoteTree(const QByteArray &input)
{
    constexpr qint64 most = 50;
    const RemoteTreeListing listing = parseTreeListing(input, most);
    QList<ArchiveProblem> problems;
    const ArchiveTree tree(listing.entries, ArchiveNames(), ArchiveLimits(), problems);
    require(qint64(listing.entries.size()) <= most + 1, "a listing ends at the limit");
    for (const ArchiveEntry &entry : listing.entries)
        require(entry.size >= 0 && !entry.name.contains('\0'), "an entry has a size and a name");
    for (qint32 node = 1; node < tree.count(); ++node) {
        const QString &name = tree.node(node).name;
        require(!name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/'), "no name leads out");
    }
}

void options(const QByteArray &input)
{
    const QJsonDocument document = QJsonDocument::fromJson(input);
    TextSessionOptions texts;
    if (fromJson(document.object(), texts)) {
        TextSessionOptions again;
        require(fromJson(toJson(texts), again) && toJson(again) == toJson(texts),
                "options are read as they were written");
    }
    FolderSessionOptions folders;
    FolderSessionOptions again;
    QSet<QString> sets[4];
    fromJson(document.object(), folders, sets[0], sets[1]);
    const QJsonObject written = toJson(folders, sets[0], sets[1]);
    fromJson(written, again, sets[2], sets[3]);
    require(toJson(again, sets[2], sets[3]) == written, "options are read as they were written");
}

void importance(const QByteArray &input)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("rules.json"));
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size(), "a file can be made");
    file.close();
    TextSessionOptions read;
    if (!importImportanceRules(path, read).ok())
        return;
    TextSessionOptions again;
    require(exportImportanceRules(path, read).ok() && importImportanceRules(path, again).ok() && again == read,
            "rules are read as they were written");
}

void sessionFile(const QByteArray &input)
{
    const QJsonDocument document = QJsonDocument::fromJson(input);
    if (!document.isObject())
        return;
    const QJsonObject record = sessionToJson(sessionFromJson(document.object()));
    require(sessionToJson(sessionFromJson(record)) == record, "a session is read as it was written");
    const Workspace workspace = workspaceFromJson(document.object());
    const QJsonObject written = workspaceToJson(workspace);
    require(workspaceToJson(workspaceFromJson(written)) == written, "a workspace is read as it was written");
    require(frontTab(workspace) < workspace.openTabs.size(), "the tab in front is one of the tabs");
}

} // namespace velmora::fuzz
