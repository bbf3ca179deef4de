#pragma once

#include "text/engine/cancel_poll.h"
#include "text/engine/line_hash.h"
#include "text/engine/line_normalizer.h"
#include "text/engine/line_source.h"

#include <functional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// How the keys of a side are made of its lines.
struct NormalizeRules {
    KeyRules keyRules;
    bool skipBlankLines = false;
    /// For each line of the side whether it is unimportant, so that its key is empty; empty when none is.
    std::vector<bool> unimportant;
};

/// The working form of one side of a comparison: what counts of its lines, with a hash of each, and where it came from.
///
/// A key that is a part of its line, as most are, is kept as its bounds; only others are copied. Costs 8 bytes a line
/// where lines are changed, 4 where some are skipped, and 4 until `takeHashes`. `Source` is a line source; its text
/// must outlive this.
template <typename Source>
class NormalizedSide {
public:
    using Unit = typename Source::Unit;
    using View = std::basic_string_view<Unit>;
    /// Is told how many lines have been read since the last time.
    using LinesRead = std::function<void(qint32)>;

    /// Takes the lines as they are. Incomplete when `poll` has stopped.
    NormalizedSide(const Source &source, const LineHash &hash, const LinesRead &linesRead, CancelPoll &poll);
    /// The same after normalising each line.
    NormalizedSide(const Source &source, const NormalizeRules &rules, const LineHash &hash, const LinesRead &linesRead,
                   CancelPoll &poll);

    [[nodiscard]] qint32 count() const noexcept { return m_count; }
    [[nodiscard]] View key(qint32 index) const noexcept;
    /// True when every key is ASCII for certain.
    [[nodiscard]] bool isAscii() const noexcept { return m_source.isAscii(); }
    /// The 0-based index of the input line that key `index` is made of.
    [[nodiscard]] qint32 lineIndex(qint32 index) const noexcept
    {
        return m_lineIndices.empty() ? index : m_lineIndices[size_t(index)];
    }
    /// True when the keys are those of all lines in their order.
    [[nodiscard]] bool hasEveryLine() const noexcept { return m_lineIndices.empty(); }
    /// Hands over the bits of each key's hash. Once only.
    [[nodiscard]] std::vector<qint32> takeHashes() noexcept { return std::exchange(m_hashes, {}); }

private:
    /// `length` units from the place `start` in the line on, or, with length `copied`, text number `start` of m_copies.
    struct KeyBounds {
        quint32 start = 0;
        quint32 length = 0;
    };
    static constexpr quint32 copied = 0xFFFF'FFFF;

    void append(qint32 lineIndex, View line, View key);

    Source m_source;
    qint32 m_count = 0;
    std::vector<KeyBounds> m_bounds;   ///< empty when every key is its line
    std::vector<qint32> m_lineIndices; ///< empty when no line may be skipped
    std::vector<qint32> m_hashes;      ///< the bits of each
    std::basic_string<Unit> m_copies;
    std::vector<size_t> m_copyStarts{0};
};

template <typename Source>
typename NormalizedSide<Source>::View NormalizedSide<Source>::key(qint32 index) const noexcept
{
    if (m_bounds.empty())
        return m_source.line(index);
    const KeyBounds bounds = m_bounds[size_t(index)];
    if (bounds.length != copied)
        return {m_source.unitAt(lineIndex(index), bounds.start), bounds.length};
    const size_t begin = m_copyStarts[bounds.start];
    return View(m_copies).substr(begin, m_copyStarts[bounds.start + 1] - begin);
}

extern template class NormalizedSide<Utf8Lines>;
extern template class NormalizedSide<Utf16Lines>;

} // namespace velmora
