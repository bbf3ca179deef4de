#pragma once

#include "core/text_encoding.h"

#include <optional>
#include <string_view>

namespace velmora {

/// The encoding whose byte-order mark `bytes` start with.
[[nodiscard]] std::optional<TextEncoding> encodingByMark(std::string_view bytes);

/// UTF-16 without a mark, by what the first 64 KiB would be as UTF-16: nothing that no text holds, and enough ASCII
/// characters to tell the byte order by. `validUtf8` says that the bytes could be UTF-8 too; more is asked for then.
[[nodiscard]] std::optional<TextEncoding> encodingByZeros(std::string_view bytes, bool validUtf8);

/// The encoding of bytes that are not valid UTF-8 as their statistics suggest, from the lines around the first bytes
/// above 0x7F; Latin-1 when they suggest nothing that fits. Looks at a bounded part of the text.
[[nodiscard]] TextEncoding encodingByStatistics(std::string_view bytes);

} // namespace velmora
