#pragma once

#include "text/engine/cancel_poll.h"
#include "text/engine/diff_line.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/normalized_side.h"

#include <QList>

#include <functional>

namespace velmora {

/// Is told how many left lines have found their equal so far.
using LinesMatched = std::function<void(qint64)>;

/// The rows of two sides whose keys are matched as sequences, with the gaps between filled by similarity. The sides
/// lose their hashes. Empty when cancelled.
template <typename Source>
[[nodiscard]] QList<AlignedRow> alignSides(NormalizedSide<Source> &left, NormalizedSide<Source> &right,
                                           const AlignParams &params, const LinesMatched &linesMatched,
                                           const CancelFlag &cancel);

/// The rows of two sides whose keys are paired by their index. Empty when cancelled.
template <typename Source>
[[nodiscard]] QList<AlignedRow> alignByIndex(const NormalizedSide<Source> &left, const NormalizedSide<Source> &right,
                                             const CancelFlag &cancel);

extern template QList<AlignedRow> alignSides(NormalizedSide<Utf8Lines> &, NormalizedSide<Utf8Lines> &,
                                             const AlignParams &, const LinesMatched &, const CancelFlag &);
extern template QList<AlignedRow> alignSides(NormalizedSide<Utf16Lines> &, NormalizedSide<Utf16Lines> &,
                                             const AlignParams &, const LinesMatched &, const CancelFlag &);
extern template QList<AlignedRow> alignByIndex(const NormalizedSide<Utf8Lines> &, const NormalizedSide<Utf8Lines> &,
                                               const CancelFlag &);
extern template QList<AlignedRow> alignByIndex(const NormalizedSide<Utf16Lines> &, const NormalizedSide<Utf16Lines> &,
                                               const CancelFlag &);

} // namespace velmora
