#include "cli/folder_json.h"

#include "cli/folder_request.h"
#include "cli/json_text.h"

namespace velmora::cli {

namespace {

std::string_view problemName(FolderProblem::Kind kind)
{
    switch (kind) {
    case FolderProblem::Kind::UnreadableFolder:
        break;
    case FolderProblem::Kind::LinkCycle:
        return "linkCycle";
    case FolderProblem::Kind::UnreadableFile:
        return "unreadableFile";
    }
    return "unreadableFolder";
}

void writeTime(OutputBuffer &output, const QDateTime &time)
{
    if (time.isValid())
        writeJsonString(output, time.toUTC().toString(Qt::ISODateWithMs));
    else
        output << "null";
}

void writeItem(OutputBuffer &output, const FolderDiffItem &item)
{
    output << "{\"name\":";
    writeJsonString(output, item.name);
    output << ",\"leftPath\":";
    writeJsonString(output, item.leftPath);
    output << ",\"rightPath\":";
    writeJsonString(output, item.rightPath);
    output << ",\"status\":" << qint64(item.status) << ",\"leftSize\":" << item.leftSize
           << ",\"rightSize\":" << item.rightSize << ",\"leftTime\":";
    writeTime(output, item.leftTime);
    output << ",\"rightTime\":";
    writeTime(output, item.rightTime);
    output << ",\"isDir\":" << (item.isDir ? "true" : "false") << '}';
}

void writeProblem(OutputBuffer &output, const FolderProblem &problem)
{
    output << "{\"kind\":\"" << problemName(problem.kind) << "\",\"path\":";
    writeJsonString(output, problem.path);
    output << '}';
}

template <typename T>
void writeList(OutputBuffer &output, const QList<T> &list, void (*writeOne)(OutputBuffer &, const T &))
{
    output << '[';
    std::string_view separator = "\n";
    for (const T &one : list) {
        output << separator;
        writeOne(output, one);
        separator = ",\n";
    }
    output << "\n]";
}

} // namespace

void writeFolderJson(OutputBuffer &output, const FolderRequest &request, const QList<FolderDiffItem> &items,
                     const QList<FolderProblem> &problems)
{
    output << "{\n\"left\":";
    writeJsonString(output, request.left);
    output << ",\n\"right\":";
    writeJsonString(output, request.right);
    output << ",\n\"problems\":";
    writeList(output, problems, writeProblem);
    output << ",\n\"items\":";
    writeList(output, items, writeItem);
    output << "\n}\n";
}

} // namespace velmora::cli
