#pragma once

#include <QtGlobal>

namespace velmora {

/// How much of an archive is taken up, with all that lies in it: beyond, it is taken for an attack.
struct ArchiveLimits {
    qint64 entries = 1'000'000;
    int depth = 200;                                  ///< folders within folders
    int nesting = 6;                                  ///< archives within archives
    int archives = 1000;                              ///< within an archive, that become folders; a manual has hundreds
    qint64 within = qint64(4) * 1024 * 1024 * 1024;   ///< bytes of those, put down on the disk while they are open
    qint64 unpacked = qint64(4) * 1024 * 1024 * 1024; ///< bytes that any archive may unpack to
    qint64 expansion = 250;                           ///< ...and so many times its own size
    /// Bytes that an archive of `size` bytes may unpack to.
    [[nodiscard]] qint64 unpackedOf(qint64 size) const
    {
        return qMax(unpacked, qMin(size, qint64(1) << 50) * expansion);
    }
};

} // namespace velmora
