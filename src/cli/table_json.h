#pragma once

#include "cli/text_input.h"
#include "core/output_buffer.h"
#include "filetypes/table/engine/table_alignment.h"

namespace velmora::cli {

/// Writes a comparison of tables as one JSON object, row by row; docs/velmora-cli.md has its schema.
void writeTableJson(OutputBuffer &output, const TableAlignment &table, const TextInput &left, const TextInput &right);

} // namespace velmora::cli
