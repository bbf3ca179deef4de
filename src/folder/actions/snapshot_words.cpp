#include "folder/actions/snapshot_words.h"

#include "session/translate.h"

#include <QDir>
#include <QLocale>

namespace velmora {

namespace {

QString number(qint64 value)
{
    return QLocale().toString(value);
}

} // namespace

QString snapshotFormText(const FolderSnapshotReading &reading)
{
    switch (reading.fault) {
    case FolderSnapshotFault::NotJson:
        return Velmora::tr("The file is no JSON from byte %1 on.").arg(number(reading.at));
    case FolderSnapshotFault::NoEntries:
        return Velmora::tr("It has no list of entries.");
    case FolderSnapshotFault::BadEntry:
        return Velmora::tr("Entry %1 is no file of a folder.").arg(number(reading.at));
    default:
        return {};
    }
}

QString snapshotFaultText(const QString &path, const SnapshotOpening &opening)
{
    const QString shown = QDir::toNativeSeparators(path);
    const FolderSnapshotReading &reading = opening.reading;
    if (reading.fault == FolderSnapshotFault::CannotOpen) {
        const QString text = Velmora::tr("Cannot open snapshot: %1").arg(shown);
        return reading.error.isEmpty() ? text : text + QStringLiteral(" (%1)").arg(reading.error);
    }
    if (!reading.ok())
        return Velmora::tr("%1 is no snapshot. %2").arg(shown, snapshotFormText(reading));
    return opening.source ? QString() : Velmora::tr("The snapshot has no such folder: %1").arg(shown);
}

QString noContentsText()
{
    return Velmora::tr("A snapshot holds no contents");
}

} // namespace velmora
