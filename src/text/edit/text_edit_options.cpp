#include "text/edit/text_edit_options.h"

#include "core/line_ends.h"
#include "core/text_encoding.h"

namespace velmora {

namespace {

constexpr QLatin1String encodingKey("encoding");
constexpr QLatin1String fileTypeKey("fileType");
constexpr QLatin1String savedEncodingKey("savedEncoding");
constexpr QLatin1String savedLineEndsKey("savedLineEnds");
constexpr QLatin1String readOnlyKey("readOnly");

} // namespace

TextEditOptions usualTextEditOptions()
{
    return {.encoding = TextEncoding().name(), .fileType = automaticType, .savedEncoding = {}, .savedLineEnds = {}};
}

QJsonObject toJson(const TextEditOptions &options)
{
    QJsonObject object{
        {encodingKey, options.encoding}, {fileTypeKey, options.fileType}, {readOnlyKey, options.readOnly}};
    if (!options.savedEncoding.isEmpty())
        object.insert(savedEncodingKey, options.savedEncoding);
    if (!options.savedLineEnds.isEmpty())
        object.insert(savedLineEndsKey, options.savedLineEnds);
    return object;
}

TextEditOptions textEditOptionsFrom(const QJsonObject &object)
{
    TextEditOptions options = usualTextEditOptions();
    options.encoding = TextEncoding::fromName(object.value(encodingKey).toString()).name();
    options.fileType = object.value(fileTypeKey).toString(options.fileType);
    const TextEncoding saved = TextEncoding::fromName(object.value(savedEncodingKey).toString());
    if (!saved.isAutomatic())
        options.savedEncoding = saved.name();
    const QString ends = object.value(savedLineEndsKey).toString();
    if (lineEndStyleFromName(ends))
        options.savedLineEnds = ends;
    options.readOnly = object.value(readOnlyKey).toBool();
    return options;
}

} // namespace velmora
