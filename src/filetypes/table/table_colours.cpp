#include "filetypes/table/table_colours.h"

#include "session/theme.h"

#include <array>

namespace velmora {

QColor tableColour(TableColour colour, bool dark)
{
    struct Shade {
        QRgb light;
        QRgb dark;
    };
    static constexpr std::array<Shade, 6> shades{{
        {0xffffffff, 0xff232323},
        {0xffffdc96, 0xff7a5200},
        {0xffffffc8, 0xff4a430c},
        {0xffffc8c8, 0xff8c3a34},
        {0xffc8ffc8, 0xff0d5c50},
        {0xfff0f0f0, 0xff303134},
    }};
    const Shade &shade = shades[std::size_t(colour)];
    return QColor::fromRgb(dark ? shade.dark : shade.light);
}

QColor tableColour(TableColour colour)
{
    return tableColour(colour, isDarkTheme());
}

TableColour tableColourOf(TableRowStatus row, TableCellStatus cell, bool isPresent)
{
    if (!isPresent)
        return TableColour::Absent;
    switch (row) {
    case TableRowStatus::LeftOnly:
        return TableColour::LeftOnly;
    case TableRowStatus::RightOnly:
        return TableColour::RightOnly;
    case TableRowStatus::Modified:
        return cell == TableCellStatus::Modified ? TableColour::ChangedCell : TableColour::ChangedRow;
    case TableRowStatus::Same:
        break;
    }
    return TableColour::Same;
}

} // namespace velmora
