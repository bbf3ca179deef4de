#include "filetypes/mp3/engine/id3v2_damage.h"

#include "filetypes/mp3/engine/sound_layout.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint64 tagHeader = 10;

qint64 synchSafe(QByteArrayView bytes, qsizetype at)
{
    qint64 number = 0;
    for (qsizetype k = at; k < at + 4; ++k)
        number = number << 7 | (quint8(bytes[k]) & 0x7f);
    return number;
}

class Frames {
public:
    Frames(QByteArrayView bytes, int version) : m_bytes(bytes), m_version(version) {}

    /// How many bytes are left behind the last frame that can be followed, from `at` on.
    [[nodiscard]] qint64 rest(qsizetype at) const
    {
        while (m_bytes.size() - at >= header()) {
            if (m_bytes[at] == 0)
                return 0;
            const qint64 size = isName(at) ? sizeOf(at) : 0;
            if (size <= 0 || size > m_bytes.size() - at - header())
                return m_bytes.size() - at;
            at += header() + size;
        }
        return 0;
    }

private:
    [[nodiscard]] bool isOld() const { return m_version == 2; }
    [[nodiscard]] qsizetype header() const { return isOld() ? 6 : 10; }
    [[nodiscard]] bool isName(qsizetype at) const
    {
        const QByteArrayView name = m_bytes.sliced(at, 3); // some programs leave the fourth letter out
        return std::all_of(name.begin(), name.end(), [](char letter) {
            return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
        });
    }
    [[nodiscard]] qint64 sizeOf(qsizetype at) const
    {
        if (isOld())
            return qint64(bigEndian(m_bytes, at + 3, 3));
        const auto plain = qint64(bigEndian(m_bytes, at + 4, 4));
        if (m_version == 3)
            return plain;
        // Some programs write sizes of version 2.3 there.
        const qint64 safe = synchSafe(m_bytes, at + 4);
        return !canFollow(at + header() + safe) && canFollow(at + header() + plain) ? plain : safe;
    }
    [[nodiscard]] bool canFollow(qint64 at) const
    {
        if (at > m_bytes.size() - header())
            return at == m_bytes.size();
        return m_bytes[at] == 0 || isName(at);
    }

    QByteArrayView m_bytes;
    int m_version;
};

/// Where the first frame is; -1 for a tag that is not followed.
qint64 firstFrame(QByteArrayView bytes, int version, int flags)
{
    constexpr int extended = 0x40; // compressed in version 2.2, in a way that was never laid down
    if ((flags & extended) == 0)
        return 0;
    if (version == 2 || bytes.size() < tagHeader)
        return -1;
    const qint64 at = version == 3 ? qint64(bigEndian(bytes, 0, 4)) + 4 : synchSafe(bytes, 0);
    return at <= bytes.size() ? at : -1;
}

} // namespace

qint64 unreadTagBytes(SoundBytes &bytes)
{
    const QByteArray header = bytes.at(0, tagHeader).toByteArray();
    const int version = header.startsWith("ID3") && header.size() == tagHeader ? header[3] : 0;
    if (version < 2 || version > 4)
        return 0;
    const qint64 length = std::min(synchSafe(header, 6), bytes.size() - tagHeader);
    if (length > mostTagBytes)
        return 0;
    QByteArray contents = bytes.allAt(tagHeader, length);
    const int flags = quint8(header[5]);
    constexpr int unsynchronised = 0x80;
    if (version < 4 && (flags & unsynchronised) != 0)
        contents.replace(QByteArrayView("\xff\0", 2), QByteArrayView("\xff"));
    const qint64 first = firstFrame(contents, version, flags);
    return first < 0 ? 0 : Frames(contents, version).rest(first);
}

} // namespace velmora
