#include "app/library/session_files.h"

#include "core/safe_file.h"
#include "core/text_file.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace velmora {

namespace {

/// The fields that history entries, session files and open tabs have in common.
QJsonObject entryToJson(const SessionRecord &record)
{
    return {{QStringLiteral("name"), record.name},
            {QStringLiteral("type"), record.type},
            {QStringLiteral("leftPath"), record.paths.left},
            {QStringLiteral("rightPath"), record.paths.right},
            {QStringLiteral("basePath"), record.paths.base},
            {QStringLiteral("timestamp"), record.timestamp.toString(Qt::ISODate)}};
}

} // namespace

QJsonObject sessionToJson(const SessionRecord &record)
{
    QJsonObject object = entryToJson(record);
    object.insert(QStringLiteral("version"), record.options.isEmpty() ? 1 : 2);
    if (!record.options.isEmpty())
        object.insert(QStringLiteral("options"), record.options);
    return object;
}

SessionRecord sessionFromJson(const QJsonObject &object)
{
    const auto text = [&object](const char *key) { return object.value(QLatin1String(key)).toString(); };
    return {.name = text("name"),
            .type = text("type"),
            .paths = {.left = text("leftPath"), .right = text("rightPath"), .base = text("basePath")},
            .options = object.value(QLatin1String("options")).toObject(),
            .timestamp = QDateTime::fromString(text("timestamp"), Qt::ISODate)};
}

QJsonObject workspaceToJson(const Workspace &workspace)
{
    QJsonArray sessions;
    for (const SessionRecord &record : workspace.sessions)
        sessions.append(entryToJson(record));
    QJsonArray openTabs;
    for (const OpenTab &tab : workspace.openTabs) {
        QJsonObject object = sessionToJson(tab.record);
        object.insert(QStringLiteral("tabIndex"), tab.tabIndex);
        openTabs.append(object);
    }
    return {{QStringLiteral("version"), 2},
            {QStringLiteral("sessions"), sessions},
            {QStringLiteral("openTabs"), openTabs},
            {QStringLiteral("activeTabIndex"), workspace.activeTabIndex}};
}

Workspace workspaceFromJson(const QJsonObject &object)
{
    Workspace workspace;
    workspace.activeTabIndex = object.value(QLatin1String("activeTabIndex")).toInt(-1);
    const QJsonArray sessions = object.value(QLatin1String("sessions")).toArray();
    for (const QJsonValue &value : sessions) {
        SessionRecord record = sessionFromJson(value.toObject());
        record.options = {};
        if (!record.timestamp.isValid())
            record.timestamp = QDateTime::currentDateTime();
        if (!record.type.isEmpty())
            workspace.sessions.append(record);
    }
    const QJsonArray openTabs = object.value(QLatin1String("openTabs")).toArray();
    for (const QJsonValue &value : openTabs) {
        const QJsonObject tab = value.toObject();
        const SessionRecord record = sessionFromJson(tab);
        if (!record.type.isEmpty())
            workspace.openTabs.append({record, tab.value(QLatin1String("tabIndex")).toInt(-1)});
    }
    return workspace;
}

qsizetype frontTab(const Workspace &workspace)
{
    const auto front =
        std::find_if(workspace.openTabs.begin(), workspace.openTabs.end(), [&workspace](const OpenTab &tab) {
            return tab.tabIndex >= 0 && tab.tabIndex == workspace.activeTabIndex;
        });
    return front == workspace.openTabs.end() ? -1 : front - workspace.openTabs.begin();
}

JsonFile readJsonFile(const QString &path)
{
    // Asked first, so that a film under the wrong name is not read into memory to be refused.
    if (QFileInfo(path).size() > jsonFileLimit)
        return {{}, JsonFileError::NoObject};
    const FileContents contents = readFile(path);
    if (!contents.ok())
        return {{}, JsonFileError::CannotOpen};
    const QJsonDocument document = QJsonDocument::fromJson(contents.bytes);
    if (!document.isObject())
        return {{}, JsonFileError::NoObject};
    return {document.object(), JsonFileError::None};
}

bool writeJsonFile(const QString &path, const QJsonObject &object)
{
    return saveFile(path, QJsonDocument(object).toJson()).ok();
}

} // namespace velmora
