#include "text/engine/suffix_array.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint32 none = -1;

/// Sorts the suffixes of one text; the shorter text of the leftmost ones is sorted by another object of this class.
///
/// A suffix is small when it is smaller than the one that starts an element later, else large; the last one is large. A
/// small suffix after a large one is leftmost.
class InducedSorter {
public:
    InducedSorter(std::span<const qint32> text, qint32 alphabet, CancelPoll &poll)
        : m_text(text),
          m_size(qint32(text.size())),
          m_poll(poll),
          m_small(text.size(), 0),
          m_largeStart(size_t(alphabet) + 1, 0),
          m_smallStart(size_t(alphabet) + 1, 0),
          m_order(text.size(), none)
    {
        classify();
    }

    std::vector<qint32> sorted()
    {
        if (m_size == 0)
            return {};
        std::vector<qint32> leftmost = leftmostInTextOrder();
        induce(leftmost);
        if (leftmost.size() > 1 && !m_poll.look()) {
            sortLeftmost(leftmost);
            if (!m_poll.look())
                induce(leftmost);
        }
        return std::move(m_order);
    }

private:
    [[nodiscard]] qint32 at(qint32 position) const noexcept { return m_text[size_t(position)]; }
    [[nodiscard]] bool isSmall(qint32 position) const noexcept { return m_small[size_t(position)] != 0; }
    [[nodiscard]] bool isLeftmost(qint32 position) const noexcept
    {
        return position > 0 && isSmall(position) && !isSmall(position - 1);
    }

    void classify()
    {
        for (qint32 p = m_size - 1; p-- > 0;)
            m_small[size_t(p)] = at(p) < at(p + 1) || (at(p) == at(p + 1) && isSmall(p + 1));
        // Of the suffixes that begin with one value the large ones come first.
        for (qint32 p = 0; p < m_size; ++p)
            ++(isSmall(p) ? m_largeStart[size_t(at(p)) + 1] : m_smallStart[size_t(at(p))]);
        for (size_t value = 0; value < m_smallStart.size(); ++value) {
            m_smallStart[value] += m_largeStart[value];
            if (value + 1 < m_largeStart.size())
                m_largeStart[value + 1] += m_smallStart[value];
        }
    }

    std::vector<qint32> leftmostInTextOrder() const
    {
        std::vector<qint32> leftmost;
        for (qint32 p = 1; p < m_size; ++p) {
            if (isLeftmost(p))
                leftmost.push_back(p);
        }
        return leftmost;
    }

    /// Orders all suffixes, given the order of the leftmost ones; given them in another order, orders all by the text
    /// up to the next leftmost one only.
    void induce(const std::vector<qint32> &leftmost)
    {
        std::fill(m_order.begin(), m_order.end(), none);
        std::vector<qint32> next = m_smallStart;
        for (const qint32 p : leftmost)
            m_order[size_t(next[size_t(at(p))]++)] = p;

        next = m_largeStart;
        m_order[size_t(next[size_t(at(m_size - 1))]++)] = m_size - 1;
        for (size_t place = 0; place < m_order.size() && !m_poll.stop(4); ++place) {
            const qint32 p = m_order[place];
            if (p > 0 && !isSmall(p - 1))
                m_order[size_t(next[size_t(at(p - 1))]++)] = p - 1;
        }

        next = m_largeStart;
        for (size_t place = m_order.size(); place-- > 0 && !m_poll.stop(4);) {
            const qint32 p = m_order[place];
            if (p > 0 && isSmall(p - 1))
                m_order[size_t(--next[size_t(at(p - 1)) + 1])] = p - 1;
        }
    }

    /// Brings the leftmost suffixes into order. Precondition: they are in the order of the text, and m_order holds all
    /// suffixes as induced from that.
    void sortLeftmost(std::vector<qint32> &leftmost)
    {
        std::vector<qint32> number(size_t(m_size) + 1, none);
        for (size_t k = 0; k < leftmost.size(); ++k)
            number[size_t(leftmost[k])] = qint32(k);

        std::vector<qint32> names(leftmost.size());
        qint32 name = 0;
        qint32 before = none;
        for (const qint32 p : m_order) {
            if (p < 0 || number[size_t(p)] == none)
                continue;
            if (before != none && !samePiece(before, p, leftmost, number))
                ++name;
            names[size_t(number[size_t(p)])] = name;
            before = p;
        }
        const std::vector<qint32> ranks = InducedSorter(names, name + 1, m_poll).sorted();
        std::vector<qint32> inOrder;
        inOrder.reserve(leftmost.size());
        for (const qint32 rank : ranks)
            inOrder.push_back(rank < 0 ? leftmost.front() : leftmost[size_t(rank)]);
        leftmost = std::move(inOrder);
    }

    /// Whether the text from p up to the next leftmost suffix, that one's first element included, is that from q.
    [[nodiscard]] bool samePiece(qint32 p, qint32 q, const std::vector<qint32> &leftmost,
                                 const std::vector<qint32> &number) const noexcept
    {
        const auto endOf = [&](qint32 start) {
            const auto following = size_t(number[size_t(start)]) + 1;
            return following < leftmost.size() ? leftmost[following] : m_size;
        };
        const qint32 length = endOf(p) - p;
        if (endOf(q) - q != length || p + length == m_size || q + length == m_size)
            return false;
        return std::equal(m_text.begin() + p, m_text.begin() + p + length + 1, m_text.begin() + q);
    }

    std::span<const qint32> m_text;
    qint32 m_size;
    CancelPoll &m_poll;
    std::vector<quint8> m_small;
    /// For each value the place of the first large and of the first small suffix that begins with it; one entry more.
    std::vector<qint32> m_largeStart;
    std::vector<qint32> m_smallStart;
    std::vector<qint32> m_order;
};

} // namespace

std::vector<qint32> suffixArray(std::span<const qint32> text, qint32 alphabet, CancelPoll &poll)
{
    return InducedSorter(text, alphabet, poll).sorted();
}

std::vector<qint32> commonPrefixes(std::span<const qint32> text, std::span<const qint32> suffixes, CancelPoll &poll)
{
    const auto size = qint32(text.size());
    // For each suffix first the one before it in the order, then the length in common with that.
    std::vector<qint32> bySuffix(text.size());
    for (size_t place = 0; place < suffixes.size(); ++place)
        bySuffix[size_t(suffixes[place])] = place == 0 ? none : suffixes[place - 1];
    qint32 common = 0;
    for (qint32 p = 0; p < size && !poll.stop(4); ++p) {
        const qint32 before = bySuffix[size_t(p)];
        if (before == none) {
            common = 0;
        } else {
            while (std::max(p, before) + common < size && text[size_t(p + common)] == text[size_t(before + common)])
                ++common;
        }
        bySuffix[size_t(p)] = common;
        common = std::max(common - 1, 0);
    }
    std::vector<qint32> prefixes(text.size());
    for (size_t place = 0; place < suffixes.size(); ++place)
        prefixes[place] = bySuffix[size_t(suffixes[place])];
    return prefixes;
}

} // namespace velmora
