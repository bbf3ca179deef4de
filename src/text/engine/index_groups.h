#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace velmora {

/// The indices of a list of small numbers, grouped by number. Linear in the list and the greatest number.
class IndexGroups {
public:
    /// Precondition: 0 <= values[k] <= greatest.
    IndexGroups(std::span<const qint32> values, qint32 greatest)
        : m_starts(size_t(greatest) + 2, 0), m_indices(values.size())
    {
        for (const qint32 value : values)
            ++m_starts[size_t(value) + 1];
        for (size_t value = 1; value < m_starts.size(); ++value)
            m_starts[value] += m_starts[value - 1];
        std::vector<qint32> next(m_starts.begin(), m_starts.end() - 1);
        for (size_t k = 0; k < values.size(); ++k)
            m_indices[size_t(next[size_t(values[k])]++)] = qint32(k);
    }

    /// The indices of the numbers that equal `value`, rising.
    [[nodiscard]] std::span<const qint32> of(qint32 value) const noexcept
    {
        const auto begin = size_t(m_starts[size_t(value)]);
        return std::span(m_indices).subspan(begin, size_t(m_starts[size_t(value) + 1]) - begin);
    }

private:
    std::vector<qint32> m_starts;
    std::vector<qint32> m_indices;
};

} // namespace velmora
