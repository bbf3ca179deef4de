#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_tree.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <chrono>
#include <optional>

namespace velmora {

/// Two folders and how they are compared and shown.
struct FolderSpec {
    Sides<TreeFolder> roots;
    FolderSessionOptions options;
    ViewFilters filters;
    /// Pairs of files that need not be decided again, by their names: by another method than the session's, or because
    /// they were only looked at. It holds as long as both files have the size and the time of then.
    QHash<QString, FolderDiffItem> decided;

    /// Gives the pair the status that `decided` has for it, if that still holds; else false.
    bool takeDecision(FolderDiffItem &pair) const;
    /// Usable from any thread.
    [[nodiscard]] FolderFilter filter() const;
    [[nodiscard]] FolderInput input() const { return FolderInput::of(roots, options); }
};

/// Pairs of files of one content and two times, the same way apart: a change of the clocks for summer, or a file system
/// that rounds times.
struct TimeShifts {
    qint64 hour = 0;       ///< exactly one hour
    qint64 twoSeconds = 0; ///< more than nothing, and two seconds at most

    friend bool operator==(const TimeShifts &, const TimeShifts &) = default;
};
[[nodiscard]] TimeShifts countTimeShifts(const QList<FolderDiffItem> &items);

/// What a run that lists or compares whole levels brings; filters have been applied.
struct FolderListing {
    FolderTree tree;
    QList<FolderProblem> problems;
    TimeShifts shifts;
    /// How reading the two folders themselves went, after `listTopLevel`: `Missing` and `Unreadable` leave nothing to
    /// compare.
    Sides<FolderRead> roots;
};

/// The jobs of a folder session, for a worker each. They obey `cancel` as the engine does, and return what they have.

/// Which names there are at the top: quick, and nothing on both sides is decided. No entries unless both folders can be
/// read.
[[nodiscard]] FolderListing listTopLevel(const FolderSpec &spec, const CancelFlag &cancel, Progress &progress);

/// The top level with its files compared; the folders are left unloaded. When cancelled, the entries of `known` that
/// were not reached are there undecided.
[[nodiscard]] FolderListing compareTopLevel(const FolderSpec &spec, const QList<FolderDiffItem> &known,
                                            const CancelFlag &cancel, Progress &progress);

/// The whole trees, under the same rule.
[[nodiscard]] FolderListing compareWholeTree(const FolderSpec &spec, const QList<FolderDiffItem> &known,
                                             const CancelFlag &cancel, Progress &progress);

/// An entry that is to be compared anew, with all that is in it.
struct BranchTask {
    QString name;         ///< relative
    Sides<QString> paths; ///< where each side is, or would be
    bool contents = true; ///< false: of a folder only its own level
};

struct BranchResult {
    std::vector<FolderTree::Patch> patches;
    QList<BranchTask> left; ///< the tasks that the time did not suffice for
    QList<FolderProblem> problems;
    TimeShifts shifts;
};

/// Compares entry by entry until `budget` is used up, at least one, so that results can be shown between calls.
[[nodiscard]] BranchResult compareBranches(const FolderSpec &spec, const QList<BranchTask> &tasks,
                                           std::chrono::milliseconds budget, const CancelFlag &cancel,
                                           Progress &progress);

/// Decides pairs of files of the two folders by another method, or by their contents whatever their sizes and times
/// where there is none, and whatever was known of them. Reports bytes. Pairs that are no longer two files, and those
/// that a cancelled run did not reach, have `FolderTree::unknownStatus`.
struct ContentsResult {
    QList<FolderDiffItem> pairs;
    QList<FolderProblem> problems;
    QHash<QString, FolderDiffItem> decided; ///< those of the pairs that were, as `FolderSpec` has them
};
[[nodiscard]] ContentsResult compareContentsOf(const FolderSpec &spec, QList<FolderDiffItem> pairs,
                                               std::optional<CompareMethod> method, const CancelFlag &cancel,
                                               Progress &progress);

} // namespace velmora
