#include "cli/folder_json.h"

#include "cli/folder_request.h"
#include "cli/json_writer.h"
#include "filetypes/version/engine/file_version.h"

#include <algorithm>
#include <memory>

namespace velmora::cli {

namespace {

QLatin1String problemName(FolderProblem::Kind kind)
{
    switch (kind) {
    case FolderProblem::Kind::UnreadableFolder:
        break;
    case FolderProblem::Kind::LinkCycle:
        return QLatin1String("linkCycle");
    case FolderProblem::Kind::UnreadableFile:
        return QLatin1String("unreadableFile");
    }
    return QLatin1String("unreadableFolder");
}

void writeTime(JsonWriter &json, std::string_view key, const QDateTime &time)
{
    json.key(key);
    if (time.isValid())
        json.text(time.toUTC().toString(Qt::ISODateWithMs));
    else
        json.null();
}

QString versionOf(const TreeFolder &folder, const QString &path)
{
    if (path.isEmpty())
        return {};
    const std::unique_ptr<FileOpener> opener = folder.source->makeOpener();
    const std::unique_ptr<OpenFile> file = opener->open(path, OpenHint::Unknown);
    return file ? readFileVersion(*file) : QString();
}

void writeItem(JsonWriter &json, const FolderRequest &request, const FolderDiffItem &item)
{
    json.beginObject();
    json.text("name", item.name);
    json.text("leftPath", item.leftPath);
    json.text("rightPath", item.rightPath);
    json.number("status", qint64(item.status));
    json.number("leftSize", item.leftSize);
    json.number("rightSize", item.rightSize);
    writeTime(json, "leftTime", item.leftTime);
    writeTime(json, "rightTime", item.rightTime);
    json.boolean("isDir", item.isDir);
    json.boolean("isUnread", item.isUnread);
    if (request.tellsVersions && !item.isDir) {
        json.text("leftVersion", versionOf(request.folders.left, item.leftPath));
        json.text("rightVersion", versionOf(request.folders.right, item.rightPath));
    }
    json.endObject();
}

void writeProblem(JsonWriter &json, const FolderProblem &problem)
{
    json.beginObject();
    json.text("kind", problemName(problem.kind));
    json.text("path", problem.path);
    json.endObject();
}

template <typename T, typename WriteOne>
void writeList(JsonWriter &json, std::string_view key, const QList<T> &list, WriteOne writeOne)
{
    json.key(key);
    json.beginList();
    for (const T &one : list)
        writeOne(one);
    json.endList();
}

} // namespace

qint64 countUnread(const QList<FolderDiffItem> &items)
{
    return std::count_if(items.begin(), items.end(),
                         [](const FolderDiffItem &item) { return item.isUnread && !item.isDir; });
}

void writeFolderJson(OutputBuffer &output, const FolderRequest &request, const FolderAnswer &answer)
{
    QStringList notCompared = answer.notCompared.values();
    notCompared.sort();
    JsonWriter json(output);
    json.beginObject();
    json.text("left", request.folders.left.shownPath());
    json.text("right", request.folders.right.shownPath());
    json.number("unread", countUnread(answer.items));
    writeList(json, "notCompared", notCompared, [&json](const QString &name) { json.text(name); });
    writeList(json, "problems", answer.problems,
              [&json](const FolderProblem &problem) { writeProblem(json, problem); });
    writeList(json, "items", answer.items, [&](const FolderDiffItem &item) { writeItem(json, request, item); });
    json.endObject();
}

} // namespace velmora::cli
