#include "settings/options/kept_copies.h"

#include <QSettings>

namespace velmora {

namespace {

const QString bytesKey = QStringLiteral("FolderCompare/KeptCopies/bytes");
const QString daysKey = QStringLiteral("FolderCompare/KeptCopies/days");

} // namespace

KeptCopies loadKeptCopies(const QSettings &settings)
{
    KeptCopies kept;
    bool ok = false;
    const qint64 bytes = settings.value(bytesKey).toLongLong(&ok);
    if (ok && bytes >= 0)
        kept.bytes = bytes;
    const int days = settings.value(daysKey).toInt(&ok);
    if (ok && days > 0)
        kept.days = days;
    return kept;
}

void saveKeptCopies(QSettings &settings, const KeptCopies &kept)
{
    settings.setValue(bytesKey, kept.bytes);
    settings.setValue(daysKey, kept.days);
}

} // namespace velmora
