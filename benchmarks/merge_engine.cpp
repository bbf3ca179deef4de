// What merging three texts costs beside comparing two of them, in one process.
//
//   benchmark_merge_engine BASE LEFT RIGHT     prints a table; the exit status is 1 when mergeThreeWay passes its bound

#include "merge/engine/chunk_merge.h"
#include "merge/engine/three_way_merge.h"
#include "platform/thread_end.h"
#include "settings/options/text_session_options.h"
#include "text/engine/line_diff_engine.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>

using namespace velmora;

namespace {

constexpr int rounds = 7;
constexpr double mostForThreeWay = 2.5;

TextLines linesOf(const char *path)
{
    QFile file(QString::fromLocal8Bit(path));
    return file.open(QIODevice::ReadOnly) ? TextLines::split(file.readAll()) : TextLines();
}

/// The least of so many runs, which take turns with the others so that a busy machine slows all alike.
class Best {
public:
    template <typename Work>
    void run(Work work)
    {
        QElapsedTimer timer;
        timer.start();
        work();
        m_milliseconds = std::min(m_milliseconds, double(timer.nsecsElapsed()) / 1e6);
    }
    [[nodiscard]] double milliseconds() const { return m_milliseconds; }

private:
    double m_milliseconds = 1e12;
};

} // namespace

int main(int argc, char *argv[])
{
    orderEndOfThreads();
    if (argc != 4) {
        std::fprintf(stderr, "three files are needed\n");
        return 2;
    }
    const TextLines base = linesOf(argv[1]);
    const TextLines left = linesOf(argv[2]);
    const TextLines right = linesOf(argv[3]);
    TextSessionOptions strict;
    strict.importantLeadingWhitespace = strict.importantEmbeddedWhitespace = true;
    strict.importantTrailingWhitespace = true;

    Best comparison;
    Best threeWay;
    Best chunks;
    Progress silent;
    qsizetype conflicts = 0;
    qsizetype count = 0;
    for (int round = 0; round < rounds; ++round) {
        comparison.run([&] { return compareTexts(base, left, strict, {}, silent).size(); });
        threeWay.run([&] { count = qsizetype(mergeThreeWay(base, left, right, {}, silent).lines.size()); });
        chunks.run([&] { conflicts = mergeChunks(base, left, right, {}, {}, silent).conflicts(); });
    }
    const double ratio = threeWay.milliseconds() / comparison.milliseconds();
    std::printf("%lld lines: comparison %.1f ms, mergeThreeWay %.1f ms (%.2f of it, at most %.1f; %lld lines), "
                "mergeChunks %.1f ms (%.2f of it; %lld conflicts)\n",
                static_cast<long long>(base.count()), comparison.milliseconds(), threeWay.milliseconds(), ratio,
                mostForThreeWay, static_cast<long long>(count), chunks.milliseconds(),
                chunks.milliseconds() / comparison.milliseconds(), static_cast<long long>(conflicts));
    return ratio <= mostForThreeWay ? 0 : 1;
}
