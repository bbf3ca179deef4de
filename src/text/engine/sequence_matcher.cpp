#include "text/engine/sequence_matcher.h"

#include "text/engine/block_matcher.h"
#include "text/engine/lcs_table.h"
#include "text/engine/value_numbers.h"

#include <algorithm>

namespace velmora {

namespace {

/// Values this small index tables whatever the length of the sequences; UTF-16 units are.
constexpr qint32 smallAlphabet = 0x10000;

/// One more than the greatest value of both sequences; -1 when there are values below 0.
qint64 alphabetOf(std::span<const qint32> a, std::span<const qint32> b)
{
    qint32 greatest = 0;
    qint32 least = 0;
    for (const std::span<const qint32> sequence : {a, b}) {
        for (const qint32 value : sequence) {
            greatest = std::max(greatest, value);
            least = std::min(least, value);
        }
    }
    return least < 0 ? -1 : qint64(greatest) + 1;
}

std::vector<qint32> numbered(std::span<const qint32> sequence, ValueNumbers &numbers)
{
    std::vector<qint32> result;
    result.reserve(sequence.size());
    for (const qint32 value : sequence)
        result.push_back(numbers.add(value));
    return result;
}

std::vector<MatchBlock> matchedByBlocks(const MatchInput &input, const MatchTuning &tuning, const CancelFlag &cancel,
                                        const ElementsMatched &elementsMatched)
{
    BlockChain chain(qint32(input.a.size()));
    CancelPoll poll(cancel, [&] {
        if (elementsMatched)
            elementsMatched(chain.matched());
    });
    matchBlocks(input, tuning, chain, poll);
    std::vector<MatchBlock> runs;
    if (!poll.stopped())
        chain.forEachBlock([&runs](const MatchBlock &block) { runs.push_back(block); });
    return runs;
}

std::vector<MatchBlock> joined(const std::vector<MatchPair> &pairs)
{
    std::vector<MatchBlock> runs;
    for (const MatchPair &pair : pairs) {
        if (!runs.empty() && pair.i == runs.back().a + runs.back().length &&
            pair.j == runs.back().b + runs.back().length)
            ++runs.back().length;
        else
            runs.push_back({pair.i, pair.j, 1});
    }
    return runs;
}

} // namespace

std::vector<MatchPair> matchSequences(std::span<const qint32> a, std::span<const qint32> b, qint64 tableLimit,
                                      const CancelFlag &cancel)
{
    std::vector<MatchPair> pairs;
    for (const MatchBlock &run : matchedRuns(a, b, tableLimit, defaultMatchTuning(), cancel)) {
        for (qint32 k = 0; k < run.length; ++k)
            pairs.push_back({run.a + k, run.b + k});
    }
    return pairs;
}

std::vector<MatchBlock> matchedRuns(std::span<const qint32> a, std::span<const qint32> b, qint64 tableLimit,
                                    const MatchTuning &tuning, const CancelFlag &cancel,
                                    const ElementsMatched &elementsMatched)
{
    if (a.empty() || b.empty())
        return {};
    if (qint64(a.size()) * qint64(b.size()) <= tableLimit)
        return joined(longestCommonSubsequence(a, b));

    const size_t total = a.size() + b.size();
    const qint64 alphabet = alphabetOf(a, b);
    if (alphabet >= 0 && alphabet <= std::max<qint64>(smallAlphabet, qint64(total)))
        return matchedByBlocks({a, b, qint32(alphabet)}, tuning, cancel, elementsMatched);
    ValueNumbers numbers(total);
    const std::vector<qint32> first = numbered(a, numbers);
    const std::vector<qint32> second = numbered(b, numbers);
    return matchedByBlocks({first, second, numbers.count()}, tuning, cancel, elementsMatched);
}

} // namespace velmora
