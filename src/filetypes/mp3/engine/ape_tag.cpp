#include "filetypes/mp3/engine/ape_tag.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr quint32 saysHeader = 1U << 31;
constexpr quint32 saysItIsHeader = 1U << 29;
constexpr qsizetype beforeName = 8; // length and flags
constexpr qsizetype leastItem = 11; // with a name of two letters
constexpr qsizetype longestName = 255;

struct ApeEnd {
    qint64 length = 0;
    qint64 count = 0;
    quint32 flags = 0;
};

std::optional<ApeEnd> endAt(SoundBytes &bytes, qint64 at)
{
    const QByteArrayView end = bytes.at(at, ApePlace::endLength);
    if (end.size() < ApePlace::endLength || !end.startsWith("APETAGEX"))
        return std::nullopt;
    return ApeEnd{qint64(littleEndian(end, 12, 4)), qint64(littleEndian(end, 16, 4)),
                  quint32(littleEndian(end, 20, 4))};
}

bool isItem(SoundBytes &bytes, qint64 at, qint64 end)
{
    const QByteArray item = bytes.at(at, std::min<qint64>(end - at, beforeName + longestName + 1)).toByteArray();
    qsizetype from = 0;
    const std::optional<ApeItem> taken = takeApeItem(item, from);
    return taken && taken->hasGoodName();
}

} // namespace

std::optional<ApePlace> apeTagBefore(SoundBytes &bytes, qint64 floor, qint64 end)
{
    const std::optional<ApeEnd> footer = endAt(bytes, end - ApePlace::endLength);
    if (!footer)
        return std::nullopt;
    ApePlace place;
    place.end = end;
    place.statedLength = footer->length;
    place.statedCount = footer->count;
    place.isHeader = (footer->flags & saysItIsHeader) != 0;
    const qint64 items = end - footer->length;
    const bool isInside = items >= floor && items <= place.footer();
    const qint64 before = items - ApePlace::endLength;
    std::optional<ApeEnd> header = isInside && before >= floor ? endAt(bytes, before) : std::nullopt;
    if (header && (header->flags & saysItIsHeader) == 0) // the end of another tag
        header.reset();
    place.isFound =
        isInside && !place.isHeader && (header || items == place.footer() || isItem(bytes, items, place.footer()));
    place.items = place.isFound ? items : place.footer();
    place.begin = place.isFound && header ? before : place.items;
    const bool isSame = header && header->length == footer->length && header->count == footer->count;
    place.agrees = (footer->flags & saysHeader) != 0 ? isSame : !header;
    return place;
}

bool isApeEnd(SoundBytes &bytes, qint64 at)
{
    return endAt(bytes, at).has_value();
}

bool ApeItem::hasGoodName() const
{
    // Not to be taken for the beginning of other tags or sound.
    constexpr std::array<QByteArrayView, 4> forbidden{"ID3", "TAG", "OggS", "MP+"};
    const auto isThis = [this](QByteArrayView other) { return name.compare(other, Qt::CaseInsensitive) == 0; };
    return name.size() >= 2 && name.size() <= longestName &&
           std::all_of(name.begin(), name.end(), [](char letter) { return letter >= ' ' && letter <= '~'; }) &&
           std::none_of(forbidden.begin(), forbidden.end(), isThis);
}

std::optional<ApeItem> takeApeItem(QByteArrayView items, qsizetype &at)
{
    const qsizetype nameEnd = items.size() - at < leastItem ? -1 : items.indexOf('\0', at + beforeName);
    if (nameEnd < 0)
        return std::nullopt;
    ApeItem item;
    item.statedLength = qint64(littleEndian(items, at, 4));
    item.flags = quint32(littleEndian(items, at + 4, 4));
    item.name = items.sliced(at + beforeName, nameEnd - at - beforeName);
    const qsizetype length = std::min<qint64>(item.statedLength, items.size() - nameEnd - 1);
    item.value = items.sliced(nameEnd + 1, length);
    at = nameEnd + 1 + length;
    return item;
}

} // namespace velmora
