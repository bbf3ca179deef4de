#include "text/engine/side_reader.h"

#include "core/crew.h"
#include "text/engine/text_comparison.h"

#include <algorithm>
#include <atomic>

namespace velmora {

namespace {

/// Fewer lines are read before a second thread has started.
constexpr qint32 linesWorthAThread = 20000;

} // namespace

template <typename Source>
BothSides<Source> readSides(const Source &left, const Source &right, const NormalizeRules *leftRules,
                            const NormalizeRules *rightRules, const CancelFlag &cancel, Progress &progress)
{
    using Side = NormalizedSide<Source>;
    const LineHash hash;
    const qint64 total = qint64(left.count()) + right.count();
    std::atomic<qint64> linesRead = 0;
    const auto report = [&] { progress.report(ReadingLines, std::min(linesRead.load(), total), total); };

    const auto read = [&](const Source &source, const NormalizeRules *rules, bool reporting) {
        const auto count = [&, reporting](qint32 lines) {
            linesRead += lines;
            if (reporting)
                report();
        };
        CancelPoll poll(cancel);
        return rules ? Side(source, *rules, hash, count, poll) : Side(source, hash, count, poll);
    };

    std::optional<Side> leftSide;
    std::optional<Side> rightSide;
    std::atomic<int> nextSide = 0;
    const int threads = std::min(left.count(), right.count()) < linesWorthAThread ? 1 : std::min(crewSize(), 2);
    const auto work = [&](int worker) {
        // Only the calling thread may report.
        for (int side = nextSide++; side < 2; side = nextSide++) {
            if (side == 0)
                leftSide.emplace(read(left, leftRules, worker == 0));
            else
                rightSide.emplace(read(right, rightRules, worker == 0));
        }
    };
    runCrew(threads, work, report);
    return {std::move(*leftSide), std::move(*rightSide)};
}

template BothSides<Utf8Lines> readSides(const Utf8Lines &, const Utf8Lines &, const NormalizeRules *,
                                        const NormalizeRules *, const CancelFlag &, Progress &);
template BothSides<Utf16Lines> readSides(const Utf16Lines &, const Utf16Lines &, const NormalizeRules *,
                                         const NormalizeRules *, const CancelFlag &, Progress &);

} // namespace velmora
