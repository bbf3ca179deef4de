#include "filetypes/mp3/engine/tag_borders.h"

#include "filetypes/mp3/engine/ape_tag.h"
#include "filetypes/mp3/engine/sound_layout.h"

#include <algorithm>
#include <optional>

namespace velmora {

namespace {

constexpr qint64 id3v1Length = 128;
constexpr qint64 id3v1ExtensionLength = 227;

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

/// A Lyrics3 tag of the second version, which has its length before its last letters.
std::optional<TagBehind> lyricsBefore(SoundBytes &bytes, qint64 end)
{
    constexpr qint64 numberLength = 6;
    constexpr QByteArrayView last("LYRICS200");
    constexpr QByteArrayView first("LYRICSBEGIN");
    const qint64 tail = end - last.size() - numberLength;
    const QByteArray letters = bytes.at(tail, end - tail).toByteArray();
    if (!letters.endsWith(last))
        return std::nullopt;
    bool ok = false;
    const qint64 length = letters.first(numberLength).toUInt(&ok);
    const bool isWhole = ok && bytes.at(tail - length, first.size()) == first;
    return TagBehind{TagBehind::Kind::Lyrics3, isWhole ? tail - length : tail, end, isWhole};
}

std::optional<TagBehind> id3v1Before(SoundBytes &bytes, qint64 end)
{
    if (end != bytes.size() || !bytes.at(end - id3v1Length, id3v1Length).startsWith("TAG"))
        return std::nullopt;
    const bool isExtended = bytes.at(end - id3v1Length - id3v1ExtensionLength, 4).startsWith("TAG+");
    const qint64 length = id3v1Length + (isExtended ? id3v1ExtensionLength : 0);
    return TagBehind{TagBehind::Kind::Id3v1, end - length, end};
}

std::optional<TagBehind> tagBefore(SoundBytes &bytes, qint64 floor, qint64 end)
{
    if (const std::optional<TagBehind> id3v1 = id3v1Before(bytes, end))
        return id3v1;
    if (const std::optional<ApePlace> ape = apeTagBefore(bytes, floor, end))
        return TagBehind{TagBehind::Kind::Ape, ape->begin, end, ape->isFound};
    return lyricsBefore(bytes, end);
}

} // namespace

qint64 tagsBefore(SoundBytes &bytes)
{
    qint64 at = 0;
    while (const qint64 length = id3v2Length(bytes.at(at, 10)))
        at += length;
    return std::min(at, bytes.size());
}

QList<TagBehind> tagListBehind(SoundBytes &bytes)
{
    QList<TagBehind> tags;
    const qint64 floor = tagsBefore(bytes);
    qint64 end = bytes.size();
    while (tags.size() < mostTagParts) {
        const std::optional<TagBehind> tag = tagBefore(bytes, floor, end);
        if (!tag || tag->begin < floor)
            break;
        tags.append(*tag);
        end = tag->begin;
    }
    return tags;
}

qint64 tagsBehind(SoundBytes &bytes)
{
    const QList<TagBehind> tags = tagListBehind(bytes);
    return tags.isEmpty() ? bytes.size() : tags.last().begin;
}

bool tagsAreOversized(SoundBytes &bytes)
{
    const bool hasId3v1 = id3v1Before(bytes, bytes.size()).has_value();
    for (const qint64 end : {bytes.size(), bytes.size() - (hasId3v1 ? id3v1Length : 0)}) {
        const std::optional<ApePlace> ape = apeTagBefore(bytes, 0, end);
        const bool isInside = ape && ape->statedLength <= bytes.size();
        if (ape && (ape->statedCount > mostTagParts || (isInside && ape->statedLength > mostTagBytes)))
            return true;
    }
    return false;
}

} // namespace velmora
