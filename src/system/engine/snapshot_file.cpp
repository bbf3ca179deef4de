#include "system/engine/snapshot_file.h"

#include "core/text_file.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace velmora {

namespace {

constexpr QLatin1String nameMember("name");
constexpr QLatin1String displayNameMember("displayName");
constexpr QLatin1String stateMember("state");
constexpr QLatin1String startModeMember("startMode");

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

SnapshotReading faulty(SnapshotFault fault, const QString &detail = {})
{
    return {{}, fault, detail, 0};
}

SnapshotReading readTexts(const QJsonObject &object)
{
    SnapshotReading reading;
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!member->isString())
            return faulty(SnapshotFault::NotText, member.key());
        reading.snapshot.insert(member.key(), {member->toString()});
    }
    return reading;
}

SnapshotReading readServices(const QJsonArray &array)
{
    SnapshotReading reading;
    for (const QJsonValue &element : array) {
        const QJsonObject service = element.toObject();
        if (!service.contains(nameMember))
            return faulty(SnapshotFault::NoName);
        for (const QLatin1String member : {nameMember, displayNameMember, stateMember, startModeMember}) {
            if (service.contains(member) && !service.value(member).isString())
                return faulty(SnapshotFault::NotText, member);
        }
        const QString name = service.value(nameMember).toString();
        if (reading.snapshot.contains(name))
            ++reading.repeated;
        reading.snapshot.insert(name, serviceItem(service.value(displayNameMember).toString(),
                                                  service.value(stateMember).toString(),
                                                  service.value(startModeMember).toString()));
    }
    return reading;
}

} // namespace

SnapshotReading parseSnapshot(const QByteArray &bytes, SnapshotForm form)
{
    if (bytes.size() > largestSnapshotFile)
        return faulty(SnapshotFault::TooLarge);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return faulty(SnapshotFault::NotJson, error.errorString());
    if (form == SnapshotForm::TextObject)
        return document.isObject() ? readTexts(document.object()) : faulty(SnapshotFault::WrongRoot);
    return document.isArray() ? readServices(document.array()) : faulty(SnapshotFault::WrongRoot);
}

SnapshotReading loadSnapshot(const QString &path, SnapshotForm form, const CancelFlag &cancel)
{
    if (QFileInfo(path).size() > largestSnapshotFile)
        return faulty(SnapshotFault::TooLarge);
    const FileContents file = readFile(path, cancel);
    return file.ok() ? parseSnapshot(file.bytes, form) : faulty(SnapshotFault::CannotOpen, file.error);
}

QByteArray snapshotToJson(const Snapshot &snapshot, SnapshotForm form)
{
    if (form == SnapshotForm::TextObject) {
        QJsonObject object;
        for (auto item = snapshot.begin(); item != snapshot.end(); ++item)
            object.insert(item.key(), item->value);
        return QJsonDocument(object).toJson();
    }
    QJsonArray array;
    for (auto item = snapshot.begin(); item != snapshot.end(); ++item) {
        array.append(QJsonObject{{nameMember, item.key()},
                                 {displayNameMember, item->displayName},
                                 {stateMember, item->state},
                                 {startModeMember, item->startMode}});
    }
    return QJsonDocument(array).toJson();
}

SaveResult saveSnapshot(const QString &path, const Snapshot &snapshot, SnapshotForm form, SnapshotReaders readers)
{
    const QByteArray bytes = snapshotToJson(snapshot, form);
    if (readers == SnapshotReaders::Everybody)
        return saveFile(path, bytes);
    // The new file takes over the access bits of the one that it replaces: they are narrowed first, so that there is no
    // moment at which others could read what is new.
    if (QFileInfo(path).isFile())
        QFile::setPermissions(path, ownerOnly);
    return saveFile(path, [&bytes](QIODevice &device) {
        // Not where a terminal or a pipe is written to as it is.
        if (auto *file = qobject_cast<QSaveFile *>(&device))
            file->setPermissions(ownerOnly);
        return device.write(bytes) == bytes.size();
    });
}

} // namespace velmora
