#include "session/document/text_recovery.h"

#include "core/text_file.h"

#include <QJsonArray>

#include <algorithm>

namespace velmora {

namespace {

QJsonObject describe(const UnsavedText &text)
{
    const LoadedText &loaded = text.loaded;
    return {{QStringLiteral("pane"), text.pane.number()},
            {QStringLiteral("path"), text.path},
            {QStringLiteral("edited"), text.isEdited},
            {QStringLiteral("charset"), QString::fromLatin1(loaded.text.encoding.charset())},
            {QStringLiteral("mark"), loaded.text.encoding.hasMark()},
            {QStringLiteral("fileSize"), loaded.stamp.size},
            {QStringLiteral("fileModified"), loaded.stamp.modifiedMsecs}};
}

UnsavedText textOf(const QJsonObject &described, const QByteArray &utf8)
{
    const auto value = [&described](const char *key) { return described.value(QLatin1String(key)); };
    UnsavedText text;
    text.pane = value("pane").toInt();
    text.path = value("path").toString();
    text.isEdited = value("edited").toBool(true);
    LoadedText &loaded = text.loaded;
    // What was kept is a text, also where its file would be taken for something else.
    loaded.text = decodeText(utf8, TextEncoding::ofCharset("UTF-8", false));
    loaded.text.lines = TextLines::split(utf8);
    loaded.text.binary = false;
    const QByteArray charset = value("charset").toString().toLatin1();
    if (TextEncoding::isKnownName(QString::fromLatin1(charset)) && !charset.isEmpty())
        loaded.text.encoding = TextEncoding::ofCharset(charset, value("mark").toBool());
    loaded.stamp = {value("fileSize").toInteger(-1), value("fileModified").toInteger(0)};
    loaded.missing = false;
    const auto lines = std::make_shared<const TextLines>(loaded.text.lines);
    text.text = std::make_shared<const EditSnapshot>(std::vector<LineRun>{{lines, 0, lines->count()}});
    return text;
}

} // namespace

RecoveryRecord toRecoveryRecord(const UnsavedTexts &texts)
{
    RecoveryRecord record;
    QJsonArray described;
    for (const UnsavedText &text : texts.texts) {
        described.append(describe(text));
        const TextLines lines = text.text->toLines();
        record.texts.append(QByteArray(lines.bytes().data(), qsizetype(lines.bytes().size())));
    }
    record.description = {{QStringLiteral("kind"), texts.kind},         {QStringLiteral("left"), texts.paths.left},
                          {QStringLiteral("right"), texts.paths.right}, {QStringLiteral("base"), texts.paths.base},
                          {QStringLiteral("options"), texts.options},   {QStringLiteral("texts"), described}};
    return record;
}

std::optional<UnsavedTexts> fromRecoveryRecord(const RecoveryRecord &record)
{
    const auto value = [&record](const char *key) { return record.description.value(QLatin1String(key)); };
    const QJsonArray described = value("texts").toArray();
    if (described.isEmpty() || described.size() != record.texts.size())
        return std::nullopt;
    UnsavedTexts texts;
    texts.kind = value("kind").toString();
    texts.paths = {value("left").toString(), value("right").toString(), value("base").toString()};
    texts.options = value("options").toObject();
    for (qsizetype index = 0; index < described.size(); ++index) {
        const QByteArray &utf8 = record.texts.at(index);
        if (!QUtf8StringView(utf8).isValidUtf8() || utf8.size() > TextLines::maximumSize)
            return std::nullopt;
        texts.texts.push_back(textOf(described.at(index).toObject(), utf8));
    }
    return texts;
}

bool isInItsFile(const UnsavedText &text)
{
    const FileContents contents = readFile(text.path);
    if (!contents.ok())
        return false;
    const DecodedText onDisk = decodeText(contents.bytes, text.loaded.text.encoding);
    return onDisk.undecodable == 0 && onDisk.lines.bytes() == text.loaded.text.lines.bytes();
}

bool holdsUnsavedText(const RecoveryRecord &record)
{
    const std::optional<UnsavedTexts> texts = fromRecoveryRecord(record);
    return !texts || std::any_of(texts->texts.begin(), texts->texts.end(),
                                 [](const UnsavedText &text) { return text.isEdited && !isInItsFile(text); });
}

} // namespace velmora
