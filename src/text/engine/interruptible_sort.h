#pragma once

#include "text/engine/cancel_poll.h"

#include <algorithm>
#include <vector>

namespace velmora {

/// Sorts `values` in pieces with a look at `poll` between them. Some order or other when it stops.
template <typename Value, typename Less>
void sortInterruptibly(std::vector<Value> &values, Less less, CancelPoll &poll)
{
    constexpr size_t piece = 1 << 15;
    constexpr qint64 stepsPerValue = 16;
    const auto at = [&values](size_t index) { return values.begin() + qsizetype(std::min(index, values.size())); };
    for (size_t begin = 0; begin < values.size(); begin += piece) {
        if (poll.stop(stepsPerValue * qint64(piece)))
            return;
        std::sort(at(begin), at(begin + piece), less);
    }
    std::vector<Value> merged;
    if (values.size() > piece)
        merged.resize(values.size());
    for (size_t width = piece; width < values.size(); width *= 2) {
        for (size_t begin = 0; begin < values.size(); begin += 2 * width) {
            if (poll.stop(qint64(width)))
                return;
            std::merge(at(begin), at(begin + width), at(begin + width), at(begin + 2 * width),
                       merged.begin() + qsizetype(begin), less);
        }
        values.swap(merged);
    }
}

} // namespace velmora
