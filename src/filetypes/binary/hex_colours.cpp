#include "filetypes/binary/hex_colours.h"

namespace velmora {

QColor differingByteColour(bool dark)
{
    return QColor::fromRgb(dark ? 0xffffa8a0 : 0xffa80000);
}

QColor differingRowColour(bool dark)
{
    return QColor::fromRgb(dark ? 0xffff6b60 : 0xffe00000);
}

} // namespace velmora
