#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/sides.h"
#include "text/engine/normalized_side.h"

#include <optional>

namespace velmora {

/// Both sides of a comparison in their working form.
template <typename Source>
using BothSides = Sides<NormalizedSide<Source>>;

/// Reads both sides, each on a thread of its own where that pays, and reports the lines read as phase 0 of `progress`.
/// The lines are taken as they are when `leftRules` is null, else both sets of rules are needed. Incomplete when
/// cancelled.
template <typename Source>
[[nodiscard]] BothSides<Source> readSides(const Source &left, const Source &right, const NormalizeRules *leftRules,
                                          const NormalizeRules *rightRules, const CancelFlag &cancel,
                                          Progress &progress);

extern template BothSides<Utf8Lines> readSides(const Utf8Lines &, const Utf8Lines &, const NormalizeRules *,
                                               const NormalizeRules *, const CancelFlag &, Progress &);
extern template BothSides<Utf16Lines> readSides(const Utf16Lines &, const Utf16Lines &, const NormalizeRules *,
                                                const NormalizeRules *, const CancelFlag &, Progress &);

} // namespace velmora
