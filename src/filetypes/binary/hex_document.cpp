#include "filetypes/binary/hex_document.h"

#include <algorithm>

namespace velmora {

bool HexDocument::differsWithin(qint64 first, qint64 end) const
{
    if (isAligned && rows.at(first).kind != RangeKind::Equal)
        return true;
    const auto stop = std::lower_bound(stops.begin(), stops.end(), first);
    return stop != stops.end() && *stop < end;
}

} // namespace velmora
