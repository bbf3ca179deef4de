#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"

#include <QString>
#include <QStringList>

namespace velmora {

/// The line after all rules: each occurrence of `find[k]`, letter case counting, becomes `with[k]`, or goes where
/// `with` is shorter. A rule with an empty find text does nothing; a later rule sees what the earlier ones left.
[[nodiscard]] QString applyReplacementRules(QString line, const QStringList &find, const QStringList &with);

/// The same for every line of a text. The number of lines stays, even where a rule puts a line feed in, and so do line
/// ends, save behind a line that now ends in a carriage return, where they begin with another. Shares the lines of
/// `lines` when there is no rule. Incomplete when `cancel` is set on the way.
[[nodiscard]] TextLines applyReplacementRules(const TextLines &lines, const QStringList &find, const QStringList &with,
                                              const CancelFlag &cancel = {});

} // namespace velmora
