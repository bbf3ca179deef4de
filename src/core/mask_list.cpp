#include "core/mask_list.h"

#include <QChar>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

/// The name in "[:name:]" at `at`, empty when none is there. Other signs than the colon make something that no
/// expression knows, too.
std::u32string_view nameAt(std::u32string_view mask, std::size_t at)
{
    if (at + 1 >= mask.size() || mask[at] != U'[' ||
        std::u32string_view(U":.=").find(mask[at + 1]) == std::u32string_view::npos)
        return {};
    const char32_t sign = mask[at + 1];
    for (std::size_t end = at + 2; end + 1 < mask.size() && mask[end] != U']' && mask[end] != U'\\'; ++end) {
        if (mask[end] == sign && mask[end + 1] == U']')
            return mask.substr(at + 1, end - at);
        if (mask[end] == U'[' && mask[end + 1] == sign)
            break;
    }
    return {};
}

struct NamedRanges {
    std::u32string_view name;
    std::u32string_view ranges; ///< first and last of each
};

constexpr std::array namedRanges{
    NamedRanges{U":alnum:", U"09AZaz"},
    NamedRanges{U":alpha:", U"AZaz"},
    NamedRanges{U":ascii:", {U"\0\x7F", 2}},
    NamedRanges{U":blank:", U"\t\t  "},
    NamedRanges{U":cntrl:", {U"\0\x1F\x7F\x7F", 4}},
    NamedRanges{U":digit:", U"09"},
    NamedRanges{U":graph:", U"!~"},
    NamedRanges{U":lower:", U"AZaz"}, // case does not count
    NamedRanges{U":print:", U" ~"},
    NamedRanges{U":punct:", U"!/:@[`{~"},
    NamedRanges{U":space:", U"\t\r  "},
    NamedRanges{U":upper:", U"AZaz"},
    NamedRanges{U":word:", U"09AZ__az"},
    NamedRanges{U":xdigit:", U"09AFaf"},
};

} // namespace

std::optional<MaskList> MaskList::read(std::u32string_view mask, std::size_t &at)
{
    if (!nameAt(mask, at - 1).empty()) // names no class outside a list
        return std::nullopt;
    MaskList list;
    list.m_negated = at < mask.size() && (mask[at] == U'!' || mask[at] == U'^');
    at += list.m_negated ? 1 : 0;
    const std::size_t first = at;
    while (at < mask.size() && (mask[at] != U']' || at == first)) {
        if (const std::u32string_view name = nameAt(mask, at); !name.empty()) {
            at += name.size() + 2;
            const bool ranges = at + 1 < mask.size() && mask[at] == U'-' && mask[at + 1] != U']';
            if (ranges || !list.addNamed(name))
                return std::nullopt;
        } else if (!list.readRange(mask, at)) {
            return std::nullopt;
        }
    }
    if (at >= mask.size())
        return std::nullopt;
    ++at;
    list.foldCase();
    return list;
}

bool MaskList::readRange(std::u32string_view mask, std::size_t &at)
{
    const char32_t low = mask[at++];
    char32_t high = low;
    if (at + 1 < mask.size() && mask[at] == U'-' && mask[at + 1] != U']') {
        if (!nameAt(mask, at + 1).empty())
            return false;
        high = mask[at + 1];
        at += 2;
    }
    m_ranges.emplace_back(low, high);
    return low <= high && low != U'/' && high != U'/';
}

bool MaskList::addNamed(std::u32string_view name)
{
    const bool negated = name.starts_with(U":^");
    const std::u32string_view plain = name.substr(negated ? 2 : 1);
    const auto isNamed = [plain](const NamedRanges &named) { return named.name.substr(1) == plain; };
    const auto found = std::find_if(namedRanges.begin(), namedRanges.end(), isNamed);
    if (found == namedRanges.end())
        return false;
    char32_t next = 0;
    for (std::size_t at = 0; at < found->ranges.size(); at += 2) {
        const char32_t low = found->ranges[at];
        const char32_t high = found->ranges[at + 1];
        if (!negated)
            m_named.emplace_back(low, high);
        else if (next < low)
            m_named.emplace_back(next, low - 1);
        next = high + 1;
    }
    if (negated)
        m_named.emplace_back(next, 0x10'FFFF);
    return true;
}

void MaskList::foldCase()
{
    const auto join = [](Ranges &ranges) {
        std::sort(ranges.begin(), ranges.end());
        Ranges apart;
        for (const Range &range : ranges) {
            if (!apart.empty() && range.first <= apart.back().second + 1)
                apart.back().second = std::max(apart.back().second, range.second);
            else
                apart.push_back(range);
        }
        ranges = std::move(apart);
    };
    // Joined first, so that many wide ranges cost what all of Unicode costs once.
    join(m_ranges);
    Ranges folded;
    for (const Range &range : m_ranges) {
        for (char32_t point = range.first; point <= range.second; ++point) {
            if (const char32_t other = QChar::toCaseFolded(point); other != point)
                folded.emplace_back(other, other);
        }
    }
    m_ranges.insert(m_ranges.end(), folded.begin(), folded.end());
    join(m_ranges);
    join(m_named);
}

bool MaskList::isIn(const Ranges &ranges, char32_t point)
{
    const auto behind = std::upper_bound(ranges.begin(), ranges.end(), point,
                                         [](char32_t value, const Range &range) { return value < range.first; });
    return behind != ranges.begin() && point <= std::prev(behind)->second;
}

bool MaskList::contains(char32_t point, char32_t folded) const
{
    return (isIn(m_ranges, folded) || isIn(m_named, point)) != m_negated;
}

} // namespace velmora
