#include "merge/engine/line_numbers.h"

#include "core/crew.h"
#include "merge/engine/line_range.h"
#include "text/engine/cancel_poll.h"
#include "text/engine/line_hash.h"
#include "text/engine/prefetch.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace velmora {

namespace {

constexpr qint32 none = -1;
/// Reading fewer takes less time than starting a thread for it.
constexpr qsizetype bytesWorthAThread = 2 * 1024 * 1024;
/// Most steps wait for memory; asking some lines ahead overlaps these waits.
constexpr size_t linesAhead = 12;

/// A hash table from lines to their numbers, with linear probing. Grows: three versions have little more lines that
/// differ than one of them has lines.
class LineTable {
public:
    explicit LineTable(size_t expected) : m_slots(std::bit_ceil(expected + expected / 2 + 2))
    {
        m_firsts.reserve(expected + expected / 8);
    }

    void prefetchSlot(quint32 hash) const noexcept { prefetch(&m_slots[slotOf(hash)]); }

    qint32 numberOf(std::string_view line, quint32 hash)
    {
        size_t at = slotOf(hash);
        for (; m_slots[at].number != none; at = next(at)) {
            if (m_slots[at].hash == hash && m_firsts[size_t(m_slots[at].number)] == line)
                return m_slots[at].number;
        }
        const qint32 number = count();
        m_slots[at] = {hash, number};
        m_firsts.push_back(line);
        if (m_firsts.size() > m_slots.size() / 3 * 2)
            grow();
        return number;
    }

    [[nodiscard]] qint32 count() const noexcept { return qint32(m_firsts.size()); }

private:
    struct Slot {
        quint32 hash = 0;
        qint32 number = none;
    };

    [[nodiscard]] size_t slotOf(quint32 hash) const noexcept { return hash & (m_slots.size() - 1); }
    [[nodiscard]] size_t next(size_t slot) const noexcept { return (slot + 1) & (m_slots.size() - 1); }

    void grow()
    {
        std::vector<Slot> smaller(m_slots.size() * 2);
        smaller.swap(m_slots);
        for (const Slot &slot : smaller) {
            if (slot.number == none)
                continue;
            size_t at = slotOf(slot.hash);
            while (m_slots[at].number != none)
                at = next(at);
            m_slots[at] = slot;
        }
    }

    std::vector<Slot> m_slots;
    std::vector<std::string_view> m_firsts; ///< by number
};

std::string_view lineOf(const TextLines &text, qsizetype index, bool withEnd) noexcept
{
    return withEnd ? bytesOf(text, {index, 1}) : text.line(index);
}

/// Of every line of the three texts, which are read at the same time where that pays.
std::array<std::vector<qint32>, 3> hashes(const std::array<const TextLines *, 3> &texts, bool withEnds,
                                          const CancelFlag &cancel)
{
    const LineHash hash;
    std::array<std::vector<qint32>, 3> result;
    const bool isWorthIt = texts[0]->bytes().size() >= bytesWorthAThread;
    const int crew = isWorthIt ? std::min(crewSize(), int(texts.size())) : 1;
    runCrew(
        crew,
        [&](int worker) {
            CancelPoll poll(cancel);
            for (auto side = size_t(worker); side < texts.size(); side += size_t(crew)) {
                const TextLines &text = *texts[side];
                result[side].reserve(size_t(text.count()));
                for (qsizetype index = 0; index < text.count() && !poll.stop(16); ++index)
                    result[side].push_back(qint32(hash(lineOf(text, index, withEnds))));
            }
        },
        [] {});
    return result;
}

} // namespace

NumberedTexts numberLines(const std::array<const TextLines *, 3> &texts, bool withEnds, const CancelFlag &cancel)
{
    NumberedTexts result{hashes(texts, withEnds, cancel)};
    size_t lines = 0;
    for (const std::vector<qint32> &numbers : result.texts)
        lines = std::max(lines, numbers.size());
    CancelPoll poll(cancel);
    LineTable table(lines);
    for (size_t side = 0; side < texts.size(); ++side) {
        std::vector<qint32> &numbers = result.texts[side];
        for (size_t index = 0; index < numbers.size() && !poll.stop(32); ++index) {
            if (index + linesAhead < numbers.size())
                table.prefetchSlot(quint32(numbers[index + linesAhead]));
            numbers[index] = table.numberOf(lineOf(*texts[side], qsizetype(index), withEnds), quint32(numbers[index]));
        }
    }
    result.count = table.count();
    return result;
}

} // namespace velmora
