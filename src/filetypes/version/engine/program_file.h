#pragma once

#include "core/cancel_flag.h"
#include "filetypes/version/engine/program_facts.h"

#include <QByteArray>

namespace velmora {

enum class ProgramFault : quint8 {
    None,
    CannotOpen, ///< `detail`: the system's own words
    NoProgram,  ///< neither PE nor ELF
    Damaged     ///< begins as one of them, and its headers are not whole
};

/// A program or library as it was read.
struct ProgramReading {
    ProgramFacts facts; ///< empty where there is a fault
    ProgramFault fault = ProgramFault::None;
    QString detail;
    [[nodiscard]] bool ok() const noexcept { return fault == ProgramFault::None; }
};

/// Reads the bytes of a whole file.
[[nodiscard]] ProgramReading readProgram(const QByteArray &bytes);

/// The same with a file, which is read into memory. Cancelled, it may say anything.
[[nodiscard]] ProgramReading loadProgram(const QString &path, const CancelFlag &cancel = {});

} // namespace velmora
