#pragma once

#include "core/text_encoding.h"
#include "core/text_lines.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>
#include <optional>

class QIODevice;

namespace velmora::cli {

/// One of the three texts of a merge.
struct MergeInput {
    QString path; ///< "-" for standard input
    QByteArray raw;
    TextLines lines;
    bool hasZeros = false; ///< a byte that no text in an encoding of single bytes has
};

/// The texts of a merge: base, left and right.
///
/// They are lines of bytes as they stand in the files, whatever their encoding, so that nothing is changed that is not
/// merged. Only where a line feed is no byte of its own, in UTF-16 and UTF-32, are all three decoded to UTF-8.
struct MergeInputs {
    std::array<MergeInput, 3> texts;
    std::optional<TextEncoding> encoding; ///< of the result, when the texts were decoded
    QString error;                        ///< why there are no lines, empty when there are

    [[nodiscard]] const TextLines &base() const noexcept { return texts[0].lines; }
    [[nodiscard]] const TextLines &left() const noexcept { return texts[1].lines; }
    [[nodiscard]] const TextLines &right() const noexcept { return texts[2].lines; }
};

/// Reads the three texts, large ones at the same time. Files that hold zero bytes and are no UTF-16 or UTF-32 are
/// refused unless `forceText` is set. When the three have different encodings, the result has the one that was changed.
///
/// `baseRead` is called on the calling thread with the lines of the base when they are there, while the others may
/// still be read; where the result has an `encoding`, the base has got other lines since.
[[nodiscard]] MergeInputs readMergeInputs(const std::array<QString, 3> &paths, bool forceText, QIODevice &standardInput,
                                          const std::function<void(const TextLines &)> &baseRead);

} // namespace velmora::cli
