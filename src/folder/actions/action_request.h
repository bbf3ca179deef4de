#pragma once

#include "folder/actions/folder_command.h"
#include "folder/operations/plan_builders.h"

#include <QHash>

namespace velmora {

/// What a command that changes files keeps of the old contents.
enum class Keeping : quint8 {
    OldContents,
    Nothing, ///< their space is free at once; that it was done is written down
    NoNotes, ///< and nothing is written down either: a full disk must not stand in the way
};

/// One command with everything that was answered for it: what the workers get. A value.
struct ActionRequest {
    FolderCommand command = FolderCommand::CopyToRight;
    FolderActionContext context;
    FolderSelection selection;
    QString destination; ///< of `CopyTo` and `MoveTo`: an absolute folder
    QString name;        ///< of `Rename` and `NewFolder` a bare name, of `UndoLast` what is undone, in words
    QString undoOf;      ///< of `UndoLast`: the run in the journal; the last one while it is empty
    DeleteManner manner = DeleteManner::ToRecycleBin;
    IfPresent ifPresent = IfPresent::Replace;
    Keeping keeping = Keeping::OldContents;
    QString restOf; ///< of `ContinueRun`: the run in the journal
};

[[nodiscard]] inline const QString &rootOn(const FolderActionContext &context, Side side)
{
    return context.roots[side].path;
}

/// What a person has said of the side.
[[nodiscard]] inline bool isReadOnly(const FolderActionContext &context, Side side)
{
    return side == Side::Left ? context.options.leftReadOnly : context.options.rightReadOnly;
}

/// The sides that a selection means, of which there may be one or two.
[[nodiscard]] QList<Side> sidesOf(const FolderSelection &selection);

/// What a command does, whatever way it goes. The first ones have texts of their own.
enum class CommandKind : quint8 {
    Copy,
    Move,
    Delete,
    Rename,
    NewFolder,
    Mirror,
    Update,
    UpdateBoth,
    Undo,
    Continue,
    Show
};
[[nodiscard]] CommandKind kindOf(FolderCommand command);

/// True for the commands that copy or move to the other side.
[[nodiscard]] bool goesToOtherSide(FolderCommand command);
/// True for the commands after which the entries are no longer where they were.
[[nodiscard]] inline bool isMove(FolderCommand command)
{
    return kindOf(command) == CommandKind::Move;
}
/// True for the commands that are about the two folders as a whole, and whose texts name these instead of entries.
[[nodiscard]] inline bool isAboutRoots(FolderCommand command)
{
    return kindOf(command) >= CommandKind::Mirror && kindOf(command) <= CommandKind::UpdateBoth;
}

/// The side that a command copies, moves or mirrors from; for those that have one.
[[nodiscard]] Side sourceOf(FolderCommand command);

/// Where the new folder of `NewFolder` goes on `side`, relative to the root.
[[nodiscard]] QString newFolderPath(const ActionRequest &request, Side side);

/// The items as a tree, to find entries and the places that they would have on the other side.
class ItemTree {
public:
    /// Keeps a reference.
    explicit ItemTree(const QList<FolderDiffItem> &items);

    /// -1 when there is none. `name` is relative to the roots.
    [[nodiscard]] qsizetype indexOf(const QString &name) const { return m_byName.value(name, -1); }
    /// Where the entry is on `side`, or would be: below the place of the folder that it lies in.
    [[nodiscard]] QString placeOf(const FolderDiffItem &item, Side side, const QString &root) const;

private:
    const QList<FolderDiffItem> &m_items;
    QHash<QString, qsizetype> m_byName;
};

} // namespace velmora
