#pragma once

#include "folder/engine/folder_diff_item.h"
#include "settings/options/folder_session_options.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace velmora {

/// What can be done with the files of a folder comparison.
enum class FolderCommand {
    CopyToRight, ///< the selection, folders with what is in them, over the other side's entries
    CopyToLeft,
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
    UndoLast,          ///< takes back the last operation on these two folders
};

/// Which side's entries a command means, where it can mean one or both.
enum class FolderSides { Left, Right, Both };

/// What a command works on.
struct FolderSelection {
    QList<FolderDiffItem> items; ///< of the comparison, in its order; what lies in a selected folder need not be there
    FolderSides sides = FolderSides::Both;
};

/// What `FolderActions` knows of a comparison. A value; the items are shared, not copied.
struct FolderActionContext {
    QString leftRoot; ///< absolute, with "/"; empty when the side has no folder yet
    QString rightRoot;
    FolderSessionOptions options; ///< the read-only flags, method, tolerance and alignments count
    QList<FolderDiffItem> items;  ///< all, hidden ones too, in pre-order and named relative to the roots
    /// False while `items` holds only the levels that a person has opened: what a command needs is then listed first.
    bool isWhole = true;
    /// Whether filters hide an entry. Hidden entries are never touched. Called on a worker thread, so it owns what it
    /// reads; empty when nothing is hidden.
    std::function<bool(const FolderDiffItem &)> isHidden;
};

/// How far a running command has come. Totals are 0 while they are not known.
struct FolderActionProgress {
    qint64 filesDone = 0;
    qint64 filesTotal = 0;
    qint64 bytesDone = 0;
    qint64 bytesTotal = 0;
    std::optional<qint64> secondsLeft; ///< empty while too little is done to tell
    QString path;                      ///< what is being worked on, native; may be empty
};

/// Carries out the commands of a folder comparison on the files: asks what has to be asked, plans, shows the plan where
/// much is at stake, runs it on a worker and says how it went.
///
/// Lives on the interface thread. One command at a time: while `isRunning()`, all others are refused. What is shown of
/// entries is only as new as the context; each step looks at its files again and leaves alone what has changed since.
class FolderActions final : public QObject {
    Q_OBJECT
public:
    /// Questions and dialogs belong to `window`, which outlives this object.
    explicit FolderActions(QWidget &window, QObject *parent = nullptr);
    ~FolderActions() override;

    /// Takes the comparison as it is now. A command that has begun keeps what it began with.
    void setContext(const FolderActionContext &context);

    /// Why `command` cannot be carried out on `selection`, for a tool tip; empty when it can. Looks at no file. Costs a
    /// look at each selected item.
    [[nodiscard]] QString whyNot(FolderCommand command, const FolderSelection &selection) const;

    /// Begins `command`. Does nothing but tell the reason in the status where `whyNot` has one.
    void carryOut(FolderCommand command, const FolderSelection &selection);

    /// A command plans or works; not while it waits for an answer.
    [[nodiscard]] bool isRunning() const;

public Q_SLOTS:
    /// Ends the running command between two files or within a large one. What is done stays done.
    void cancel();

Q_SIGNALS:
    /// One line for the action log, with the time of day.
    void logLine(const QString &line);
    /// A text for the status line.
    void statusChanged(const QString &text);
    void progressed(const FolderActionProgress &progress);
    void runningChanged(bool running);
    /// A command has ended that may have changed files: what was touched, relative to the roots, each name once, every
    /// folder before what is in it. Not for commands that were called off or had nothing to do.
    void finished(const QStringList &touched);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace velmora
