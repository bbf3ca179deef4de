#pragma once

#include "core/runner.h"
#include "folder/actions/folder_command.h"
#include "folder/actions/step_counter.h"

#include <QDateTime>
#include <QObject>
#include <QStringList>

class QWidget;

namespace velmora {

class FileLayer;
struct ActionOutcome;
struct ActionRequest;
struct JournalEntry;
struct JournalPlace;
struct OperationPlan;
struct PreparedAction;
struct PreparedUndo;

/// Carries out the commands of a folder comparison on the files: asks what has to be asked, plans, shows the plan where
/// much is at stake, runs it on a worker and says how it went.
///
/// Lives on the interface thread. One command at a time: while `isRunning()`, all others are refused. What is shown of
/// entries is only as new as the context; each step looks at its files again and leaves alone what has changed since.
/// What is replaced or deleted is kept within the limits of `KeptCopies`, so that it can be undone.
class FolderActions final : public QObject {
    Q_OBJECT
public:
    /// Questions and dialogs belong to `window`, which outlives this object.
    explicit FolderActions(QWidget &window, QObject *parent = nullptr);
    /// With another file system, which outlives this object, and another folder for the journal: for tests.
    FolderActions(QWidget &window, FileLayer &files, const QString &journalFolder, QObject *parent = nullptr);
    ~FolderActions() override;

    /// Takes the comparison as it is now. A command that has begun keeps what it began with.
    void setContext(const FolderActionContext &context);

    /// Why `command` cannot be carried out on `selection`, for a tool tip; empty when it can. Looks at no file. Costs a
    /// look at each selected item.
    [[nodiscard]] QString whyNot(FolderCommand command, const FolderSelection &selection) const;

    /// Shows what undoing the run `id` of the journal would do, and does it when that is wanted.
    void undoRun(const QString &id);
    /// The same for the rest of a run that was interrupted. What is left of an undoing is undone.
    void continueRun(const JournalEntry &run);

    /// Begins `command`. Does nothing but tell the reason in the status where `whyNot` has one.
    void carryOut(FolderCommand command, const FolderSelection &selection);

    /// Begins `CopyTo` into a folder that has been asked for already; `carryOut` asks.
    void copyTo(const QString &destination, const FolderSelection &selection);

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
    [[nodiscard]] ActionRequest requestFor(FolderCommand command, const FolderSelection &selection) const;
    void showEntry(FolderCommand command, const FolderSelection &selection);
    void askDestination(const ActionRequest &request);
    void askName(const ActionRequest &request);
    void prepare(const ActionRequest &request);
    void prepareUndo(const ActionRequest &request);
    void considerUndo(ActionRequest request, const PreparedUndo &prepared);
    void considerPlan(ActionRequest request, const PreparedAction &prepared);
    void tellNothingDone(const ActionRequest &request, const OperationPlan &plan);
    void work(const ActionRequest &request, const OperationPlan &plan);
    void tellProgress(const FolderActionProgress &progress, const QString &text);
    void tellOutcome(const ActionRequest &request, const ActionOutcome &outcome);
    void offerDeletingForGood(const ActionRequest &request);
    void offerWithoutJournal(const ActionRequest &request, const ActionOutcome &outcome);
    [[nodiscard]] bool mayUndo() const;
    void showFailure(const ActionOutcome &outcome);
    [[nodiscard]] JournalPlace journal() const;

    QWidget &m_window;
    FileLayer &m_files;
    QString m_journalFolder;
    FolderActionContext m_context;
    StepCounter m_counter;
    mutable QDateTime m_journalSeen; ///< when the journal had changed last; what follows is as old
    mutable bool m_mayUndo = false;
    Runner m_runner;
};

} // namespace velmora
