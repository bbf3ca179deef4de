#include "filetypes/image/image_words.h"

#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

QString orientationText(PictureFacts::Orientation orientation)
{
    static constexpr std::array<const char *, 8> texts{
        QT_TRANSLATE_NOOP("Velmora", "as stored"),
        QT_TRANSLATE_NOOP("Velmora", "mirrored"),
        QT_TRANSLATE_NOOP("Velmora", "upside down and mirrored"),
        QT_TRANSLATE_NOOP("Velmora", "turned by 180°"),
        QT_TRANSLATE_NOOP("Velmora", "turned by 90°"),
        QT_TRANSLATE_NOOP("Velmora", "mirrored and turned by 90°"),
        QT_TRANSLATE_NOOP("Velmora", "mirrored and turned by 270°"),
        QT_TRANSLATE_NOOP("Velmora", "turned by 270°"),
    };
    return Velmora::tr(texts[std::size_t(orientation)]);
}

QList<KeyedItem> itemsOf(const PictureFacts &facts)
{
    const QLocale locale;
    const QString none = QStringLiteral("—");
    QList<KeyedItem> items{
        {Velmora::tr("Format"), QString::fromLatin1(facts.format).toUpper()},
        {Velmora::tr("Size in pixels"), QStringLiteral("%1 × %2").arg(facts.size.width()).arg(facts.size.height())},
        {Velmora::tr("File size"), Velmora::tr("%1 bytes").arg(locale.toString(facts.bytes))},
        {Velmora::tr("Bits per pixel"), QString::number(facts.depth)},
        {Velmora::tr("Colour table"), facts.colours > 0 ? QString::number(facts.colours) : none},
        {Velmora::tr("Transparency"), facts.hasAlpha ? Velmora::tr("yes") : Velmora::tr("no")},
        {Velmora::tr("Orientation"), orientationText(facts.orientation)},
        {Velmora::tr("Colour profile"), facts.profile.isEmpty() ? none : facts.profile},
        {Velmora::tr("Resolution"),
         facts.dotsPerMeter > 0 ? Velmora::tr("%1 dpi").arg(qRound(facts.dotsPerMeter * 0.0254)) : none},
        {Velmora::tr("Frames"), QString::number(facts.frames)},
    };
    for (const KeyedItem &text : facts.texts)
        items.append({Velmora::tr("Text: %1").arg(text.key), text.value});
    return items;
}

} // namespace

QString captionOf(const Picture &picture, const QString &path)
{
    if (!picture.isLoaded())
        return Velmora::tr("(not loaded)");
    return QStringLiteral("%1x%2  %3").arg(picture.image.width()).arg(picture.image.height()).arg(shownPath(path));
}

QString faultText(const Picture &picture, const QString &path)
{
    const QString file = shownPath(path);
    switch (picture.fault) {
    case PictureFault::NotOpened:
        return Velmora::tr("Cannot open: %1").arg(file);
    case PictureFault::NoPicture:
        return Velmora::tr("No picture, or of an unknown format: %1").arg(file);
    case PictureFault::Damaged:
        return Velmora::tr("Damaged or cut off (%1): %2").arg(picture.detail, file);
    case PictureFault::TooLarge:
        return Velmora::tr("Too large for the memory of this computer (%1 × %2 pixels): %3")
            .arg(picture.facts.size.width())
            .arg(picture.facts.size.height())
            .arg(file);
    case PictureFault::None:
        break;
    }
    return {};
}

QString verdictText(const DifferenceMap &map, bool sameBytes, int frames)
{
    const QLocale locale;
    if (sameBytes)
        return Velmora::tr("The files are identical.");
    QStringList parts;
    if (map.differences() == 0) {
        if (map.largestDeviation == 0)
            return frames > 1 ? Velmora::tr("All pixels of this frame are identical; the files differ.")
                              : Velmora::tr("All pixels are identical; the files differ in other bytes.");
        parts.append(Velmora::tr("No pixel differs by more than the tolerance."));
    } else {
        constexpr double percent = 100;
        const double share = percent * double(map.differences()) / double(map.positions());
        const QString count = locale.toString(map.differences());
        const QString shown =
            share < 0.01 ? Velmora::tr("less than %1").arg(locale.toString(0.01)) : locale.toString(share, 'f', 2);
        parts.append(map.regions.size() == 1 ? Velmora::tr("%1 pixels differ (%2 %) in one region.").arg(count, shown)
                                             : Velmora::tr("%1 pixels differ (%2 %) in %3 regions.")
                                                   .arg(count, shown, locale.toString(map.regions.size())));
    }
    if (map.largestDeviation > 0)
        parts.append(Velmora::tr("Largest deviation: %1.").arg(map.largestDeviation));
    if (map.antiAliased > 0)
        parts.append(Velmora::tr("Smoothed edges left out: %1.").arg(locale.toString(map.antiAliased)));
    return parts.join(u' ');
}

QString sizesText(QSize left, QSize right, int tolerance)
{
    if (left == right)
        return Velmora::tr("Same size (tolerance %1)").arg(tolerance);
    // In Chinese whatever the language of the interface is.
    return QStringLiteral("尺寸不同: %1x%2 vs %3x%4（容差 %5）")
        .arg(left.width())
        .arg(left.height())
        .arg(right.width())
        .arg(right.height())
        .arg(tolerance);
}

QList<KeyedRow> propertyRows(const PictureFacts &left, const PictureFacts &right)
{
    const QList<KeyedItem> ofLeft = itemsOf(left);
    QList<KeyedItem> ofRight = itemsOf(right);
    QList<KeyedRow> rows;
    for (const KeyedItem &item : ofLeft) {
        const auto other =
            std::find_if(ofRight.begin(), ofRight.end(), [&](const KeyedItem &one) { return one.key == item.key; });
        if (other == ofRight.end()) {
            rows.append({item.key, PairStatus::LeftOnly, item.value, {}});
            continue;
        }
        rows.append(
            {item.key, other->value == item.value ? PairStatus::Same : PairStatus::Changed, item.value, other->value});
        ofRight.erase(other);
    }
    for (const KeyedItem &item : std::as_const(ofRight))
        rows.append({item.key, PairStatus::RightOnly, {}, item.value});
    return rows;
}

} // namespace velmora
