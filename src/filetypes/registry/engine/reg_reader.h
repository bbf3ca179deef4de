#pragma once

#include "core/cancel_flag.h"
#include "filetypes/registry/engine/registry_tree.h"

#include <QByteArray>
#include <QStringView>

namespace velmora {

/// What a text of registry entries holds.
struct RegReading {
    RegistryTree tree;          ///< settled
    bool hasHeader = false;     ///< begins as such files do; without, nothing is read
    bool isVersion4 = false;    ///< its header is "REGEDIT4"
    qsizetype badLines = 0;     ///< that are no entry
    qsizetype firstBadLine = 0; ///< from 1 on; 0 when there is none
    bool endsEmpty = false;     ///< its last line is empty, as editors leave one behind every key
};

/// Reads a `.reg` file that is decoded: its header, "Windows Registry Editor Version 5.00" or "REGEDIT4", keys in
/// brackets and values as `"name"=data`, as the registry editor of Windows writes them. `charset` is what texts in
/// hexadecimal digits are encoded in under the second header, a charset of a `TextEncoding`. Incomplete when `cancel`
/// is set.
[[nodiscard]] RegReading readRegText(QStringView text, const QByteArray &charset, const CancelFlag &cancel = {});

} // namespace velmora
