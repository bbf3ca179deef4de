#pragma once

#include "core/cancel_flag.h"
#include "core/text_encoding.h"

#include <QByteArray>
#include <QString>

#include <string_view>

namespace velmora {

/// A text as the bytes of a file, or the first character that the encoding cannot hold.
struct EncodedText {
    QByteArray bytes;            ///< mark first, where the encoding has one; incomplete when not ok
    QString failedCharacter;     ///< the character without a place in the encoding, empty when there is none
    qsizetype failedLine = -1;   ///< its line, 0-based
    qsizetype failedColumn = -1; ///< its place in the line, 0-based in UTF-16 code units

    [[nodiscard]] bool ok() const noexcept { return failedLine < 0; }
};

/// The bytes of `utf8` in `encoding`; automatic detection stands for UTF-8. Never writes a substitute for a character
/// that the encoding lacks: the bytes are decoded again, and a character that would come back as another, or as none,
/// counts as lacking (an escape that a charset switches by; U+FEFF at the start where it would be read as a mark). Line
/// ends stay as they are. Precondition: `utf8` is valid UTF-8. Incomplete when `cancel` is set on the way. Reentrant.
[[nodiscard]] EncodedText encodeText(std::string_view utf8, const TextEncoding &encoding,
                                     const CancelFlag &cancel = {});

/// The same for UTF-16, where a surrogate without its partner is a character that no encoding can hold.
[[nodiscard]] EncodedText encodeText(QStringView text, const TextEncoding &encoding, const CancelFlag &cancel = {});

} // namespace velmora
