#include "filetypes/mp3/engine/chapter_guard.h"

#include "filetypes/mp3/engine/sound_bytes.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr int mostChapters = 1000; // each may be within the one before

bool isFrameName(QByteArrayView name)
{
    return std::all_of(name.begin(), name.end(), [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
    });
}

/// The size of a compressed frame that may begin there, whatever the version of the tag; 0 for none.
qint64 compressedSize(QByteArrayView bytes)
{
    constexpr quint8 compressedInThree = 0x80;
    constexpr quint8 compressedInFour = 0x08;
    if ((quint8(bytes[9]) & (compressedInThree | compressedInFour)) == 0 || !isFrameName(bytes.first(4)))
        return 0;
    const auto size = qint64(bigEndian(bytes, 4, 4));
    return size <= bytes.size() ? size : 0;
}

} // namespace

bool chaptersAreModest(QByteArrayView bytes)
{
    constexpr qsizetype frameHeader = 10;
    int count = 0;
    qsizetype first = -1;
    for (const QByteArrayView name : {QByteArrayView("CHAP"), QByteArrayView("CTOC")}) {
        for (qsizetype at = bytes.indexOf(name); at >= 0; at = bytes.indexOf(name, at + 1)) {
            if (first < 0 || at < first)
                first = at;
            if (++count > mostChapters)
                return false;
        }
    }
    qint64 compressed = 0;
    for (qsizetype at = first; first >= 0 && at + frameHeader <= bytes.size(); ++at)
        compressed += compressedSize(bytes.sliced(at));
    return compressed <= mostCompressedBytes;
}

} // namespace velmora
