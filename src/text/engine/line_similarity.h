#pragma once

#include <QtGlobal>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

namespace velmora {

/// How many units two texts have in common at their starts.
template <typename Unit>
[[nodiscard]] size_t commonPrefix(std::basic_string_view<Unit> x, std::basic_string_view<Unit> y) noexcept
{
    constexpr size_t unitsPerWord = sizeof(quint64) / sizeof(Unit);
    const size_t size = std::min(x.size(), y.size());
    size_t at = 0;
    for (; at + unitsPerWord <= size; at += unitsPerWord) {
        if (std::memcmp(x.data() + at, y.data() + at, sizeof(quint64)) != 0)
            break;
    }
    while (at < size && x[at] == y[at])
        ++at;
    return at;
}

/// How many units, at most `limit`, two texts have in common at their ends. Precondition: neither is shorter than
/// `limit`.
template <typename Unit>
[[nodiscard]] size_t commonSuffix(std::basic_string_view<Unit> x, std::basic_string_view<Unit> y, size_t limit) noexcept
{
    constexpr size_t unitsPerWord = sizeof(quint64) / sizeof(Unit);
    const Unit *const xEnd = x.data() + x.size();
    const Unit *const yEnd = y.data() + y.size();
    size_t length = 0;
    for (; length + unitsPerWord <= limit; length += unitsPerWord) {
        if (std::memcmp(xEnd - length - unitsPerWord, yEnd - length - unitsPerWord, sizeof(quint64)) != 0)
            break;
    }
    while (length < limit && *(xEnd - length - 1) == *(yEnd - length - 1))
        ++length;
    return length;
}

/// How alike two lines are, from 0 to 1: the share of the longer one that a common start and a common end make up which
/// do not overlap in either. In UTF-16 units, or in bytes of texts that are ASCII.
template <typename Unit>
[[nodiscard]] double lineSimilarity(std::basic_string_view<Unit> left, std::basic_string_view<Unit> right) noexcept
{
    const size_t longer = std::max(left.size(), right.size());
    const size_t shorter = std::min(left.size(), right.size());
    const size_t prefix = commonPrefix(left, right);
    if (prefix == longer)
        return 1.0;
    return double(prefix + commonSuffix(left, right, shorter - prefix)) / double(longer);
}

} // namespace velmora
