#include "platform/memory_size.h"

#include <QByteArray>
#include <QFile>

#include <unistd.h>

namespace velmora {

qint64 availableMemory()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray text = file.readAll();
        const QByteArray key = "MemAvailable:";
        if (const qsizetype at = text.indexOf(key); at >= 0) {
            const QByteArray rest = text.mid(at + key.size(), 40).trimmed();
            constexpr qint64 kilobyte = 1024;
            if (const qint64 size = rest.left(rest.indexOf(' ')).toLongLong(); size > 0)
                return size * kilobyte;
        }
    }
    return qint64(sysconf(_SC_PHYS_PAGES)) / 2 * sysconf(_SC_PAGESIZE);
}

} // namespace velmora
