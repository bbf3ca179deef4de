#include "merge/engine/line_changes.h"

#include "merge/engine/change_slides.h"
#include "merge/engine/shortest_edit.h"

#include <algorithm>

namespace velmora {

namespace {

/// How often a line must stand in the other text to count as frequent: about the root of this text's length.
constexpr qint32 mostForFrequent = 1024;
/// A frequent line is left out where, this far around it, fewer than one in so many lines that may be left out are
/// frequent ones.
constexpr qsizetype linesAround = 100;
constexpr qsizetype frequentShare = 4;

enum class Counterparts : quint8 { None, Some, Frequent };

/// One text with what its search goes by.
struct Candidates {
    std::vector<qint32> lines; ///< their numbers
    std::vector<qint32> places;
};

qint32 frequentFrom(size_t lines) noexcept
{
    qint32 root = 1;
    for (; lines > 0; lines >>= 2)
        root *= 2;
    return std::min(root, mostForFrequent);
}

std::vector<qint32> occurrences(std::span<const qint32> lines, qint32 numbers)
{
    std::vector<qint32> counts(static_cast<size_t>(numbers));
    for (const qint32 line : lines)
        ++counts[size_t(line)];
    return counts;
}

/// How many lines to one side of a frequent one, up to the first with some counterparts, have none, and how many of
/// them are frequent themselves.
struct Surroundings {
    qsizetype without = 0;
    qsizetype frequent = 0;

    template <typename Iterator>
    static Surroundings of(Iterator from, Iterator to)
    {
        Surroundings found;
        for (; from != to && *from != Counterparts::Some; ++from)
            ++(*from == Counterparts::None ? found.without : found.frequent);
        return found;
    }
};

bool isAmongNew(const std::vector<Counterparts> &kinds, qsizetype at)
{
    const auto here = kinds.begin() + at;
    const auto begin = kinds.begin() + std::max<qsizetype>(at - linesAround, 0);
    const auto end = kinds.begin() + std::min<qsizetype>(at + linesAround + 1, qsizetype(kinds.size()));
    const auto above = Surroundings::of(std::make_reverse_iterator(here), std::make_reverse_iterator(begin));
    if (above.without == 0)
        return false;
    const auto below = Surroundings::of(here + 1, end);
    if (below.without == 0)
        return false;
    // Counted with itself on either side.
    const qsizetype frequent = above.frequent + below.frequent + 2;
    return frequent * frequentShare < frequent + above.without + below.without;
}

/// How often the other text has each of these lines.
std::vector<Counterparts> kindsOf(std::span<const qint32> lines, const std::vector<qint32> &othersOccurrences,
                                  qint32 frequent)
{
    std::vector<Counterparts> kinds(lines.size());
    for (size_t at = 0; at < lines.size(); ++at) {
        const qint32 count = othersOccurrences[size_t(lines[at])];
        kinds[at] = count == 0 ? Counterparts::None : count < frequent ? Counterparts::Some : Counterparts::Frequent;
    }
    return kinds;
}

/// Drops what has no counterpart, and those frequent lines that stand among such.
Candidates candidates(std::span<const qint32> lines, qsizetype first, qsizetype end,
                      const std::vector<qint32> &othersOccurrences, CancelPoll &poll)
{
    const qint32 frequent = frequentFrom(lines.size());
    const std::span<const qint32> part = lines.subspan(size_t(first), size_t(end - first));
    Candidates result{std::vector<qint32>(part.size()), std::vector<qint32>(part.size())};
    std::vector<Counterparts> kinds; // made when there is a frequent line; many texts have none
    size_t taken = 0;
    for (size_t at = 0; at < part.size() && !poll.stop(4); ++at) {
        // Written first and counted afterwards: changed lines stand where no processor foretells them.
        result.lines[taken] = part[at];
        result.places[taken] = qint32(size_t(first) + at);
        const qint32 count = othersOccurrences[size_t(part[at])];
        taken += count > 0;
        if (count < frequent)
            continue;
        if (kinds.empty())
            kinds = kindsOf(part, othersOccurrences, frequent);
        taken -= isAmongNew(kinds, qsizetype(at));
    }
    result.lines.resize(taken);
    result.places.resize(taken);
    return result;
}

/// Marks of the whole text: all of [first, end) but the candidates that have found a partner.
std::vector<quint8> marksOf(size_t lines, qsizetype first, qsizetype end, const Candidates &candidates,
                            const std::vector<quint8> &unpaired)
{
    std::vector<quint8> marks(lines);
    std::fill(marks.begin() + first, marks.begin() + end, quint8(1));
    for (size_t index = 0; index < candidates.places.size(); ++index)
        marks[size_t(candidates.places[index])] = unpaired[index];
    return marks;
}

/// The first line from `from` on with this mark, or the end.
size_t nextOf(quint8 mark, const std::vector<quint8> &marks, size_t from)
{
    return size_t(std::find(marks.begin() + qsizetype(from), marks.end(), mark) - marks.begin());
}

/// The lines of each text that are not marked are pairs, and as many on both sides.
std::vector<ChangedLines> changesOf(const EditMarks &marks)
{
    std::vector<ChangedLines> changes;
    size_t i = nextOf(1, marks.a, 0);
    size_t j = nextOf(1, marks.b, 0);
    size_t iEnd = 0;
    size_t jEnd = 0;
    while (i < marks.a.size() || j < marks.b.size()) {
        const size_t pairs = std::min(i - iEnd, j - jEnd);
        const size_t iFirst = iEnd + pairs;
        const size_t jFirst = jEnd + pairs;
        iEnd = i == iFirst ? nextOf(0, marks.a, i) : iFirst;
        jEnd = j == jFirst ? nextOf(0, marks.b, j) : jFirst;
        changes.push_back(
            {{qsizetype(iFirst), qsizetype(iEnd - iFirst)}, {qsizetype(jFirst), qsizetype(jEnd - jFirst)}});
        // The mark behind these lines is searched for once, however many changes of the other side come before it.
        i = i == iFirst ? nextOf(1, marks.a, iEnd) : i;
        j = j == jFirst ? nextOf(1, marks.b, jEnd) : j;
    }
    return changes;
}

} // namespace

std::vector<ChangedLines> lineChanges(std::span<const qint32> base, std::span<const qint32> other, qint32 numbers,
                                      CancelPoll &poll)
{
    const auto shorter = qsizetype(std::min(base.size(), other.size()));
    const qsizetype prefix = std::mismatch(base.begin(), base.begin() + shorter, other.begin()).first - base.begin();
    const qsizetype suffix =
        std::mismatch(base.rbegin(), base.rbegin() + (shorter - prefix), other.rbegin()).first - base.rbegin();
    const qsizetype baseEnd = qsizetype(base.size()) - suffix;
    const qsizetype otherEnd = qsizetype(other.size()) - suffix;
    if (prefix == baseEnd && prefix == otherEnd)
        return {};

    const Candidates ofBase = candidates(base, prefix, baseEnd, occurrences(other, numbers), poll);
    const Candidates ofOther = candidates(other, prefix, otherEnd, occurrences(base, numbers), poll);
    const EditMarks found = shortestEdit(ofBase.lines, ofOther.lines, poll);
    if (poll.stopped())
        return {};
    EditMarks marks{marksOf(base.size(), prefix, baseEnd, ofBase, found.a),
                    marksOf(other.size(), prefix, otherEnd, ofOther, found.b)};
    slideChanges(base, marks.a, marks.b, poll);
    slideChanges(other, marks.b, marks.a, poll);
    return poll.stopped() ? std::vector<ChangedLines>() : changesOf(marks);
}

} // namespace velmora
