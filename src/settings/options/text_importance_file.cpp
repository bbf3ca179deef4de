#include "settings/options/text_importance_file.h"

#include "core/safe_file.h"
#include "core/text_file.h"
#include "settings/options/json_fields.h"
#include "settings/options/text_session_options.h"

#include <QJsonDocument>

#include <array>

namespace velmora {

namespace {

using Options = TextSessionOptions;
using Kind = ImportanceFileError::Kind;

constexpr const char *schemaKey = "schema";

constexpr std::array importanceFields{
    JsonField<Options>{"importantLeadingWhitespace", &Options::importantLeadingWhitespace},
    JsonField<Options>{"importantEmbeddedWhitespace", &Options::importantEmbeddedWhitespace},
    JsonField<Options>{"importantTrailingWhitespace", &Options::importantTrailingWhitespace},
    JsonField<Options>{"importantEverythingElse", &Options::importantEverythingElse},
    JsonField<Options>{"importantCharacterCase", &Options::importantCharacterCase},
    JsonField<Options>{"orphanLinesAlwaysImportant", &Options::orphanLinesAlwaysImportant},
    JsonField<Options>{"compareLineEndings", &Options::compareLineEndings},
    JsonField<Options>{"ignoreBlankLines", &Options::ignoreBlankLines},
    JsonField<Options>{"unimportantText", &Options::unimportantText},
};

/// True for a file that names no schema, an empty one, or ours.
bool acceptsSchema(const QJsonValue &schema)
{
    const bool unnamed = schema.isUndefined() || (schema.isString() && schema.toString().isEmpty());
    return unnamed || schema.toString() == QLatin1String(textImportanceSchema);
}

} // namespace

ImportanceFileError exportImportanceRules(const QString &path, const TextSessionOptions &options)
{
    QJsonObject object = fieldsToJson<Options>(importanceFields, options);
    object.insert(QLatin1String(schemaKey), QLatin1String(textImportanceSchema));
    const SaveResult saved = saveFile(path, QJsonDocument(object).toJson());
    return saved.ok() ? ImportanceFileError() : ImportanceFileError{Kind::Unwritable, saved.error};
}

ImportanceFileError importImportanceRules(const QString &path, TextSessionOptions &options)
{
    const FileContents contents = readFile(path);
    if (!contents.ok())
        return {Kind::Unreadable, contents.error};
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(contents.bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return {Kind::InvalidJson, parseError.errorString()};
    const QJsonObject object = document.object();
    const QJsonValue schema = object.value(QLatin1String(schemaKey));
    if (!acceptsSchema(schema))
        return {Kind::OtherSchema, schema.toVariant().toString()};
    if (object.isEmpty())
        return {Kind::Empty, {}};

    fieldsFromJson<Options>(importanceFields, object, options);
    deriveLegacySwitches(options);
    return {};
}

} // namespace velmora
