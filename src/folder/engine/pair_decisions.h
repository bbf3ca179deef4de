#pragma once

#include "core/cancel_flag.h"
#include "core/content_compare.h"
#include "folder/engine/item_list.h"
#include "settings/options/folder_session_options.h"
#include "vfs/tree_source.h"

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

struct FolderRunReport;

/// True when two modification times, in milliseconds, are at most `toleranceSec` whole seconds apart, or equal when it
/// is not above 0.
[[nodiscard]] bool timesMatch(qint64 leftMs, qint64 rightMs, qint32 toleranceSec);

/// True when two times are one hour apart or more of them, a day and two hours at most, as clocks are that were changed
/// for summer or stand in another zone; give or take the two seconds that some file systems round to.
[[nodiscard]] bool areWholeHoursApart(qint64 leftMs, qint64 rightMs);

/// What sizes and times alone say of two files; nothing when the contents must be read. Both times are valid.
[[nodiscard]] std::optional<FolderDiffStatus> statusByAttributes(CompareMethod method, qint64 leftSize,
                                                                 qint64 rightSize, qint64 leftMs, qint64 rightMs,
                                                                 qint32 toleranceSec);

/// True when the contents of two files are equal under `method`.
[[nodiscard]] bool sameContent(ContentComparer &comparer, CompareMethod method, const QString &left,
                               const QString &right, OpenHint hint);

/// What the sources' own knowledge of two contents says under `method`; nothing when they must be read. Contents of one
/// CRC-32 may differ, and the binary method takes some for equal that differ.
[[nodiscard]] std::optional<bool> sameByIdentity(CompareMethod method,
                                                 const Sides<std::optional<ContentIdentity>> &known);

/// A content that is read to find its name, so that the other one stays unread.
struct AskedName {
    ContentIdentity::Algorithm algorithm = ContentIdentity::Algorithm::GitBlobSha1;
    Side side = Side::Left;
};

/// The content to name where the other side knows its own exactly, and this one does not or by another algorithm that
/// the other cannot be asked for; nothing where that is of no use to `method`. `canRead`: the sides that hold contents.
[[nodiscard]] std::optional<AskedName>
askedName(CompareMethod method, const Sides<std::optional<ContentIdentity>> &known, const Sides<bool> &canRead);

/// Gives pairs of files whose contents decide their status, for one run. Workers are numbered from 0, which is the
/// thread of the run itself.
class PairDecider {
public:
    /// Without a source on one side there is nothing to decide.
    PairDecider(SourcePair sources, int threads, CompareMethod method, const CancelFlag &cancel);
    ~PairDecider();
    PairDecider(const PairDecider &) = delete;
    PairDecider &operator=(const PairDecider &) = delete;

    /// Decides pairs that are the same by size and time alone where both sources know their contents. Reads nothing.
    void decideKnown(std::span<FolderDiffItem> items) const;

    /// Decides one undecided pair. When cancelled, it may stay so, and so does one that nobody can tell: a side has
    /// neither its content nor a name of it.
    void decide(int worker, FolderDiffItem &item);

    /// Decides those pairs of one folder that are soon read, while the system still has it at hand. What is large or
    /// beyond a certain amount is left for all workers to share. When cancelled, what is undecided stays so. Different
    /// workers may call it at the same time.
    void decideNow(int worker, std::span<FolderDiffItem> items);

    /// Decides all that is left, on all threads. When cancelled, the rest stays undecided.
    void decideRest(QList<FolderDiffItem> &items, const FolderRunReport &report);

    /// Appends what could not be read since the last time, ordered by path. Not while others decide.
    void tellProblems(const FolderRunReport &report);

private:
    [[nodiscard]] ContentComparer &comparer(int worker);
    [[nodiscard]] FileOpener &opener(int worker, Side side);
    using Known = Sides<std::optional<ContentIdentity>>;

    /// What sources that are asked for many say of these pairs, in their order.
    [[nodiscard]] std::vector<Known> askForMany(std::span<FolderDiffItem *const> pairs) const;
    void decideKnowing(int worker, FolderDiffItem &item, Known known);
    /// Adds to `known` what the sources say of one.
    [[nodiscard]] std::optional<bool> sameByWhatIsKnown(int worker, const FolderDiffItem &item, OpenHint hint,
                                                        Known known);
    void noteUnreadable(Side side, const QString &path);

    SourcePair m_sources;
    Sides<bool> m_canRead{true, true};
    bool m_bothKnow = false;
    CompareMethod m_method; ///< where a side holds no contents, names decide under any
    qsizetype m_atOnce = 0; ///< how many pairs a worker takes at a time where sources are asked for many; else 0
    CancelFlag m_cancel;
    SlowDeviceGate m_gate;
    std::vector<std::unique_ptr<ContentComparer>> m_comparers; ///< by worker, made when first needed
    std::vector<Sides<std::unique_ptr<FileOpener>>> m_openers; ///< the same, for files that are read alone
    std::mutex m_mutex;
    QList<FolderProblem> m_problems; ///< guarded by the mutex
};

} // namespace velmora
