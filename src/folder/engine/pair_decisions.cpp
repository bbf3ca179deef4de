#include "folder/engine/pair_decisions.h"

#include "core/crew.h"
#include "folder/engine/folder_engine.h"
#include "vfs/blob_name.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace velmora {

namespace {

/// What one worker reads of a folder at once. Small enough that other workers find something to do beside it.
constexpr int pairsDecidedNow = 256;
constexpr qint64 bytesDecidedNow = 16 * 1024 * 1024;
constexpr qint64 fileDecidedNow = 1024 * 1024;

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

bool areWholeHoursApart(qint64 leftMs, qint64 rightMs)
{
    constexpr qint64 hourMs = 3'600'000;
    constexpr qint64 roundedMs = 2'000;
    constexpr qint64 mostHours = 26; // from the first zone to the last
    const qint64 apart = std::abs(leftMs - rightMs);
    const qint64 hours = (apart + hourMs / 2) / hourMs;
    return hours >= 1 && hours <= mostHours && std::abs(apart - hours * hourMs) <= roundedMs;
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

std::optional<bool> sameByIdentity(CompareMethod method, const Sides<std::optional<ContentIdentity>> &known)
{
    if (!known.left || !known.right || known.left->algorithm != known.right->algorithm)
        return std::nullopt;
    const bool equal = known.left->value == known.right->value;
    const bool isCrc = known.left->algorithm == ContentIdentity::Algorithm::Crc32;
    if (equal)
        return isCrc && method != CompareMethod::Crc ? std::nullopt : std::optional(true);
    const bool decides = method == CompareMethod::Rules || (isCrc && method == CompareMethod::Crc);
    return decides ? std::optional(false) : std::nullopt;
}

std::optional<AskedName> askedName(CompareMethod method, const Sides<std::optional<ContentIdentity>> &known,
                                   const Sides<bool> &canRead)
{
    const auto isExact = [&known](Side side) {
        return known[side] && known[side]->algorithm != ContentIdentity::Algorithm::Crc32;
    };
    for (const Side side : bothSides) {
        const Side other = side == Side::Left ? Side::Right : Side::Left;
        if (method != CompareMethod::Rules || !canRead[side] || !isExact(other))
            continue;
        const bool isOfUse =
            canRead[other] ? !isExact(side) : !known[side] || known[side]->algorithm != known[other]->algorithm;
        if (isOfUse)
            return AskedName{known[other]->algorithm, side};
    }
    return std::nullopt;
}

PairDecider::PairDecider(SourcePair sources, int threads, CompareMethod method, const CancelFlag &cancel)
    : m_sources(std::move(sources)),
      m_method(method),
      m_cancel(cancel),
      m_comparers(std::size_t(threads)),
      m_openers(std::size_t(threads))
{
    for (const Side side : bothSides) {
        m_canRead[side] = !m_sources[side] || m_sources[side]->contentAccess() == ContentAccess::Readable;
        if (!m_canRead[side])
            m_method = CompareMethod::Rules;
    }
}

PairDecider::~PairDecider() = default;

ContentComparer &PairDecider::comparer(int worker)
{
    std::unique_ptr<ContentComparer> &comparer = m_comparers[std::size_t(worker)];
    if (!comparer) {
        comparer = std::make_unique<ContentComparer>(
            Sides<std::unique_ptr<FileOpener>>{m_sources.left->makeOpener(), m_sources.right->makeOpener()}, m_cancel,
            &m_gate);
        comparer->setFailureListener([this](Side side, const QString &path) { noteUnreadable(side, path); });
    }
    return *comparer;
}

FileOpener &PairDecider::opener(int worker, Side side)
{
    std::unique_ptr<FileOpener> &opener = m_openers[std::size_t(worker)][side];
    if (!opener)
        opener = m_sources[side]->makeOpener();
    return *opener;
}

void PairDecider::noteUnreadable(Side side, const QString &path)
{
    const std::lock_guard lock(m_mutex);
    m_problems.append({FolderProblem::Kind::UnreadableFile, path, side});
}

std::optional<bool> PairDecider::sameByWhatIsKnown(int worker, const FolderDiffItem &item, OpenHint hint)
{
    Sides<std::optional<ContentIdentity>> known{m_sources.left->contentIdentity(item.leftPath),
                                                m_sources.right->contentIdentity(item.rightPath)};
    if (const std::optional<AskedName> asked = askedName(m_method, known, m_canRead)) {
        const Side side = asked->side;
        const std::unique_ptr<OpenFile> file = opener(worker, side).open(pathOn(item, side), hint);
        known[side] = file ? blobName(*file, asked->algorithm, m_cancel) : std::nullopt;
        if (!known[side]) {
            if (!m_cancel.isCancelled())
                noteUnreadable(side, pathOn(item, side));
            return false;
        }
    }
    return sameByIdentity(m_method, known);
}

void PairDecider::decide(int worker, FolderDiffItem &item)
{
    const OpenHint hint = item.status == UndecidedFiles ? OpenHint::ListedAsFile : OpenHint::Unknown;
    const std::optional<bool> known = sameByWhatIsKnown(worker, item, hint);
    if (!known && !(m_canRead.left && m_canRead.right))
        return;
    const bool same = known ? *known : sameContent(comparer(worker), m_method, item.leftPath, item.rightPath, hint);
    if (!m_cancel.isCancelled()) // else what was read may not be the whole
        item.setDiffStatus(same ? FolderDiffStatus::Same : FolderDiffStatus::Different);
}

void PairDecider::decideNow(int worker, std::span<FolderDiffItem> items)
{
    int pairs = 0;
    qint64 bytes = 0;
    for (FolderDiffItem &item : items) {
        if (m_cancel.isCancelled())
            return;
        if (!isUndecided(item))
            continue;
        const qint64 size = std::max(item.leftSize, item.rightSize);
        if (size > fileDecidedNow || pairs == pairsDecidedNow || bytes > bytesDecidedNow)
            continue;
        decide(worker, item);
        ++pairs;
        bytes += size;
    }
}

void PairDecider::decideRest(QList<FolderDiffItem> &items, const FolderRunReport &report)
{
    std::vector<qint32> pairs;
    qint64 total = 0;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (isUndecided(items.at(i))) {
            pairs.push_back(qint32(i));
            total += weight(items.at(i), m_method);
        }
    }
    if (pairs.empty() || m_cancel.isCancelled())
        return;

    FolderDiffItem *const data = items.data();
    std::atomic<std::size_t> nextPair{0};
    std::atomic<qint64> done{0};
    const auto tell = [&](const QString &path) {
        if (report.progress)
            report.progress->report(int(FolderPhase::Comparing), std::min(done.load(), total), total, path);
    };
    const auto work = [&](int worker) {
        for (std::size_t n = nextPair++; n < pairs.size() && !m_cancel.isCancelled(); n = nextPair++) {
            FolderDiffItem &item = data[pairs[n]];
            qint64 counted = 0;
            comparer(worker).setBytesListener([&](qint64 bytes) {
                counted += bytes;
                done += bytes;
                if (worker == 0)
                    tell(item.leftPath);
            });
            if (worker == 0)
                tell(item.leftPath);
            decide(worker, item);
            done += std::max<qint64>(weight(item, m_method) - counted, 0);
        }
    };
    const bool alone = pairs.size() < pairsReadAlone && total < bytesReadAlone;
    const std::size_t workers = alone ? 1 : std::min(m_comparers.size(), pairs.size());
    // A worker that fails leaves its pair to nobody; the others go on to the end.
    runCrew(int(workers), work, [&tell] { tell({}); });
}

void PairDecider::tellProblems(const FolderRunReport &report)
{
    if (!report.problems)
        return;
    std::sort(m_problems.begin(), m_problems.end());
    report.problems->append(std::exchange(m_problems, {}));
}

} // namespace velmora
