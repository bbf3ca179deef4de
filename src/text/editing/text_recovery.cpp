#include "text/editing/text_recovery.h"

#include "core/text_file.h"

#include <QJsonArray>

#include <algorithm>

namespace velmora {

namespace {

QString textKind()
{
    return QStringLiteral("text");
}

QJsonObject describe(const UnsavedText &side)
{
    const LoadedSide &loaded = side.loaded;
    return {{QStringLiteral("side"), side.side == Side::Left ? QStringLiteral("left") : QStringLiteral("right")},
            {QStringLiteral("path"), side.path},
            {QStringLiteral("edited"), side.isEdited},
            {QStringLiteral("charset"), QString::fromLatin1(loaded.text.encoding.charset())},
            {QStringLiteral("mark"), loaded.text.encoding.hasMark()},
            {QStringLiteral("fileSize"), loaded.stamp.size},
            {QStringLiteral("fileModified"), loaded.stamp.modifiedMsecs}};
}

UnsavedText sideOf(const QJsonObject &described, const QByteArray &utf8)
{
    const auto value = [&described](const char *key) { return described.value(QLatin1String(key)); };
    UnsavedText side;
    side.side = value("side").toString() == QLatin1String("left") ? Side::Left : Side::Right;
    side.path = value("path").toString();
    side.isEdited = value("edited").toBool(true);
    LoadedSide &loaded = side.loaded;
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
    side.text = std::make_shared<const EditSnapshot>(std::vector<LineRun>{{lines, 0, lines->count()}});
    return side;
}

} // namespace

RecoveryRecord toRecoveryRecord(const UnsavedTexts &texts)
{
    RecoveryRecord record;
    QJsonArray sides;
    for (const UnsavedText &side : texts.sides) {
        sides.append(describe(side));
        const TextLines lines = side.text->toLines();
        record.texts.append(QByteArray(lines.bytes().data(), qsizetype(lines.bytes().size())));
    }
    record.description = {{QStringLiteral("kind"), textKind()},
                          {QStringLiteral("left"), texts.paths.left},
                          {QStringLiteral("right"), texts.paths.right},
                          {QStringLiteral("options"), texts.options},
                          {QStringLiteral("sides"), sides}};
    return record;
}

std::optional<UnsavedTexts> fromRecoveryRecord(const RecoveryRecord &record)
{
    const auto value = [&record](const char *key) { return record.description.value(QLatin1String(key)); };
    const QJsonArray sides = value("sides").toArray();
    if (value("kind").toString() != textKind() || sides.isEmpty() || sides.size() != record.texts.size())
        return std::nullopt;
    UnsavedTexts texts;
    texts.paths = {value("left").toString(), value("right").toString(), {}};
    texts.options = value("options").toObject();
    for (qsizetype index = 0; index < sides.size(); ++index) {
        const QByteArray &utf8 = record.texts.at(index);
        if (!QUtf8StringView(utf8).isValidUtf8() || utf8.size() > TextLines::maximumSize)
            return std::nullopt;
        texts.sides.push_back(sideOf(sides.at(index).toObject(), utf8));
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
    return !texts || std::any_of(texts->sides.begin(), texts->sides.end(),
                                 [](const UnsavedText &side) { return side.isEdited && !isInItsFile(side); });
}

} // namespace velmora
