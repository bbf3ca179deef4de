#pragma once

#include "folder/engine/folder_diff_item.h"
#include "folder/operations/operation_plan.h"
#include "vfs/tree_source.h"

#include <QHash>
#include <QStringList>

#include <functional>

namespace velmora {

/// Plans over the entries of a comparison. Pure: nothing is looked up, so that the plans must pass `surveyPlan` (or
/// the executor, which calls it) before they are exact.

/// What plans are made from.
struct PlanInput {
    /// In the order of the engine, of a comparison that ran to its end and went into every folder that the plan is to
    /// cover. Folders that an entry lies in must be there as well when their names differ between the sides.
    QList<FolderDiffItem> items;
    Sides<TreeFolder> roots;
    /// Of the roots when they were compared (`identitiesOf`), where that was looked up: when a path leads to another
    /// folder by then, the plan is refused.
    Sides<std::optional<FileIdentity>> identities;
    Sides<bool> readOnly; ///< a person wants nothing written there; what the source says comes on top
    /// True for what filters show; empty: everything is shown. What is hidden, or lies in a hidden folder, is left
    /// alone.
    std::function<bool(const FolderDiffItem &)> shows;
    /// What the comparison could not look at: nothing there is taken for missing.
    QList<FolderProblem> problems;
    qint32 toleranceSec = 0; ///< times no more than this apart are equal

    [[nodiscard]] bool isReadOnly(Side side) const
    {
        return readOnly[side] || (roots[side].isThere() && roots[side].source->writeBar() != WriteBar::None);
    }
    /// Whether the paths of the side are those of this system, where the steps of a plan take place.
    [[nodiscard]] bool isLocal(Side side) const { return !roots[side].isThere() || roots[side].source->isLocal(); }
};

/// What shall happen with one entry. Of a folder only the folder itself: what is in it has actions of its own.
enum class EntryAction : quint8 { Nothing, CopyToLeft, CopyToRight, DeleteLeft, DeleteRight, MoveOnLeft, MoveOnRight };

/// How deletions are done.
enum class DeleteManner : quint8 { ToRecycleBin, ForGood };

/// How much of a folder goes when a person deletes it.
enum class DeleteScope : quint8 {
    ListedEntries, ///< what the comparison lists; a folder that holds more stays
    WholeFolder,   ///< everything, unless a filter hides something in it
};

/// What happens where a file would be written over another.
enum class IfPresent : quint8 { LeaveOut, Replace };

/// The general form: `actionOf` is asked for every shown item that is on both sides unequal or on one side only.
/// Folders on both sides are never deleted; folders that entries need are made. A deletion happens only while the
/// entry is missing on the other side, and so does a move: of the file of the item that `movedFrom` names for the item
/// that the move is asked for, on the side that lacks it. `actionOf` goes by names, not paths: they are gone by then
/// where nobody else holds the items. For synchronising.
[[nodiscard]] OperationPlan planActions(PlanInput input,
                                        const std::function<EntryAction(const FolderDiffItem &)> &actionOf,
                                        DeleteManner manner, const QHash<QString, QString> &movedFrom = {});

/// Makes the other side identical to `source`. `OperationPlan::sourceIsEmpty` tells when there is nothing to mirror.
[[nodiscard]] OperationPlan planMirror(const PlanInput &input, Side source, DeleteManner manner);

/// Copies what is new or newer at `source` to the other side.
[[nodiscard]] OperationPlan planUpdate(const PlanInput &input, Side source);

/// Copies what is new or newer on either side to the other.
[[nodiscard]] OperationPlan planUpdateBoth(const PlanInput &input);

/// Selections are indexes into `PlanInput::items`; a folder stands for itself and what is in it.
using PlanSelection = QList<qsizetype>;

/// Copies from `source` to the other side. Selected files are copied always, those in selected folders unless equal.
/// As with all these, a folder that is on one side only goes over whole: with what the comparison does not list in it.
[[nodiscard]] OperationPlan planCopyToOtherSide(const PlanInput &input, const PlanSelection &selection, Side source);
/// As `planCopyToOtherSide`; what has arrived is removed at `source`, and so are folders that are empty then.
[[nodiscard]] OperationPlan planMoveToOtherSide(const PlanInput &input, const PlanSelection &selection, Side source);

/// Copies from `source` into the folder `destination`, each selected entry under its own name.
[[nodiscard]] OperationPlan planCopyTo(const PlanInput &input, const PlanSelection &selection, Side source,
                                       const QString &destination, IfPresent ifPresent);
[[nodiscard]] OperationPlan planMoveTo(const PlanInput &input, const PlanSelection &selection, Side source,
                                       const QString &destination, IfPresent ifPresent);

[[nodiscard]] OperationPlan planDelete(const PlanInput &input, const PlanSelection &selection, Side side,
                                       DeleteManner manner, DeleteScope scope);

/// Gives the entry of one side another bare name.
[[nodiscard]] OperationPlan planRename(const PlanInput &input, qsizetype index, Side side, const QString &newName);

/// Makes the folder `relative` below the root of one side; the folders on the way must exist.
[[nodiscard]] OperationPlan planNewFolder(const PlanInput &input, Side side, const QString &relative);

/// Deletes single files wherever they lie below `root`: for tools that have no comparison. Paths are absolute.
[[nodiscard]] OperationPlan planDeleteFiles(const QString &root, const QStringList &paths, DeleteManner manner);

} // namespace velmora
