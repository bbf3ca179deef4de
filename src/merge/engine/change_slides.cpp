#include "merge/engine/change_slides.h"

#include <algorithm>
#include <cstring>

namespace velmora {

namespace {

/// Walks over the runs of changed lines of one text. A run stands before each unchanged line and behind the last one;
/// most are empty. The runs of two texts between the same two pairs have the same number.
class RunCursor {
public:
    explicit RunCursor(const std::vector<quint8> &changed) : m_changed(changed) { extendDown(); }

    [[nodiscard]] bool isEmpty() const noexcept { return m_first == m_end; }
    [[nodiscard]] size_t first() const noexcept { return m_first; }
    [[nodiscard]] size_t end() const noexcept { return m_end; }

    /// How many lines behind the run are unchanged, of the next `most`.
    [[nodiscard]] size_t unchangedBehind(size_t most) const noexcept
    {
        const size_t length = std::min(most, m_changed.size() - m_end);
        const void *const change = length > 0 ? std::memchr(&m_changed[m_end], 1, length) : nullptr;
        return change ? size_t(static_cast<const quint8 *>(change) - &m_changed[m_end]) : length;
    }

    /// As `toNext`, so many times. Precondition: more lines than these are unchanged behind the run.
    void skip(size_t lines) noexcept { m_first = m_end += lines; }

    bool toNext() noexcept
    {
        if (m_end == m_changed.size())
            return false;
        m_first = ++m_end;
        extendDown();
        return true;
    }

    void toPrevious() noexcept
    {
        m_end = --m_first;
        extendUp();
    }

    /// Follows a run that was moved, and takes in a run that it has met.
    void moveTo(size_t first, size_t end) noexcept
    {
        m_first = first;
        m_end = end;
        extendUp();
        extendDown();
    }

private:
    void extendDown() noexcept
    {
        while (m_end < m_changed.size() && m_changed[m_end])
            ++m_end;
    }
    void extendUp() noexcept
    {
        while (m_first > 0 && m_changed[m_first - 1])
            --m_first;
    }

    const std::vector<quint8> &m_changed;
    size_t m_first = 0;
    size_t m_end = 0;
};

class Slider {
public:
    Slider(std::span<const qint32> lines, std::vector<quint8> &changed, const std::vector<quint8> &others)
        : m_lines(lines), m_changed(changed), m_run(changed), m_other(others)
    {}

    void slideAll(CancelPoll &poll)
    {
        do {
            if (!m_run.isEmpty())
                settle(poll);
            skipUnchanged();
            m_other.toNext();
        } while (m_run.toNext() && !poll.stop());
    }

private:
    /// Passes empty runs that both texts have. Looks no further than a step is worth: either text may change often.
    void skipUnchanged() noexcept
    {
        constexpr size_t most = 256;
        const size_t others = m_other.unchangedBehind(most);
        const size_t both = others > 1 ? m_run.unchangedBehind(others) : 0;
        if (both > 1) {
            m_run.skip(both - 1);
            m_other.skip(both - 1);
        }
    }

    bool slideUp() noexcept
    {
        const size_t first = m_run.first();
        const size_t end = m_run.end();
        if (first == 0 || m_lines[first - 1] != m_lines[end - 1])
            return false;
        m_changed[first - 1] = 1;
        m_changed[end - 1] = 0;
        m_run.moveTo(first - 1, end - 1);
        m_other.toPrevious();
        return true;
    }

    bool slideDown() noexcept
    {
        const size_t first = m_run.first();
        const size_t end = m_run.end();
        if (end == m_lines.size() || m_lines[first] != m_lines[end])
            return false;
        m_changed[first] = 0;
        m_changed[end] = 1;
        m_run.moveTo(first + 1, end + 1);
        m_other.toNext();
        return true;
    }

    void settle(CancelPoll &poll)
    {
        size_t length = 0;
        bool meets = false;
        // A run that has met another may go further than either could.
        do {
            length = m_run.end() - m_run.first();
            while (slideUp() && !poll.stop()) {
            }
            meets = !m_other.isEmpty();
            while (slideDown() && !poll.stop())
                meets = meets || !m_other.isEmpty();
        } while (m_run.end() - m_run.first() != length && !poll.stopped());
        while (meets && m_other.isEmpty() && slideUp()) {
        }
    }

    std::span<const qint32> m_lines;
    std::vector<quint8> &m_changed;
    RunCursor m_run;
    RunCursor m_other; ///< the run of the other text at the same place
};

} // namespace

void slideChanges(std::span<const qint32> lines, std::vector<quint8> &changed, const std::vector<quint8> &others,
                  CancelPoll &poll)
{
    Slider(lines, changed, others).slideAll(poll);
}

} // namespace velmora
