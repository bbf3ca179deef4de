#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace velmora {

/// The lines as a side's replacement rules leave them for the comparison: in each, every occurrence of `find[k]`,
/// letter case counting, becomes `with[k]`, or goes where `with` is shorter. A rule with an empty find text does
/// nothing; a later rule sees what the earlier ones left.
///
/// The number of lines stays, even where a rule puts a line feed in, and so do line ends, save behind a line that now
/// ends in a carriage return, where they begin with another. Shares the lines of `lines` when there is no rule. None
/// when the rules multiply the text: beyond eight times its size, 64 MiB or more, they stop. Incomplete when `cancel`
/// is set on the way.
[[nodiscard]] std::optional<TextLines> applyReplacementRules(const TextLines &lines, const QStringList &find,
                                                             const QStringList &with, const CancelFlag &cancel = {});

} // namespace velmora
