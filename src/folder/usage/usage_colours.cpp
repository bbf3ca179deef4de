#include "folder/usage/usage_colours.h"

#include "session/theme.h"
#include "session/translate.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmora {

namespace {

struct KindLook {
    const char *text;
    QRgb light;
    QRgb dark;
};

/// In the order of `FileKind`. Blue, orange, green and the like of about one brightness, of which the neighbours stay
/// apart for eyes that see no red or no green.
constexpr std::array<KindLook, fileKindCount> looks{{
    {QT_TRANSLATE_NOOP("Velmora", "Other"), 0xFFB4BAC4, 0xFF565D69},
    {QT_TRANSLATE_NOOP("Velmora", "Pictures"), 0xFFF0B45A, 0xFF9A6A1E},
    {QT_TRANSLATE_NOOP("Velmora", "Sound"), 0xFFE58FB5, 0xFF97476D},
    {QT_TRANSLATE_NOOP("Velmora", "Films"), 0xFFB99AE8, 0xFF6A4EA3},
    {QT_TRANSLATE_NOOP("Velmora", "Documents"), 0xFF7DB4F0, 0xFF2F68A8},
    {QT_TRANSLATE_NOOP("Velmora", "Archives"), 0xFFD9906F, 0xFF8C4A2C},
    {QT_TRANSLATE_NOOP("Velmora", "Programs"), 0xFF6CC8C4, 0xFF1F7673},
    {QT_TRANSLATE_NOOP("Velmora", "Source code"), 0xFFA4CB6E, 0xFF57782A},
}};

} // namespace

QColor fileKindColour(FileKind kind)
{
    const KindLook &look = looks[std::size_t(kind)];
    return QColor::fromRgb(isDarkTheme() ? look.dark : look.light);
}

QString fileKindText(FileKind kind)
{
    return Velmora::tr(looks[std::size_t(kind)].text);
}

QColor growthColour(qint64 size, qint64 growth)
{
    const bool dark = isDarkTheme();
    const QColor same = QColor::fromRgb(dark ? 0xFF4A505A : 0xFFD3D7DD);
    if (growth == 0)
        return same;
    const QColor strong =
        growth > 0 ? QColor::fromRgb(dark ? 0xFFC4622D : 0xFFE8793A) : QColor::fromRgb(dark ? 0xFF2F76C4 : 0xFF5B9BE0);
    // Twice as large, or half as large, is as strong as it gets.
    const double part = double(std::abs(growth)) / double(std::max<qint64>({size, size - growth, 1}));
    return blended(strong, same, std::clamp(0.25 + part * 1.5, 0.25, 1.0));
}

} // namespace velmora
