#include "cli/text_request.h"

#include "cli/arguments.h"
#include "settings/options/text_presets.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velmora::cli {

QString TextRequest::take(const Arguments &arguments)
{
    if (arguments.paths().size() != 2)
        return QStringLiteral("two paths are needed, %1 given").arg(arguments.paths().size());
    left.path = arguments.paths()[0];
    right.path = arguments.paths()[1];
    forceText = arguments.has("text");

    QString error;
    if (const auto file = arguments.value("options"))
        error = takeOptionsFile(*file);
    if (const auto preset = arguments.value("preset"); preset && error.isEmpty())
        error = takePreset(*preset);
    return error.isEmpty() ? takeEncodings(arguments) : error;
}

QString TextRequest::takeOptionsFile(const QString &path)
{
    const FileContents contents = readGivenPath(path);
    if (!contents.ok())
        return QStringLiteral("%1: %2").arg(path, contents.error);
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(contents.bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return QStringLiteral("%1: invalid JSON: %2").arg(path, parseError.errorString());
    // A session file holds them among other things.
    const QJsonObject object = document.object();
    const QJsonValue nested = object.value(QLatin1String("options"));
    if (!fromJson(nested.isObject() ? nested.toObject() : object, options))
        return QStringLiteral("%1: no options in it").arg(path);
    return {};
}

QString TextRequest::takePreset(const QString &name)
{
    for (const TextPreset &preset : textPresets()) {
        if (name == QLatin1String(preset.shortName))
            return takePreset(QLatin1String(preset.name));
    }
    return applyTextPreset(name, options) ? QString() : QStringLiteral("unknown preset \"%1\"").arg(name);
}

QString TextRequest::takeEncodings(const Arguments &arguments)
{
    const auto leftName = arguments.value("encoding-left");
    const auto rightName = arguments.value("encoding-right");
    for (const auto &name : {leftName, rightName}) {
        if (name && !TextEncoding::isKnownName(*name))
            return QStringLiteral("unknown encoding \"%1\"").arg(*name);
    }
    const QString &rightOption = options.sameAsLeftFileFormat ? options.leftEncoding : options.rightEncoding;
    left.encoding = TextEncoding::fromName(leftName.value_or(options.leftEncoding));
    right.encoding = TextEncoding::fromName(rightName.value_or(rightOption));
    return {};
}

} // namespace velmora::cli
