#include "folder/actions/folder_actions.h"

#include "core/path_names.h"
#include "folder/actions/action_confirmation.h"
#include "folder/actions/action_planner.h"
#include "folder/actions/action_words.h"
#include "folder/actions/action_worker.h"
#include "folder/actions/command_rules.h"
#include "folder/actions/command_words.h"
#include "folder/actions/operation_results_dialog.h"
#include "folder/actions/properties_dialog.h"
#include "platform/file_manager.h"
#include "session/dialogs.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>
#include <QPointer>
#include <QWidget>

namespace velmora {

namespace {

QString ownName(const FolderDiffItem &item, std::optional<Side> side)
{
    return bareName(item.leftPath.isEmpty() || side == Side::Right ? item.rightPath : item.leftPath);
}

/// How far listing and looking at places is, in words.
QString preparingText(const ProgressState &state)
{
    const QLocale locale;
    const QString done = locale.toString(state.done);
    return Velmora::tr("Preparing... %1")
        .arg(state.total > 0 ? QStringLiteral("%1 / %2").arg(done, locale.toString(state.total)) : done);
}

/// How far a run is, in words.
QString progressText(const FolderActionProgress &progress)
{
    const QLocale locale;
    QString text = Velmora::tr("%1 of %2 entries, %3 of %4")
                       .arg(locale.toString(progress.filesDone), locale.toString(progress.filesTotal),
                            sizeText(progress.bytesDone), sizeText(progress.bytesTotal));
    if (progress.secondsLeft) {
        const qint64 minutes = *progress.secondsLeft / 60;
        const QString left = QStringLiteral("%1:%2").arg(minutes).arg(*progress.secondsLeft % 60, 2, 10, QChar(u'0'));
        text += u' ' + Velmora::tr("(about %1 left)").arg(left);
    }
    return text;
}

} // namespace

FolderActions::FolderActions(QWidget &window, QObject *parent)
    : FolderActions(window, FileLayer::native(), QString(), parent)
{}

FolderActions::FolderActions(QWidget &window, FileLayer &files, const QString &journalFolder, QObject *parent)
    : QObject(parent), m_window(window), m_files(files), m_journalFolder(journalFolder)
{
    connect(&m_runner, &Runner::runningChanged, this, [this] { Q_EMIT runningChanged(m_runner.isRunning()); });
}

FolderActions::~FolderActions() = default;

void FolderActions::setContext(const FolderActionContext &context)
{
    m_context = context;
}

QString FolderActions::whyNot(FolderCommand command, const FolderSelection &selection) const
{
    if (isRunning())
        return Velmora::tr("Another command is running");
    if (command == FolderCommand::UndoLast && !mayUndo())
        return Velmora::tr("There is nothing to undo");
    return whyNotPossible(command, m_context, selection);
}

bool FolderActions::isRunning() const
{
    return m_runner.isRunning();
}

void FolderActions::cancel()
{
    if (!isRunning())
        return;
    m_runner.cancel();
    Q_EMIT statusChanged(Velmora::tr("Cancelling..."));
}

ActionRequest FolderActions::requestFor(FolderCommand command, const FolderSelection &selection) const
{
    ActionRequest request;
    request.command = command;
    request.context = m_context;
    request.selection = selection;
    return request;
}

void FolderActions::copyTo(const QString &destination, const FolderSelection &selection)
{
    if (const QString reason = whyNot(FolderCommand::CopyTo, selection); !reason.isEmpty()) {
        Q_EMIT statusChanged(reason);
        return;
    }
    ActionRequest request = requestFor(FolderCommand::CopyTo, selection);
    request.destination = destination;
    prepare(request);
}

void FolderActions::carryOut(FolderCommand command, const FolderSelection &selection)
{
    if (const QString reason = whyNot(command, selection); !reason.isEmpty()) {
        Q_EMIT statusChanged(reason);
        return;
    }
    ActionRequest request = requestFor(command, selection);
    switch (command) {
    case FolderCommand::Properties:
    case FolderCommand::ShowInFileManager:
        showEntry(command, selection);
        break;
    case FolderCommand::CopyTo:
    case FolderCommand::MoveTo:
        askDestination(request);
        break;
    case FolderCommand::Rename:
    case FolderCommand::NewFolder:
        askName(request);
        break;
    case FolderCommand::UndoLast:
        prepareUndo(request);
        break;
    case FolderCommand::DeleteForGood:
        request.manner = DeleteManner::ForGood;
        prepare(request);
        break;
    default:
        prepare(request);
        break;
    }
}

void FolderActions::showEntry(FolderCommand command, const FolderSelection &selection)
{
    const FolderDiffItem &item = selection.items.first();
    const QString left = selection.side == Side::Right ? QString() : item.leftPath;
    const QString right = selection.side == Side::Left ? QString() : item.rightPath;
    if (command == FolderCommand::Properties) {
        const Sides<TreeFolder> entries{{m_context.roots.left.source, left}, {m_context.roots.right.source, right}};
        auto *dialog = new PropertiesDialog(entries, &m_window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
        return;
    }
    const QString path = left.isEmpty() ? right : left;
    showInFileManager(path, *this, [this, path] {
        Q_EMIT statusChanged(Velmora::tr("No file manager could be started for %1").arg(shownPath(path)));
    });
}

void FolderActions::askDestination(const ActionRequest &request)
{
    Dialogs::instance().openFolder(&m_window, Velmora::tr("Select destination folder"), {},
                                   [self = QPointer(this), request](const QString &folder) {
                                       ActionRequest answered = request;
                                       answered.destination = folder;
                                       if (self)
                                           self->prepare(answered);
                                   });
}

void FolderActions::askName(const ActionRequest &request)
{
    const bool renames = request.command == FolderCommand::Rename;
    const QString current = renames ? ownName(request.selection.items.first(), request.selection.side) : QString();
    Dialogs::instance().askText(&m_window, renames ? Velmora::tr("Rename") : Velmora::tr("New folder"),
                                renames ? Velmora::tr("New name:") : Velmora::tr("Folder name:"), current,
                                [self = QPointer(this), request, current](const QString &name) {
                                    ActionRequest answered = request;
                                    answered.name = name;
                                    if (self && !name.isEmpty() && name != current)
                                        self->prepare(answered);
                                });
}

void FolderActions::prepare(const ActionRequest &request)
{
    Q_EMIT statusChanged(Velmora::tr("Preparing... %1").arg(selectionTitle(request)));
    m_runner.start(
        [request, &files = m_files](const CancelFlag &cancel, Progress &progress) {
            return prepareAction(request, files, cancel, progress);
        },
        [this, request](RunOutcome<PreparedAction> &&outcome) {
            Q_EMIT statusChanged(endText(outcome.end, outcome.fault));
            if (outcome.end == RunEnd::Done)
                considerPlan(request, *outcome.value);
        },
        [this](const ProgressState &state) {
            FolderActionProgress progress;
            progress.path = shownPath(state.item);
            tellProgress(progress, preparingText(state));
        });
}

void FolderActions::considerPlan(ActionRequest request, const PreparedAction &prepared)
{
    request.context = prepared.context;
    if (prepared.plan.refusal != PlanRefusal::None || prepared.plan.steps.isEmpty()) {
        tellNothingDone(request, prepared.plan);
        return;
    }
    const auto go = [self = QPointer(this), request, plan = prepared.plan](PlanAnswer answer) {
        ActionRequest skipping = request;
        skipping.ifPresent = IfPresent::LeaveOut;
        ActionRequest carried = request;
        if (answer == PlanAnswer::KeepNothing)
            carried.keeping = Keeping::Nothing;
        if (self && answer != PlanAnswer::LeaveOutPresent)
            self->work(carried, plan);
        else if (self)
            self->prepare(skipping);
    };
    if (request.keeping == Keeping::NoNotes) // asked for twice already
        go(PlanAnswer::CarryOut);
    else
        confirmPlan(m_window, request, prepared.plan, journal().limits, go);
}

void FolderActions::tellNothingDone(const ActionRequest &request, const OperationPlan &plan)
{
    const ActionOutcome outcome = outcomeOfNothing(request, plan);
    Q_EMIT statusChanged(plan.refusal == PlanRefusal::None ? Velmora::tr("There is nothing to do.") : outcome.headline);
    if (outcome.problems.isEmpty())
        Dialogs::instance().tell(&m_window, Dialogs::Tone::Information, actionTitle(request), outcome.headline);
    else
        showFailure(outcome);
}

void FolderActions::work(const ActionRequest &request, const OperationPlan &plan)
{
    if (isRunning()) { // a new run would end the one before
        Q_EMIT statusChanged(Velmora::tr("Another command is running"));
        return;
    }
    m_counter = StepCounter(plan);
    m_runner.start(
        [request, plan, &files = m_files, place = journal()](const CancelFlag &cancel, Progress &progress) {
            return runAction(request, plan, files, place, cancel, progress);
        },
        [this, request](RunOutcome<ActionOutcome> &&outcome) {
            if (outcome.value)
                tellOutcome(request, *outcome.value);
            else
                Q_EMIT statusChanged(endText(outcome.end, outcome.fault));
        },
        [this](const ProgressState &state) {
            const FolderActionProgress progress = m_counter.count(state);
            tellProgress(progress, progress.filesTotal > 0 ? progressText(progress) : preparingText(state));
        });
}

void FolderActions::tellProgress(const FolderActionProgress &progress, const QString &text)
{
    Q_EMIT progressed(progress);
    if (!m_runner.isCancelling())
        Q_EMIT statusChanged(text);
}

void FolderActions::tellOutcome(const ActionRequest &request, const ActionOutcome &outcome)
{
    for (const QString &line : outcome.logLines)
        Q_EMIT logLine(line);
    const QString done = doneText(outcome);
    Q_EMIT logLine(done);
    Q_EMIT statusChanged(outcome.cancelled ? Velmora::tr("Cancelled. %1").arg(done) : done);
    if (!outcome.touched.isEmpty())
        Q_EMIT finished(outcome.touched);
    m_journalSeen = {};
    const bool mayDoWithout = request.manner == DeleteManner::ForGood || request.command == FolderCommand::UndoLast;
    if (outcome.lacksRecycleBin)
        offerDeletingForGood(request);
    else if (outcome.lacksJournal && mayDoWithout && request.keeping != Keeping::NoNotes)
        offerWithoutJournal(request, outcome);
    else if (!outcome.problems.isEmpty())
        showFailure(outcome);
}

void FolderActions::offerDeletingForGood(const ActionRequest &request)
{
    Dialogs::instance().askYesNo(&m_window, Velmora::tr("Delete"),
                                 Velmora::tr("There is no recycle bin for some of the entries, so that they are still "
                                             "there. Delete them for good?") +
                                     QLatin1String("\n\n") + sourceLines(request),
                                 false, [self = QPointer(this), request](bool yes) {
                                     ActionRequest again = request;
                                     again.manner = DeleteManner::ForGood;
                                     // The first run has changed what the comparison knows.
                                     again.context.isWhole = false;
                                     if (self && yes && !self->isRunning())
                                         self->prepare(again);
                                 });
}

void FolderActions::showFailure(const ActionOutcome &outcome)
{
    if (outcome.problems.size() == 1) {
        const QString reason = outcome.problems.first().reason;
        Dialogs::instance().tell(&m_window, Dialogs::Tone::Warning, outcome.title,
                                 reason.isEmpty() ? outcome.headline
                                                  : outcome.headline + QLatin1String("\n\n") + reason);
        return;
    }
    auto *dialog = new OperationResultsDialog(outcome.title, outcome.headline, outcome.problems, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

JournalPlace FolderActions::journal() const
{
    JournalPlace place = standardJournal();
    if (!m_journalFolder.isEmpty())
        place.folder = m_journalFolder;
    return place;
}

} // namespace velmora
