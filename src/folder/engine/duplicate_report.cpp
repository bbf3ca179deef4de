#include "folder/engine/duplicate_report.h"

#include "core/json_writer.h"

#include <QDateTime>

namespace velmora {

namespace {

QString timeText(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

/// Bytes that are no text stay what they are on the disk.
std::string csvField(const QString &text)
{
    QString quoted = text;
    quoted.replace(u'"', QLatin1String("\"\""));
    return '"' + nativeName(quoted) + '"';
}

void writePaths(JsonWriter &json, std::string_view key, const QStringList &paths)
{
    json.key(key);
    json.beginList();
    for (const QString &path : paths)
        json.text(path);
    json.endList();
}

void writeGroup(JsonWriter &json, const DuplicateGroup &group)
{
    json.beginObject();
    json.number("size", group.size);
    json.key("md5");
    if (group.digest.isEmpty())
        json.null();
    else
        json.text(QString::fromLatin1(group.digest.toHex()));
    json.key("copies");
    json.beginList();
    for (const DuplicateCopy &copy : group.copies) {
        json.beginObject();
        json.text("path", copy.path);
        json.text("modified", timeText(copy.modifiedMs));
        json.boolean("reference", copy.isReference);
        json.boolean("link", copy.isLink);
        writePaths(json, "otherNames", copy.otherNames);
        json.endObject();
    }
    json.endList();
    json.endObject();
}

void writeManyNamed(JsonWriter &json, const QList<ManyNamedFile> &files)
{
    json.key("manyNamed");
    json.beginList();
    for (const ManyNamedFile &file : files) {
        json.beginObject();
        json.number("size", file.size);
        writePaths(json, "paths", file.paths);
        json.endObject();
    }
    json.endList();
}

void writeFolders(JsonWriter &json, const QList<DuplicateFolders> &all)
{
    json.key("folders");
    json.beginList();
    for (const DuplicateFolders &folders : all) {
        json.beginObject();
        writePaths(json, "paths", folders.paths);
        json.number("files", folders.files);
        json.number("bytes", folders.bytes);
        json.endObject();
    }
    json.endList();
}

void writeProblems(JsonWriter &json, const QList<FolderProblem> &problems)
{
    json.key("problems");
    json.beginList();
    for (const FolderProblem &problem : problems) {
        const bool isFile = problem.kind == FolderProblem::Kind::UnreadableFile;
        json.beginObject();
        json.text("path", problem.path);
        json.text("kind", isFile ? QStringLiteral("file") : QStringLiteral("folder"));
        json.endObject();
    }
    json.endList();
}

} // namespace

void writeDuplicatesCsv(OutputBuffer &output, const QList<DuplicateGroup> &groups)
{
    output << "group,size,modified,md5,path\r\n";
    for (qsizetype i = 0; i < groups.size(); ++i) {
        const DuplicateGroup &group = groups.at(i);
        for (const DuplicateCopy &copy : group.copies) {
            output << qint64(i + 1) << ',' << group.size << ',' << timeText(copy.modifiedMs).toStdString() << ','
                   << viewOf(group.digest.toHex()) << ',' << csvField(copy.path) << "\r\n";
        }
    }
}

void writeDuplicatesJson(OutputBuffer &output, const DuplicateScan &scan)
{
    qint64 wasted = 0;
    for (const DuplicateGroup &group : scan.groups)
        wasted += wastedBytes(group);
    JsonWriter json(output);
    json.beginObject();
    json.number("files", scan.files);
    json.number("wasted", wasted);
    json.boolean("cancelled", scan.cancelled);
    json.key("groups");
    json.beginList();
    for (const DuplicateGroup &group : scan.groups)
        writeGroup(json, group);
    json.endList();
    writeManyNamed(json, scan.manyNamed);
    writeFolders(json, scan.folders);
    writePaths(json, "overlapping", scan.overlapping);
    writeProblems(json, scan.problems);
    json.endObject();
}

} // namespace velmora
