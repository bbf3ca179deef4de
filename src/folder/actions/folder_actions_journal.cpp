// What `FolderActions` does with the operations of the past.

#include "folder/actions/action_confirmation.h"
#include "folder/actions/action_outcome.h"
#include "folder/actions/action_words.h"
#include "folder/actions/action_worker.h"
#include "folder/actions/command_words.h"
#include "folder/actions/folder_actions.h"
#include "session/dialogs.h"
#include "session/translate.h"

#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QWidget>

namespace velmora {

namespace {

/// The side that a plan would write to although it is read-only, as undoing may.
bool writesReadOnly(const OperationPlan &plan, const FolderActionContext &context)
{
    for (const Side side : bothSides) {
        if (!isReadOnly(context, side) || rootOn(context, side).isEmpty())
            continue;
        const QString below = rootOn(context, side) + u'/';
        for (const OperationStep &step : plan.steps) {
            const bool isRemoval = step.kind == OperationKind::Delete || step.kind == OperationKind::Recycle ||
                                   step.kind == OperationKind::Move;
            if (plan.pathOf(step.to).startsWith(below) || (isRemoval && plan.pathOf(step.from).startsWith(below)))
                return true;
        }
    }
    return false;
}

/// A crash came after all had been done.
bool hasNoRest(const PastRun &run)
{
    return run.refusal == UndoRefusal::None && !run.done.steps.isEmpty() && run.done.refusal == PlanRefusal::None &&
           run.rest.steps.isEmpty() && run.rest.leftOut.isEmpty() && run.rest.refusal == PlanRefusal::None;
}

} // namespace

void FolderActions::undoRun(const QString &id)
{
    ActionRequest request;
    request.command = FolderCommand::UndoLast;
    request.undoOf = id;
    request.context = m_context;
    if (!isRunning())
        prepareUndo(request);
}

void FolderActions::continueRun(const JournalEntry &run)
{
    if (!run.undoOf.isEmpty()) {
        undoRun(run.undoOf);
        return;
    }
    if (isRunning())
        return;
    ActionRequest request;
    request.command = FolderCommand::ContinueRun;
    request.name = run.title;
    request.restOf = run.id;
    request.context = m_context;
    const QString time = QLocale().toString(run.started.toLocalTime(), QLocale::ShortFormat);
    m_runner.start(
        [&files = m_files, place = journal(), id = run.id](const CancelFlag &cancel, Progress &) {
            OperationJournal past(files, place.folder, place.limits);
            PastRun read = past.readRun(id, cancel);
            if (hasNoRest(read))
                past.markContinued(id);
            return read;
        },
        [this, request, time](RunOutcome<PastRun> &&outcome) {
            Q_EMIT statusChanged(endText(outcome.end, outcome.fault));
            if (outcome.end != RunEnd::Done)
                return;
            const OperationPlan &rest = outcome.value->rest;
            if (rest.steps.isEmpty()) {
                tellNothingDone(request, rest);
                return;
            }
            previewPlan(m_window, rest, Velmora::tr("Continue"),
                        Velmora::tr("Go on with \"%1\" of %2?").arg(request.name, time), Velmora::tr("&Continue"),
                        [self = QPointer(this), request, rest] {
                            if (self)
                                self->work(request, rest);
                        });
        });
}

void FolderActions::prepareUndo(const ActionRequest &request)
{
    m_runner.start([&files = m_files, place = journal(), id = request.undoOf](
                       const CancelFlag &cancel, Progress &) { return prepareUndoing(files, place, id, cancel); },
                   [this, request](RunOutcome<PreparedUndo> &&outcome) {
                       Q_EMIT statusChanged(endText(outcome.end, outcome.fault));
                       if (outcome.end == RunEnd::Done)
                           considerUndo(request, *outcome.value);
                   });
}

void FolderActions::considerUndo(ActionRequest request, const PreparedUndo &prepared)
{
    const UndoPlan &undo = prepared.undo;
    request.undoOf = undo.id;
    request.name = prepared.entry.title;
    if (undo.refusal == UndoRefusal::NothingToUndo) {
        Q_EMIT statusChanged(Velmora::tr("There is nothing to undo"));
        return;
    }
    if (undo.refusal != UndoRefusal::None) {
        Dialogs::instance().tell(&m_window, Dialogs::Tone::Warning, Velmora::tr("Undo failed"),
                                 Velmora::tr("The journal of the last operation cannot be read."));
        return;
    }
    if (writesReadOnly(undo.plan, m_context)) {
        Q_EMIT statusChanged(Velmora::tr("A side that the last operation wrote to is read-only now"));
        return;
    }
    if (undo.plan.steps.isEmpty()) {
        tellNothingDone(request, undo.plan);
        return;
    }
    const QString time = QLocale().toString(prepared.entry.started.toLocalTime(), QLocale::ShortFormat);
    previewPlan(m_window, undo.plan, Velmora::tr("Undo"), Velmora::tr("Undo \"%1\" of %2?").arg(request.name, time),
                Velmora::tr("&Undo"), [self = QPointer(this), request, plan = undo.plan] {
                    if (self)
                        self->work(request, plan);
                });
}

/// A full disk is often the very reason for deleting.
void FolderActions::offerWithoutJournal(const ActionRequest &request, const ActionOutcome &outcome)
{
    const bool undoes = request.command == FolderCommand::UndoLast;
    Dialogs::instance().askYesNo(
        &m_window, Velmora::tr(wordsOf(request.command).name),
        Velmora::tr("What undoing needs could not be written, perhaps because the disk is full, so some of it has not "
                    "been done. Go on without it? It can then not be taken back."),
        false, [self = QPointer(this), request, outcome, undoes](bool yes) {
            ActionRequest again = request;
            again.keeping = Keeping::NoNotes;
            again.context.isWhole = false; // the first run has changed what the comparison knows
            if (!self || (yes && self->isRunning()))
                return;
            if (!yes)
                self->showFailure(outcome);
            else if (undoes)
                self->prepareUndo(again);
            else
                self->prepare(again);
        });
}

/// Looks again only when runs have been added or forgotten since.
bool FolderActions::mayUndo() const
{
    const JournalPlace place = journal();
    const QDateTime changed = QFileInfo(place.folder).lastModified();
    if (!changed.isValid())
        return false;
    if (changed != m_journalSeen) {
        m_mayUndo = OperationJournal(m_files, place.folder, place.limits).mayUndo();
        m_journalSeen = changed;
    }
    return m_mayUndo;
}

} // namespace velmora
