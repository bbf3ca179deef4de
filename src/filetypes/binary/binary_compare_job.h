#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "filetypes/binary/hex_document.h"

#include <QString>

#include <optional>

namespace velmora {

/// What one comparison compares, and how.
struct BinaryRequest {
    Sides<QString> paths;
    Sides<qint64> starts; ///< so many bytes are left out at the beginning
    bool aligns = false;  ///< bytes that have moved are found again
};

/// What became of it.
struct BinaryCompareResult {
    enum class Fault : quint8 { None, TooLarge, CannotOpen };

    Fault fault = Fault::None;
    Side faultSide = Side::Left;
    std::shared_ptr<const HexDocument> document = {}; ///< null with a fault
    qint64 differing = 0;                             ///< rows, or ranges if aligned
    int rate = 0;                                     ///< their share in per cent
    bool isCapped = false;                            ///< not all of them are listed
};

/// Opens both files and compares them.
[[nodiscard]] BinaryCompareResult compareBinaries(const BinaryRequest &request, const CancelFlag &cancel,
                                                  Progress &progress);

} // namespace velmora
