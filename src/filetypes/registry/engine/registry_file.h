#pragma once

#include "core/cancel_flag.h"
#include "core/text_encoding.h"
#include "filetypes/registry/engine/reg_reader.h"

#include <QByteArray>
#include <QString>

namespace velmora {

enum class RegistryFault : quint8 {
    None,
    CannotOpen,   ///< `detail`: the system's own words
    NotRegistry,  ///< does not begin as a file of registry entries does
    CannotReadKey ///< a live key; `detail` as above
};

/// The registry entries of one side.
struct RegistryReading {
    RegistryTree tree; ///< settled; empty where there is a fault
    qsizetype badLines = 0;
    qsizetype firstBadLine = 0; ///< from 1 on
    bool mayBeCutOff = false;   ///< in UTF-16, as exports are, without the empty line that these end with
    QByteArray charset;         ///< that letters beyond ASCII were read by, in a file of no Unicode; empty for none
    RegistryFault fault = RegistryFault::None;
    QString detail;
    [[nodiscard]] bool ok() const noexcept { return fault == RegistryFault::None; }
};

/// Reads the bytes of a `.reg` file: UTF-16 with a mark, as version 5 has it, UTF-8, or the national code page of
/// version 4, which is found out, by texts that stand as digits where there are no others, unless `encoding` says it.
[[nodiscard]] RegistryReading readRegistry(const QByteArray &bytes, const TextEncoding &encoding = {},
                                           const CancelFlag &cancel = {});

/// The same with a file.
[[nodiscard]] RegistryReading loadRegistry(const QString &path, const TextEncoding &encoding = {},
                                           const CancelFlag &cancel = {});

} // namespace velmora
