#include "text/engine/normalized_side.h"

#include <functional>

namespace velmora {

namespace {

constexpr qint32 linesPerReport = 4096;

/// What a line costs to read, in the steps of a CancelPoll.
template <typename Unit>
qint64 stepsOf(std::basic_string_view<Unit> line) noexcept
{
    return 16 + qint64(line.size());
}

} // namespace

template <typename Source>
NormalizedSide<Source>::NormalizedSide(const Source &source, const LineHash &hash, const LinesRead &linesRead,
                                       CancelPoll &poll)
    : m_source(source), m_count(source.count())
{
    m_hashes.reserve(size_t(m_count));
    for (qint32 index = 0; index < m_count; ++index) {
        const View line = m_source.line(index);
        m_hashes.push_back(qint32(hash(line)));
        if (index % linesPerReport == 0)
            linesRead(linesPerReport);
        if (poll.stop(stepsOf(line)))
            return;
    }
}

template <typename Source>
NormalizedSide<Source>::NormalizedSide(const Source &source, const NormalizeRules &rules, const LineHash &hash,
                                       const LinesRead &linesRead, CancelPoll &poll)
    : m_source(source)
{
    LineNormalizer<Unit> normalizer(rules.keyRules);
    const qint32 lines = m_source.count();
    m_bounds.reserve(size_t(lines));
    m_hashes.reserve(size_t(lines));
    for (qint32 index = 0; index < lines; ++index) {
        const View line = m_source.line(index);
        if (index % linesPerReport == 0)
            linesRead(linesPerReport);
        if (poll.stop(stepsOf(line)))
            return;
        if (rules.skipBlankLines) {
            if (isBlank(line))
                continue;
            m_lineIndices.push_back(index);
        }
        const bool unimportant = !rules.unimportant.empty() && rules.unimportant[size_t(index)];
        const View key = unimportant ? View() : normalizer.key(withoutReturn(line));
        m_hashes.push_back(qint32(hash(key)));
        append(index, line, key);
    }
}

template <typename Source>
void NormalizedSide<Source>::append(qint32 lineIndex, View line, View key)
{
    ++m_count;
    const auto notBehind = std::less_equal<const Unit *>();
    if (key.empty()) {
        m_bounds.push_back({0, 0});
    } else if (notBehind(line.data(), key.data()) && notBehind(key.data(), line.data() + line.size())) {
        m_bounds.push_back({m_source.placeOf(lineIndex, key.data()), quint32(key.size())});
    } else {
        m_bounds.push_back({quint32(m_copyStarts.size() - 1), copied});
        m_copies += key;
        m_copyStarts.push_back(m_copies.size());
    }
}

template class NormalizedSide<Utf8Lines>;
template class NormalizedSide<Utf16Lines>;

} // namespace velmora
