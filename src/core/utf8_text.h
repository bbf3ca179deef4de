#pragma once

#include <QString>

#include <string_view>

namespace velmora {

/// The text that `utf8`, valid and without a byte-order mark, stands for. Everything in the program makes text of bytes
/// by this: U+FEFF at the start is a letter here, while the toolkit's own conversion takes it for a mark and drops it.
[[nodiscard]] QString textOfUtf8(std::string_view utf8);

} // namespace velmora
