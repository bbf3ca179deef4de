#pragma once

#include "core/output_buffer.h"

#include <QString>

namespace velmora::cli {

/// Writes `text` as a JSON string. A surrogate without its partner, as in names that are no text, is written as an
/// escape, so that every string can be read back.
void writeJsonString(OutputBuffer &output, const QString &text);

} // namespace velmora::cli
