#pragma once

#include "cli/text_input.h"
#include "core/output_buffer.h"
#include "text/engine/diff_line.h"
#include "text/engine/line_ends.h"

namespace velmora {
struct TextSessionOptions;
}

namespace velmora::cli {

/// Writes a text comparison as one JSON object, row by row; docs/velmora-cli.md has its schema.
void writeTextJson(OutputBuffer &output, const TextInput &left, const TextInput &right, const QList<AlignedRow> &rows,
                   const std::vector<LineEndRow> &lineEnds, const TextSessionOptions &options);

/// The same object for files that are no texts: without rows, but whether they are the same bytes.
void writeBinaryJson(OutputBuffer &output, const TextInput &left, const TextInput &right);

} // namespace velmora::cli
