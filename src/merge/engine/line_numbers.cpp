#include "merge/engine/line_numbers.h"

#include "core/crew.h"
#include "merge/engine/line_range.h"
#include "text/engine/cancel_poll.h"
#include "text/engine/line_hash.h"
#include "text/engine/prefetch.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

namespace {

constexpr qint32 none = -1;
/// Reading fewer takes less time than starting a thread for it.
constexpr qsizetype bytesWorthAThread = 2 * 1024 * 1024;
/// Unchanged lines are compared so many at once: much fewer than stand between two changes of most versions.
constexpr qsizetype linesAtOnce = 16;
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

    /// `none` for a line that has no number yet.
    [[nodiscard]] qint32 find(std::string_view line, quint32 hash) const { return m_slots[slotFor(line, hash)].number; }

    qint32 numberOf(std::string_view line, quint32 hash)
    {
        const size_t at = slotFor(line, hash);
        if (m_slots[at].number != none)
            return m_slots[at].number;
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

    /// The slot that has the line, or the one that it goes to.
    [[nodiscard]] size_t slotFor(std::string_view line, quint32 hash) const
    {
        size_t at = slotOf(hash);
        while (m_slots[at].number != none && (m_slots[at].hash != hash || m_firsts[size_t(m_slots[at].number)] != line))
            at = next(at);
        return at;
    }

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

/// Reads the lines of a text by index.
struct LineReader {
    const TextLines &text;
    bool withEnds;

    [[nodiscard]] qsizetype count() const noexcept { return text.count(); }
    [[nodiscard]] std::string_view operator[](qsizetype index) const noexcept
    {
        return withEnds ? bytesOf(text, {index, 1}) : text.line(index);
    }
};

/// Whether `linesAtOnce` lines of the two texts from these on are there and the same, ends included.
bool areSame(const TextLines &one, qsizetype at, const TextLines &other, qsizetype otherAt)
{
    if (at + linesAtOnce > one.count() || otherAt + linesAtOnce > other.count())
        return false;
    if (bytesOf(one, {at, linesAtOnce}) != bytesOf(other, {otherAt, linesAtOnce}))
        return false;
    // A line of a text that was put together may hold line feeds: the same bytes may be other lines.
    bool same = true;
    for (qsizetype line = 0; line < linesAtOnce; ++line)
        same &= bytesOf(one, {at + line, 1}).size() == bytesOf(other, {otherAt + line, 1}).size();
    return same;
}

/// Of every line of the base. Where it pays, each worker reads a part.
std::vector<qint32> hashes(const LineReader &base, const LineHash &hash, int crew, const CancelFlag &cancel)
{
    std::vector<qint32> result(size_t(base.count()));
    runCrew(
        crew,
        [&](int worker) {
            CancelPoll poll(cancel);
            const qsizetype end = base.count() * (worker + 1) / crew;
            for (qsizetype index = base.count() * worker / crew; index < end && !poll.stop(16); ++index)
                result[size_t(index)] = qint32(hash(base[index]));
        },
        [] {});
    return result;
}

/// Gives the lines of the base, of which `lines` has the hashes, their numbers. Returns the first line of each number.
std::vector<qint32> numberBase(const LineReader &base, std::vector<qint32> &lines, LineTable &table, CancelPoll &poll)
{
    std::vector<qint32> firsts;
    firsts.reserve(lines.size());
    for (size_t index = 0; index < lines.size() && !poll.stop(32); ++index) {
        if (index + linesAhead < lines.size())
            table.prefetchSlot(quint32(lines[index + linesAhead]));
        lines[index] = table.numberOf(base[qsizetype(index)], quint32(lines[index]));
        if (lines[index] == qint32(firsts.size()))
            firsts.push_back(qint32(index));
    }
    return firsts;
}

/// A line that the base does not have.
struct NewLine {
    qint32 index = 0;
    quint32 hash = 0;
};

int crewFor(const TextLines &text)
{
    return text.bytes().size() >= bytesWorthAThread ? crewSize() : 1;
}

} // namespace

struct LineNumbering::Base {
    Base(const TextLines &base, bool endsCount) : text(base), withEnds(endsCount), table(size_t(base.count())) {}

    [[nodiscard]] LineReader lines() const noexcept { return {text, withEnds}; }
    /// Gives those lines of a version their numbers that the base has, and returns the others.
    [[nodiscard]] std::vector<NewLine> follow(const LineReader &version, std::vector<qint32> &versionNumbers,
                                              CancelPoll &poll) const;

    TextLines text;
    bool withEnds;
    LineHash hash;
    LineTable table;
    std::vector<qint32> numbers;
    std::vector<qint32> firsts; ///< the first line of each number
    bool isWhole = false;
};

/// Most lines are those of the base in their order. So some are first compared with those that are next there, and
/// then each by itself, which takes no hash and no search.
std::vector<NewLine> LineNumbering::Base::follow(const LineReader &version, std::vector<qint32> &versionNumbers,
                                                 CancelPoll &poll) const
{
    std::vector<NewLine> others;
    versionNumbers.assign(size_t(version.count()), none);
    qsizetype next = 0;
    qsizetype nextAtOnce = 0;
    for (qsizetype index = 0; index < version.count() && !poll.stop(32); ++index) {
        if (index >= nextAtOnce) {
            if (areSame(version.text, index, text, next)) {
                std::copy_n(numbers.begin() + next, linesAtOnce, versionNumbers.begin() + index);
                next += linesAtOnce;
                index += linesAtOnce - 1;
                continue;
            }
            nextAtOnce = index + linesAtOnce;
        }
        const std::string_view line = version[index];
        if (next < text.count() && lines()[next] == line) {
            versionNumbers[size_t(index)] = numbers[size_t(next++)];
            continue;
        }
        const quint32 lineHash = hash(line);
        const qint32 number = table.find(line, lineHash);
        versionNumbers[size_t(index)] = number;
        if (number == none)
            others.push_back({qint32(index), lineHash});
        else if (firsts[size_t(number)] >= next)
            next = firsts[size_t(number)] + 1;
    }
    return others;
}

LineNumbering::LineNumbering(const TextLines &base, bool withEnds, const CancelFlag &cancel)
    : m_base(std::make_unique<Base>(base, withEnds))
{
    CancelPoll poll(cancel);
    m_base->numbers = hashes(m_base->lines(), m_base->hash, crewFor(base), cancel);
    m_base->firsts = numberBase(m_base->lines(), m_base->numbers, m_base->table, poll);
    m_base->isWhole = !poll.look();
}

LineNumbering::LineNumbering(LineNumbering &&) noexcept = default;
LineNumbering &LineNumbering::operator=(LineNumbering &&) noexcept = default;
LineNumbering::~LineNumbering() = default;

NumberedTexts LineNumbering::with(const TextLines &left, const TextLines &right, const CancelFlag &cancel) &&
{
    const std::unique_ptr<Base> base = std::move(m_base);
    if (!base->isWhole)
        return {};
    const std::array<LineReader, 2> versions{LineReader{left, base->withEnds}, LineReader{right, base->withEnds}};
    std::array<std::vector<qint32>, 2> numbers;
    std::array<std::vector<NewLine>, 2> others;
    const int followers = std::min(crewFor(base->text), int(versions.size()));
    runCrew(
        followers,
        [&](int worker) {
            CancelPoll poll(cancel);
            for (auto version = size_t(worker); version < versions.size(); version += size_t(followers))
                others[version] = base->follow(versions[version], numbers[version], poll);
        },
        [] {});
    CancelPoll poll(cancel);
    for (size_t version = 0; version < versions.size(); ++version) {
        for (const NewLine &line : others[version]) {
            if (poll.stop(32))
                return {};
            numbers[version][size_t(line.index)] = base->table.numberOf(versions[version][line.index], line.hash);
        }
    }
    return {{std::move(base->numbers), std::move(numbers[0]), std::move(numbers[1])}, base->table.count()};
}

} // namespace velmora
