#include "session/folder_colours.h"

#include "session/theme.h"

#include <array>

namespace velmora {

namespace {

struct Shade {
    FolderMark mark;
    QRgb light;
    QRgb dark;
    char16_t sign;
};

constexpr std::array<Shade, folderMarkCount> shades = {{
    {FolderMark::Unknown, 0xff5f6873, 0xffa3abb5, u'?'},
    {FolderMark::Scanning, 0xff5f6873, 0xffa3abb5, u'…'},
    {FolderMark::Same, 0xff1b1f24, 0xfff0f0f0, u'='},
    {FolderMark::Older, 0xff8f6a00, 0xffd9b84a, u'<'},
    {FolderMark::Unique, 0xff0b5cc4, 0xff5aa9f5, u'+'},
    {FolderMark::Newer, 0xffa81400, 0xffff6f55, u'!'},
    {FolderMark::Filtered, 0xff9b59a8, 0xffdba6e6, u'-'},
}};

constexpr bool isInOrder()
{
    for (std::size_t k = 0; k < shades.size(); ++k) {
        if (std::size_t(shades[k].mark) != k)
            return false;
    }
    return true;
}
static_assert(isInOrder(), "one shade for each mark, in the order of the marks");

} // namespace

QColor folderMarkColour(FolderMark mark, bool dark)
{
    const Shade &shade = shades[std::size_t(mark)];
    return QColor::fromRgb(dark ? shade.dark : shade.light);
}

QColor folderMarkColour(FolderMark mark)
{
    return folderMarkColour(mark, isDarkTheme());
}

QChar folderMarkSign(FolderMark mark)
{
    return shades[std::size_t(mark)].sign;
}

} // namespace velmora
