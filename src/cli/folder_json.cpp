#include "cli/folder_json.h"

#include "cli/folder_request.h"
#include "cli/json_writer.h"

#include <algorithm>

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

void writeItem(JsonWriter &json, const FolderDiffItem &item)
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
    json.endObject();
}

void writeProblem(JsonWriter &json, const FolderProblem &problem)
{
    json.beginObject();
    json.text("kind", problemName(problem.kind));
    json.text("path", problem.path);
    json.endObject();
}

template <typename T>
void writeList(JsonWriter &json, std::string_view key, const QList<T> &list, void (*writeOne)(JsonWriter &, const T &))
{
    json.key(key);
    json.beginList();
    for (const T &one : list)
        writeOne(json, one);
    json.endList();
}

} // namespace

qint64 countUnread(const QList<FolderDiffItem> &items)
{
    return std::count_if(items.begin(), items.end(),
                         [](const FolderDiffItem &item) { return item.isUnread && !item.isDir; });
}

void writeFolderJson(OutputBuffer &output, const FolderRequest &request, const QList<FolderDiffItem> &items,
                     const QList<FolderProblem> &problems)
{
    JsonWriter json(output);
    json.beginObject();
    json.text("left", request.folders.left.shownPath());
    json.text("right", request.folders.right.shownPath());
    json.number("unread", countUnread(items));
    writeList(json, "problems", problems, writeProblem);
    writeList(json, "items", items, writeItem);
    json.endObject();
}

} // namespace velmora::cli
