#pragma once

#include "core/text_encoding.h"
#include "core/text_lines.h"

#include <QString>

namespace velmora {

/// How a text was written, or why it was not.
struct TextSaveResult {
    enum class End {
        Saved,
        NotEncodable, ///< the encoding lacks a character; nothing was written
        NotFaithful,  ///< lines that nobody changed would get other bytes; nothing was written
        NotWritten,   ///< the file could not be written and is as it was
    };
    End end = End::Saved;
    QString character;   ///< the one that is lacking
    qsizetype line = -1; ///< where it stands, 0-based
    QString error;       ///< the system's own words
};

/// Writes `text` to the file `path` in one step, each line with its own end. A file that is there keeps its
/// byte-order mark or its lack of one. Nothing is written when the encoding would not even give back the bytes that the
/// file has now, since lines that nobody edited would change. Reentrant.
[[nodiscard]] TextSaveResult saveText(const TextLines &text, const TextEncoding &encoding, const QString &path);

} // namespace velmora
