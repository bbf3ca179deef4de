#pragma once

#include <QString>

namespace velmora {

class OutputBuffer;

/// Writes `text` as a JSON string with its quotes. A surrogate without its partner, as in names that are no text, is
/// written as an escape, so that every string can be read back.
void writeJsonText(OutputBuffer &output, const QString &text);

} // namespace velmora
