#pragma once

#include <QtGlobal>

#include <algorithm>

namespace velmora {

/// Which of a counted number of differences is the current one: from 0 on, -1 while none was stepped to. Stepping stops
/// at the first and the last.
class DifferenceIndex {
public:
    /// Takes up a new result: none of its `count` differences is current.
    void reset(qsizetype count) noexcept
    {
        m_count = count;
        m_current = -1;
    }

    [[nodiscard]] qsizetype count() const noexcept { return m_count; }
    [[nodiscard]] qsizetype current() const noexcept { return m_current; }

    /// Steps on and returns the current difference; -1 when there are none.
    qsizetype next() noexcept { return m_current = std::min(m_current + 1, m_count - 1); }
    /// Steps back, from none to the first one; -1 when there are none.
    qsizetype previous() noexcept { return m_current = m_count == 0 ? -1 : std::max(m_current - 1, qsizetype(0)); }
    /// Makes `difference` the current one.
    void set(qsizetype difference) noexcept { m_current = std::clamp(difference, qsizetype(-1), m_count - 1); }

private:
    qsizetype m_count = 0;
    qsizetype m_current = -1;
};

} // namespace velmora
