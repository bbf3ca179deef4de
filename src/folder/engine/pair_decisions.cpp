#include "folder/engine/pair_decisions.h"

#include "core/content_compare.h"
#include "core/crew.h"
#include "folder/engine/folder_engine.h"

namespace velmora {

namespace {

/// Below both of these a pair of threads costs more than it brings.
constexpr std::size_t pairsReadAlone = 8;
constexpr qint64 bytesReadAlone = 1024 * 1024;

bool isUndecided(const FolderDiffItem &item)
{
    return item.status == UndecidedFiles || item.status == UndecidedSpecial;
}

/// What a pair counts for in the progress: the bytes that its comparer counts, and one for opening it.
qint64 weight(const FolderDiffItem &item, CompareMethod method)
{
    const qint64 bytes =
        method == CompareMethod::Crc ? item.leftSize + item.rightSize : std::max(item.leftSize, item.rightSize);
    return bytes + 1;
}

} // namespace

bool timesMatch(qint64 leftMs, qint64 rightMs, qint32 toleranceSec)
{
    return toleranceSec > 0 ? std::abs((rightMs - leftMs) / 1000) <= toleranceSec : leftMs == rightMs;
}

std::optional<FolderDiffStatus> statusByAttributes(CompareMethod method, qint64 leftSize, qint64 rightSize,
                                                   qint64 leftMs, qint64 rightMs, qint32 toleranceSec)
{
    if (method == CompareMethod::Crc)
        return std::nullopt;
    if (leftSize != rightSize)
        return FolderDiffStatus::Different;
    if (method != CompareMethod::Binary && timesMatch(leftMs, rightMs, toleranceSec))
        return FolderDiffStatus::Same;
    return std::nullopt;
}

bool sameContent(ContentComparer &comparer, CompareMethod method, const QString &left, const QString &right,
                 OpenHint hint)
{
    switch (method) {
    case CompareMethod::Crc:
        return comparer.sameByCrc32(left, right, hint);
    case CompareMethod::Binary:
        return comparer.sameByBlocks(left, right, hint);
    case CompareMethod::Rules:
        break;
    }
    return comparer.sameByDigest(left, right, hint);
}

void decidePairs(QList<FolderDiffItem> &items, CompareMethod method, const FileAccess &files, const CancelFlag &cancel,
                 int threads, const FolderRunReport &report)
{
    std::vector<qint32> pairs;
    qint64 total = 0;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (isUndecided(items.at(i))) {
            pairs.push_back(qint32(i));
            total += weight(items.at(i), method);
        }
    }
    if (pairs.empty() || cancel.isCancelled())
        return;

    FolderDiffItem *const data = items.data();
    SlowDeviceGate gate;
    std::atomic<std::size_t> nextPair{0};
    std::atomic<qint64> done{0};
    const auto tell = [&](const QString &path) {
        if (report.progress)
            report.progress->report(int(FolderPhase::Comparing), std::min(done.load(), total), total, path);
    };
    QList<FolderProblem> problems;
    std::mutex problemsMutex;
    const auto work = [&](int worker) {
        ContentComparer comparer(files, cancel, &gate);
        comparer.setFailureListener([&](const QString &path) {
            const std::lock_guard lock(problemsMutex);
            problems.append({FolderProblem::Kind::UnreadableFile, path});
        });
        for (std::size_t n = nextPair++; n < pairs.size() && !cancel.isCancelled(); n = nextPair++) {
            FolderDiffItem &item = data[pairs[n]];
            qint64 counted = 0;
            comparer.setBytesListener([&](qint64 bytes) {
                counted += bytes;
                done += bytes;
                if (worker == 0)
                    tell(item.leftPath);
            });
            if (worker == 0)
                tell(item.leftPath);
            const OpenHint hint = item.status == UndecidedFiles ? OpenHint::ListedAsFile : OpenHint::Unknown;
            const bool same = sameContent(comparer, method, item.leftPath, item.rightPath, hint);
            if (cancel.isCancelled())
                return; // what was read is not the whole
            item.setDiffStatus(same ? FolderDiffStatus::Same : FolderDiffStatus::Different);
            done += std::max<qint64>(weight(item, method) - counted, 0);
        }
    };
    const bool alone = pairs.size() < pairsReadAlone && total < bytesReadAlone;
    // A thread that fails leaves its pair to nobody; the others go on to the end, which is never far.
    runCrew(alone ? 1 : std::min<int>(threads, int(std::min<std::size_t>(pairs.size(), 64))), work,
            [&tell] { tell({}); });

    if (report.problems) {
        std::sort(problems.begin(), problems.end());
        report.problems->append(problems);
    }
}

} // namespace velmora
