#include "text/engine/lcs_table.h"

#include "text/engine/sequence_matcher.h"
#include "text/engine/value_numbers.h"

#include <algorithm>

namespace velmora {

namespace {

/// For each row of the table, an element of `a`, the columns of `b` that equal it, as bits.
class EqualColumns {
public:
    EqualColumns(std::span<const qint32> a, std::span<const qint32> b) : m_words((b.size() + 63) / 64)
    {
        ValueNumbers numbers(a.size());
        m_rows.reserve(a.size());
        for (const qint32 value : a)
            m_rows.push_back(numbers.add(value));
        m_firstWord.assign(size_t(numbers.count()), none);
        for (size_t column = 0; column < b.size(); ++column) {
            const qint32 number = numbers.find(b[column]);
            if (number < 0)
                continue;
            size_t &first = m_firstWord[size_t(number)];
            if (first == none) {
                first = m_bits.size();
                m_bits.resize(m_bits.size() + m_words, 0);
            }
            m_bits[first + column / 64] |= quint64(1) << (column % 64);
        }
    }

    [[nodiscard]] size_t words() const noexcept { return m_words; }
    /// Null when no column equals.
    [[nodiscard]] const quint64 *ofRow(size_t row) const noexcept
    {
        const size_t first = m_firstWord[size_t(m_rows[row])];
        return first == none ? nullptr : m_bits.data() + first;
    }

private:
    static constexpr size_t none = ~size_t(0);

    size_t m_words;
    std::vector<qint32> m_rows;      ///< the number of each row's value
    std::vector<size_t> m_firstWord; ///< by number
    std::vector<quint64> m_bits;
};

/// Where the lengths of one row grow, a clear bit for each column at which they do.
void nextRow(const quint64 *above, const quint64 *equal, quint64 *row, size_t words) noexcept
{
    if (!equal) {
        std::copy(above, above + words, row);
        return;
    }
    quint64 carry = 0;
    for (size_t word = 0; word < words; ++word) {
        const quint64 both = above[word] & equal[word];
        const quint64 partial = above[word] + both;
        const quint64 sum = partial + carry;
        carry = quint64(partial < both) | quint64(sum < partial);
        row[word] = sum | (above[word] & ~equal[word]);
    }
}

} // namespace

std::vector<MatchPair> longestCommonSubsequence(std::span<const qint32> a, std::span<const qint32> b)
{
    if (a.empty() || b.empty())
        return {};
    const EqualColumns equal(a, b);
    const size_t words = equal.words();
    std::vector<quint64> rows((a.size() + 1) * words);
    std::fill_n(rows.begin(), words, ~quint64(0));
    for (size_t row = 0; row < a.size(); ++row)
        nextRow(rows.data() + row * words, equal.ofRow(row), rows.data() + (row + 1) * words, words);

    std::vector<MatchPair> pairs;
    size_t i = a.size();
    size_t j = b.size();
    while (i > 0 && j > 0) {
        if (a[i - 1] == b[j - 1]) {
            pairs.push_back({qint32(--i), qint32(--j)});
            continue;
        }
        // The length here is that of the cell to the left unless this column makes it grow; then it is that above.
        const bool grows = ((rows[i * words + (j - 1) / 64] >> ((j - 1) % 64)) & 1) == 0;
        if (grows)
            --i;
        else
            --j;
    }
    std::reverse(pairs.begin(), pairs.end());
    return pairs;
}

} // namespace velmora
