#include "folder/engine/pair_decisions.h"

#include "core/crew.h"
#include "folder/engine/folder_engine.h"
#include "vfs/blob_name.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <utility>

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

/// Pairs, handed out to whoever has done the last ones.
class Shares {
public:
    using Share = std::span<FolderDiffItem *const>;

    /// `most` of them at a time, and not too much to be read; 0: one by one.
    Shares(Share pairs, qsizetype most) : m_pairs(pairs), m_most(std::size_t(std::max<qsizetype>(most, 1))) {}

    /// Empty when nothing is left.
    Share take()
    {
        constexpr qint64 mostBytes = 32 * 1024 * 1024; // between two looks at the progress
        const std::lock_guard lock(m_mutex);
        std::size_t count = 0;
        for (qint64 bytes = 0; count < m_pairs.size() && count < m_most && bytes < mostBytes; ++count)
            bytes += std::max(m_pairs[count]->leftSize, m_pairs[count]->rightSize);
        const Share share = m_pairs.first(count);
        m_pairs = m_pairs.subspan(count);
        return share;
    }

private:
    std::mutex m_mutex;
    Share m_pairs; ///< guarded by the mutex
    std::size_t m_most;
};

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
        m_atOnce = std::max(m_atOnce, m_sources[side] ? m_sources[side]->identitiesAtOnce() : 0);
        m_canRead[side] = !m_sources[side] || m_sources[side]->contentAccess() == ContentAccess::Readable;
        if (!m_canRead[side])
            m_method = CompareMethod::Rules;
    }
    const bool areThere = m_sources.left && m_sources.right;
    const auto kind = areThere ? m_sources.left->identityKind() : std::nullopt;
    m_bothKnow = kind && kind == m_sources.right->identityKind();
}

PairDecider::~PairDecider() = default;

void PairDecider::decideKnown(std::span<FolderDiffItem> items) const
{
    for (FolderDiffItem &item : items) {
        if (!m_bothKnow || !item.isUnread || item.isDir)
            continue;
        const Known known{m_sources.left->contentIdentity(item.leftPath),
                          m_sources.right->contentIdentity(item.rightPath)};
        if (const std::optional<bool> same = sameByIdentity(CompareMethod::Rules, known)) {
            item.setDiffStatus(*same ? FolderDiffStatus::Same : FolderDiffStatus::Different);
            item.isUnread = false;
        }
    }
}

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

std::vector<PairDecider::Known> PairDecider::askForMany(std::span<FolderDiffItem *const> pairs) const
{
    std::vector<Known> known(pairs.size());
    for (const Side side : bothSides) {
        const TreeSource &source = *m_sources[side];
        const TreeSource &other = *m_sources[side == Side::Left ? Side::Right : Side::Left];
        if (source.identitiesAtOnce() == 0 || m_cancel.isCancelled())
            continue;
        QStringList paths;
        paths.reserve(qsizetype(pairs.size()));
        for (const FolderDiffItem *pair : pairs)
            paths.append(pathOn(*pair, side));
        const ContentIdentity::Algorithm algorithm = other.identityKind().value_or(ContentIdentity::Algorithm::Sha256);
        const std::vector<std::optional<ContentIdentity>> found = source.contentIdentities(paths, algorithm, m_cancel);
        for (std::size_t i = 0; i < known.size(); ++i)
            known[i][side] = found[i];
    }
    return known;
}

std::optional<bool> PairDecider::sameByWhatIsKnown(int worker, const FolderDiffItem &item, OpenHint hint, Known known)
{
    for (const Side side : bothSides) {
        if (!known[side] && !m_cancel.isCancelled())
            known[side] = m_sources[side]->contentIdentity(pathOn(item, side));
    }
    // Equal names leave nothing to be read by any method, and a host is slow to read from.
    const CompareMethod asking = m_atOnce > 0 ? CompareMethod::Rules : m_method;
    if (const std::optional<AskedName> asked = askedName(asking, known, m_canRead)) {
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
    decideKnowing(worker, item, {});
}

void PairDecider::decideKnowing(int worker, FolderDiffItem &item, Known knownOfSides)
{
    const OpenHint hint = item.status == UndecidedFiles ? OpenHint::ListedAsFile : OpenHint::Unknown;
    const std::optional<bool> known = sameByWhatIsKnown(worker, item, hint, std::move(knownOfSides));
    if (!known && !(m_canRead.left && m_canRead.right))
        return;
    const bool same = known ? *known : sameContent(comparer(worker), m_method, item.leftPath, item.rightPath, hint);
    if (!m_cancel.isCancelled()) // else what was read may not be the whole
        item.setDiffStatus(same ? FolderDiffStatus::Same : FolderDiffStatus::Different);
}

void PairDecider::decideNow(int worker, std::span<FolderDiffItem> items)
{
    if (m_atOnce > 0)
        return; // all that is left is asked for together
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
    std::vector<FolderDiffItem *> pairs;
    qint64 total = 0;
    for (FolderDiffItem &item : items) {
        if (isUndecided(item)) {
            pairs.push_back(&item);
            total += weight(item, m_method);
        }
    }
    if (pairs.empty() || m_cancel.isCancelled())
        return;

    Shares shares(pairs, m_atOnce);
    std::atomic<qint64> done{0};
    const auto tell = [&](const QString &path) {
        if (report.progress)
            report.progress->report(int(FolderPhase::Comparing), std::min(done.load(), total), total, path);
    };
    const auto decideOne = [&](int worker, FolderDiffItem &item, Known known) {
        qint64 counted = 0;
        comparer(worker).setBytesListener([&](qint64 bytes) {
            counted += bytes;
            done += bytes;
            if (worker == 0)
                tell(item.leftPath);
        });
        if (worker == 0)
            tell(item.leftPath);
        decideKnowing(worker, item, std::move(known));
        done += std::max<qint64>(weight(item, m_method) - counted, 0);
    };
    const auto work = [&](int worker) {
        for (Shares::Share share = shares.take(); !share.empty(); share = shares.take()) {
            std::vector<Known> known = m_atOnce > 0 ? askForMany(share) : std::vector<Known>(1);
            for (std::size_t n = 0; n < share.size() && !m_cancel.isCancelled(); ++n)
                decideOne(worker, *share[n], std::move(known[n]));
            if (m_cancel.isCancelled())
                break;
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
