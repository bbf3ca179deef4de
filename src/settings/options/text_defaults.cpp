#include "settings/options/text_defaults.h"

#include "core/settings_store.h"
#include "settings/options/text_session_options.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velmora {

namespace {

const QString defaultsKey = QStringLiteral("TextCompare/Defaults");

} // namespace

TextSessionOptions loadDefaultTextOptions()
{
    const QByteArray stored = SessionSettings().value(defaultsKey).toString().toUtf8();
    TextSessionOptions options;
    // An object without anything, which is all that damaged text gives, leaves the built-in values.
    static_cast<void>(fromJson(QJsonDocument::fromJson(stored).object(), options));
    return options;
}

void saveDefaultTextOptions(const TextSessionOptions &options)
{
    const QByteArray json = QJsonDocument(toJson(options)).toJson(QJsonDocument::Compact);
    SessionSettings().setValue(defaultsKey, QString::fromUtf8(json));
}

} // namespace velmora
