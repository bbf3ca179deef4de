#include "filetypes/mp3/engine/tag_borders.h"

#include "filetypes/mp3/engine/sound_layout.h"

#include <algorithm>
#include <optional>

namespace velmora {

namespace {

constexpr qint64 id3v1Length = 128;
constexpr qint64 id3v1ExtensionLength = 227;
constexpr qint64 apeFooterLength = 32;

/// The length of an ID3v2 tag with its header and footer; 0 where there is none.
qint64 id3v2Length(QByteArrayView header)
{
    constexpr qsizetype headerLength = 10;
    if (!header.startsWith("ID3") || header.size() < headerLength || quint8(header[3]) == 0xff)
        return 0;
    qint64 length = 0;
    for (qsizetype k = 6; k < headerLength; ++k) {
        if (quint8(header[k]) >= 0x80)
            return 0;
        length = length << 7 | quint8(header[k]);
    }
    const bool hasFooter = (quint8(header[5]) & 0x10) != 0;
    return length + headerLength + (hasFooter ? headerLength : 0);
}

struct ApeTag {
    qint64 length = 0; ///< with footer and header
    quint64 items = 0;
};

std::optional<ApeTag> apeTagBefore(SoundBytes &bytes, qint64 end)
{
    const QByteArrayView footer = bytes.at(end - apeFooterLength, apeFooterLength);
    if (footer.size() < apeFooterLength || !footer.startsWith("APETAGEX"))
        return std::nullopt;
    const bool hasHeader = (littleEndian(footer, 20, 4) >> 31) != 0;
    return ApeTag{qint64(littleEndian(footer, 12, 4)) + (hasHeader ? apeFooterLength : 0), littleEndian(footer, 16, 4)};
}

/// The length of a Lyrics3 tag of the second version, which has its length before its last letters.
qint64 lyricsLength(SoundBytes &bytes, qint64 end)
{
    constexpr qint64 numberLength = 6;
    const QByteArrayView tail = bytes.at(end - 9 - numberLength, 9 + numberLength);
    if (!tail.endsWith("LYRICS200"))
        return 0;
    bool ok = false;
    const qint64 length = tail.first(numberLength).toByteArray().toUInt(&ok);
    return ok ? length + tail.size() : 0;
}

/// The length of the tag that ends there, 0 for none.
qint64 lengthOfTagBefore(SoundBytes &bytes, qint64 end)
{
    if (end == bytes.size() && bytes.at(end - id3v1Length, id3v1Length).startsWith("TAG")) {
        const bool isExtended = bytes.at(end - id3v1Length - id3v1ExtensionLength, 4).startsWith("TAG+");
        return id3v1Length + (isExtended ? id3v1ExtensionLength : 0);
    }
    if (const std::optional<ApeTag> ape = apeTagBefore(bytes, end))
        return ape->length;
    return lyricsLength(bytes, end);
}

} // namespace

qint64 tagsBefore(SoundBytes &bytes)
{
    qint64 at = 0;
    while (const qint64 length = id3v2Length(bytes.at(at, 10)))
        at += length;
    return std::min(at, bytes.size());
}

qint64 tagsBehind(SoundBytes &bytes)
{
    qint64 end = bytes.size();
    while (const qint64 length = lengthOfTagBefore(bytes, end)) {
        if (length > end)
            break;
        end -= length;
    }
    return end;
}

bool tagsAreOversized(SoundBytes &bytes)
{
    const bool hasId3v1 = bytes.at(bytes.size() - id3v1Length, id3v1Length).startsWith("TAG");
    for (const qint64 end : {bytes.size(), bytes.size() - (hasId3v1 ? id3v1Length : 0)}) {
        const std::optional<ApeTag> ape = apeTagBefore(bytes, end);
        if (ape && (ape->length > mostTagBytes || ape->items > mostTagParts))
            return true;
    }
    return false;
}

} // namespace velmora
