#pragma once

#include "core/text_encoding.h"

#include <QByteArray>
#include <QList>

#include <optional>
#include <string_view>

namespace velmora {

/// The encoding whose byte-order mark `bytes` start with.
[[nodiscard]] std::optional<TextEncoding> encodingByMark(std::string_view bytes);

/// UTF-16 without a mark, by what the first 64 KiB would be as UTF-16: nothing that no text holds, and enough ASCII
/// characters to tell the byte order by. `validUtf8` says that the bytes could be UTF-8 too; more is asked for then.
[[nodiscard]] std::optional<TextEncoding> encodingByZeros(std::string_view bytes, bool validUtf8);

/// The lines around the first bytes above 0x7F, a bounded part of the text: what comes before says nothing.
[[nodiscard]] std::string_view tellingBytes(std::string_view bytes);
/// The same for valid UTF-8, without the half characters at its ends.
[[nodiscard]] std::string_view tellingText(std::string_view utf8);

/// Whether `bytes`, which may end within a character, are text in `charset`: a wrong guess shows by what it cannot
/// decode.
[[nodiscard]] bool fitsEncoding(std::string_view bytes, const QByteArray &charset);

/// The encoding of bytes that are not valid UTF-8 as their telling part suggests: damaged UTF-8; a charset of two bytes
/// a character whose everyday characters they are; for a short text, a charset of `preferred` (see
/// `preferredCharsets`); what the statistics of the uchardet library make of it; Latin-1 when that fits nothing.
[[nodiscard]] TextEncoding encodingByStatistics(std::string_view bytes, const QList<QByteArray> &preferred);

} // namespace velmora
