#pragma once

#include "filetypes/version/engine/program_facts.h"

#include <QByteArrayView>

#include <optional>

namespace velmora {

/// All that is known of an ELF file (System V ABI, chapters 4 and 5; notes as GNU writes them) but its size and hash;
/// nothing when it is none or its header is not whole.
[[nodiscard]] std::optional<ProgramFacts> readElfFacts(QByteArrayView file);

} // namespace velmora
