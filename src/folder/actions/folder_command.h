#pragma once

#include "core/sides.h"
#include "folder/engine/folder_diff_item.h"
#include "platform/file_access.h"
#include "settings/options/folder_session_options.h"
#include "vfs/tree_source.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace velmora {

/// What can be done with the files of a folder comparison.
enum class FolderCommand {
    CopyToRight, ///< the selection, folders with what is in them, over the other side's entries
    CopyToLeft,
    MoveToRight, ///< the same, and then it is gone here; folders that are empty then go, too
    MoveToLeft,
    CopyTo, ///< the entries of the sides asked for, to a folder that is asked for
    MoveTo, ///< the same, and then they are gone here
    Delete, ///< to the recycle bin where the system has one
    DeleteForGood,
    Rename,        ///< one entry, on the sides asked for
    NewFolder,     ///< in the selected folder, beside the selected file, or in the roots when nothing is selected
    MirrorToRight, ///< makes the right side identical to the left one; of the selection, or of all without one
    MirrorToLeft,
    UpdateRight, ///< copies new and newer files, deletes nothing; selection as above
    UpdateLeft,
    UpdateBoth,
    Properties,        ///< one entry
    ShowInFileManager, ///< one entry
    UndoLast,          ///< takes back the last operation, whatever folders it was about
    ContinueRun,       ///< goes on with an operation that was interrupted; for `FolderActions` itself
};

/// What a command works on.
struct FolderSelection {
    QList<FolderDiffItem> items; ///< of the comparison, in its order; what lies in a selected folder need not be there
    std::optional<Side> side = {}; ///< whose entries are meant, of a command that can mean one or, without it, both
};

/// What `FolderActions` knows of a comparison. A value; the items are shared, not copied.
struct FolderActionContext {
    Sides<TreeFolder> roots;                       ///< none when the side has no folder yet
    Sides<std::optional<FileIdentity>> identities; ///< of the roots when they were compared, where that is known
    FolderSessionOptions options;                  ///< the read-only flags, method, tolerance and alignments count
    QList<FolderDiffItem> items;   ///< all, hidden ones too, in pre-order and named relative to the roots
    QList<FolderProblem> problems; ///< of the comparison: what could not be looked at is never taken for missing
    /// False while `items` holds only the levels that a person has opened: what a command needs is then listed first.
    bool isWhole = true;
    /// Whether filters hide an entry. Hidden entries are never touched. Called on a worker thread, so it owns what it
    /// reads; empty when nothing is hidden.
    std::function<bool(const FolderDiffItem &)> isHidden;
};

/// How far a running command has come. Totals are 0 while they are not known.
struct FolderActionProgress {
    qint64 filesDone = 0; ///< files, links and folders
    qint64 filesTotal = 0;
    qint64 bytesDone = 0;
    qint64 bytesTotal = 0;
    std::optional<qint64> secondsLeft; ///< empty while too little is done to tell
    QString path;                      ///< what is being worked on, native; may be empty
};

} // namespace velmora
