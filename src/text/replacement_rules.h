#pragma once

#include "core/text_lines.h"

#include <QStringList>

namespace velmora {

/// The lines as a side's replacement rules leave them for the comparison: one line for each line of `lines`.
///
/// Rules apply in order, each to what the ones before it left: every occurrence of `find[k]` in a line, case-sensitive,
/// becomes `with[k]`, or nothing where `with` is shorter. Rules with an empty find text are skipped. A line feed in a
/// replacement becomes a line separator (U+2028), so that it stays in its line. Throws std::length_error when the
/// result is larger than a text can be. Incomplete when cancelled.
[[nodiscard]] TextLines applyReplacements(const TextLines &lines, const QStringList &find, const QStringList &with,
                                          const CancelFlag &cancel);

} // namespace velmora
