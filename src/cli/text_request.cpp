#include "cli/text_request.h"

#include "cli/arguments.h"
#include "settings/options/text_importance_file.h"
#include "settings/options/text_presets.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace velmora::cli {

namespace {

// As git documents them for GIT_EXTERNAL_DIFF.
constexpr qsizetype gitArguments = 7;
constexpr qsizetype gitRenameArguments = 9;

struct Replacement {
    QString find;
    QString with;
};

/// The rule that "FIND=WITH" stands for; nothing when FIND is empty, there is no "=", or a backslash stands before
/// anything but "=", "t" and "\\".
std::optional<Replacement> parseReplacement(const QString &text)
{
    Replacement rule;
    QString *part = &rule.find;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == u'\\') {
            const QChar escaped = ++at < text.size() ? text[at] : QChar();
            if (escaped != u'=' && escaped != u't' && escaped != u'\\')
                return std::nullopt;
            *part += escaped == u't' ? QChar(u'\t') : escaped;
        } else if (text[at] == u'=' && part == &rule.find) {
            part = &rule.with;
        } else {
            *part += text[at];
        }
    }
    return part == &rule.with && !rule.find.isEmpty() ? std::optional(rule) : std::nullopt;
}

} // namespace

QString TextRequest::take(const Arguments &arguments)
{
    forceText = arguments.has("text");
    QString error = takePaths(arguments);
    if (const auto file = arguments.value("options"); file && error.isEmpty())
        error = takeOptionsFile(*file);
    if (const auto preset = arguments.value("preset"); preset && error.isEmpty())
        error = takePreset(*preset);
    if (const auto file = arguments.value("importance"); file && error.isEmpty())
        error = takeImportance(*file);
    if (error.isEmpty())
        error = takeReplacements(arguments);
    if (error.isEmpty())
        error = takeContext(arguments);
    return error.isEmpty() ? takeEncodings(arguments) : error;
}

QString TextRequest::takePaths(const Arguments &arguments)
{
    const QStringList &paths = arguments.paths();
    const QStringList labels = arguments.values("label");
    if (paths.size() == gitArguments || paths.size() == gitRenameArguments)
        takeGitPaths(paths);
    else if (paths.size() != 2)
        return QStringLiteral("two paths are needed, %1 given").arg(paths.size());
    else if (labels.size() > 2)
        return QStringLiteral("two labels are enough, %1 given").arg(labels.size());
    if (!calledByGit) {
        left.path = left.name = paths[0];
        right.path = right.name = paths[1];
    }
    left.name = labels.value(0, left.name);
    right.name = labels.value(1, right.name);
    return {};
}

/// Path, then file, object and mode of the old and the same of the new version; of a renamed file its new path, too.
void TextRequest::takeGitPaths(const QStringList &paths)
{
    calledByGit = true;
    left.path = paths[1];
    right.path = paths[4];
    const auto nameOf = [](const TextInput &input, const char *prefix, const QString &path) {
        return input.path == QLatin1String("/dev/null") ? input.path : QLatin1String(prefix) + path;
    };
    left.name = nameOf(left, "a/", paths[0]);
    right.name = nameOf(right, "b/", paths.value(gitArguments, paths[0]));
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

QString TextRequest::takeImportance(const QString &path)
{
    using Kind = ImportanceFileError::Kind;
    const ImportanceFileError error = importImportanceRules(path, options);
    switch (error.kind) {
    case Kind::None:
        return {};
    case Kind::InvalidJson:
        return QStringLiteral("%1: Invalid JSON: %2").arg(path, error.detail);
    case Kind::OtherSchema:
        return QStringLiteral("%1: Unrecognized importance rules file (expected schema %2).")
            .arg(path, QLatin1String(textImportanceSchema));
    case Kind::Empty:
        return QStringLiteral("%1: The file holds no importance rules.").arg(path);
    case Kind::Unreadable:
    case Kind::Unwritable:
        break;
    }
    return QStringLiteral("Cannot read file: %1: %2").arg(path, error.detail);
}

QString TextRequest::takeReplacements(const Arguments &arguments)
{
    const auto take = [&arguments](const char *option, QStringList &find, QStringList &with) {
        const QStringList values = arguments.values(option);
        for (const QString &value : values) {
            const auto rule = parseReplacement(value);
            if (!rule)
                return QStringLiteral("--%1: \"%2\" is not of the form FIND=WITH").arg(QLatin1String(option), value);
            find.append(rule->find);
            with.resize(find.size() - 1);
            with.append(rule->with);
        }
        return QString();
    };
    const QString error = take("replace-left", options.leftReplaceFind, options.leftReplaceWith);
    return error.isEmpty() ? take("replace-right", options.rightReplaceFind, options.rightReplaceWith) : error;
}

QString TextRequest::takeContext(const Arguments &arguments)
{
    const auto wanted = arguments.value("context");
    if (!wanted)
        return {};
    if (arguments.value("format") != QLatin1String("html"))
        return QStringLiteral("--context goes with --format html");
    marksReport = true;
    if (*wanted == QLatin1String("all"))
        return {};
    bool isNumber = false;
    const int lines = wanted->toInt(&isNumber);
    if (!isNumber || lines < 0)
        return QStringLiteral("--context: \"%1\" is no number of lines").arg(*wanted);
    reportContext = lines;
    return {};
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
