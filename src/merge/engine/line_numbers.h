#pragma once

#include "core/text_lines.h"
#include "text/engine/cancel_poll.h"

#include <QtGlobal>

#include <array>
#include <functional>
#include <vector>

namespace velmora {

/// The lines of three texts as numbers from 0 to `count` - 1: equal lines have one number.
struct NumberedTexts {
    std::array<std::vector<qint32>, 3> texts;
    qint32 count = 0;
};

/// Numbers the lines of `texts`, with their ends or without. Incomplete when `poll` has stopped.
[[nodiscard]] NumberedTexts numberLines(const std::array<const TextLines *, 3> &texts, bool withEnds, CancelPoll &poll);

} // namespace velmora
