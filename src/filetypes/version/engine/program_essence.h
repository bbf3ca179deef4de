#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace velmora {

/// A run of bytes in a file.
struct ByteRange {
    qint64 at = 0;
    qint64 length = 0;
};

/// SHA-256 of `bytes` with those of `masked` taken for zeros, filled up with zeros to a multiple of 8: who signs a file
/// does that. Ranges may overlap and reach beyond the end.
[[nodiscard]] QByteArray hashWithout(QByteArrayView bytes, QList<ByteRange> masked);

/// SHA-256.
[[nodiscard]] QByteArray hashOf(QByteArrayView bytes);

} // namespace velmora
