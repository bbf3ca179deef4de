#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"

#include <QtGlobal>

#include <array>
#include <vector>

namespace velmora {

/// The lines of three texts as numbers from 0 to `count` - 1: equal lines have one number.
struct NumberedTexts {
    std::array<std::vector<qint32>, 3> texts;
    qint32 count = 0;
};

/// Numbers the lines of `texts`, with their ends or without. Incomplete when
/// cancelled.
[[nodiscard]] NumberedTexts numberLines(const std::array<const TextLines *, 3> &texts, bool withEnds,
                                        const CancelFlag &cancel);

} // namespace velmora
