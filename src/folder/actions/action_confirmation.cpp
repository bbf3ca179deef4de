#include "folder/actions/action_confirmation.h"

#include "folder/actions/action_outcome.h"
#include "folder/actions/action_words.h"
#include "folder/actions/command_words.h"
#include "folder/actions/plan_preview_dialog.h"
#include "session/dialogs.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>
#include <QWidget>

#include <algorithm>

namespace velmora {

namespace {

/// A file that goes over another; of steps to the other side, where nothing is copied on a chance.
bool replaces(const OperationStep &step)
{
    return step.kind == OperationKind::Replace || (step.kind == OperationKind::Move && step.toSeen.isPresent());
}

bool losesNewer(const OperationStep &step)
{
    return replaces(step) && step.fromSeen.modifiedNs < step.toSeen.modifiedNs;
}

/// True when at most a single file is replaced, by a newer one: what a person does most, and can undo when as much is
/// kept.
bool isPlainReplacement(const OperationPlan &plan, qint64 keptBytes)
{
    qsizetype replacements = 0;
    for (const OperationStep &step : plan.steps) {
        if (!replaces(step))
            continue;
        ++replacements;
        if (losesNewer(step) || step.replacesProtected || step.toSeen.size > keptBytes || keptBytes == 0)
            return false;
    }
    return replacements <= 1;
}

/// Precondition: something is replaced.
QString replacementText(const OperationPlan &plan, Side side)
{
    const qint64 files = plan.totals().replacedFiles;
    if (files > 1)
        return Velmora::tr("%1 files will be replaced.").arg(QLocale().toString(files)) + QLatin1String("\n\n") +
               sideLine(side, plan.roots[side == Side::Left ? 0 : 1].path);
    const auto step = std::find_if(plan.steps.begin(), plan.steps.end(), replaces);
    const QString text =
        step->replacesProtected ? Velmora::tr("A read-only file will be replaced.")
        : losesNewer(*step)
            ? Velmora::tr("A newer file will be replaced by an older one.")
            : Velmora::tr("A file will be replaced, and its old contents will not be kept for undoing.");
    return text + QLatin1String("\n\n") + sideLine(side, plan.pathOf(step->to));
}

/// The questions about one plan. Copies share what they are about, and live in the callbacks.
class Confirmation {
public:
    Confirmation(QWidget &window, const ActionRequest &request, const OperationPlan &plan, const JournalLimits &limits,
                 const PlanAnswered &answered)
        : m_window(&window), m_request(request), m_plan(plan), m_limits(limits), m_answered(answered)
    {}

    void askMirror() const
    {
        const QString title = Velmora::tr("Confirm mirror sync");
        const auto ask = [*this, title] {
            preview(title,
                    Velmora::tr("Mirror makes the destination identical to the source; extra items on the destination "
                                "will be removed.") +
                        u'\n' + wayLines(),
                    Velmora::tr("&Mirror"));
        };
        if (!m_plan.sourceIsEmpty) {
            ask();
            return;
        }
        const QString source = shownPath(rootOn(m_request.context, sourceOf(m_request.command)));
        Dialogs::instance().askYesNo(m_window, title,
                                     Velmora::tr("There is nothing on the source side (%1), so that everything on the "
                                                 "destination side would be removed. Go on all the same?")
                                         .arg(source),
                                     false, [ask](bool yes) {
                                         if (yes)
                                             ask();
                                     });
    }

    void askUpdate() const
    {
        preview(Velmora::tr("Confirm update sync"),
                Velmora::tr("New and newer files are copied; nothing is removed.") + u'\n' + wayLines(),
                Velmora::tr("&Update"));
    }

    void askDelete() const
    {
        const QString question =
            Velmora::tr("Delete %1?").arg(selectionTitle(m_request)) + u'\n' + sourceLines(m_request);
        const bool forGood = m_request.manner == DeleteManner::ForGood;
        if (forGood) {
            askDeleteForGood(question);
            return;
        }
        if (m_plan.steps.size() > 1 || !m_plan.leftOut.isEmpty()) {
            preview(Velmora::tr("Delete"), question, Velmora::tr("&Delete"));
            return;
        }
        const QString manner = Velmora::tr("It goes to the recycle bin.");
        const bool isFolder = m_plan.steps.first().fromSeen.kind == NodeKind::Folder;
        const QString contents = isFolder ? u'\n' + totalsText(m_plan.totals()) : QString();
        Dialogs::instance().askYesNo(m_window, Velmora::tr("Delete"),
                                     question + QLatin1String("\n\n") + manner + contents, false,
                                     [answered = m_answered](bool yes) {
                                         if (yes)
                                             answered(PlanAnswer::CarryOut);
                                     });
    }

    /// What is deleted for good is kept all the same, where that is set: to free its space is another wish.
    void askDeleteForGood(const QString &question) const
    {
        enum Answer { Cancel, Delete, DeleteNow };
        const QString title = Velmora::tr("Delete");
        const bool keeps = m_limits.keptBytes > 0 && m_request.keeping == Keeping::OldContents;
        const QString manner = keeps
                                   ? Velmora::tr("It is deleted for good. For undoing it is kept for up to %1 days, so "
                                                 "that its space is not free before.")
                                         .arg(QLocale().toString(m_limits.days))
                                   : Velmora::tr("It is deleted for good, and nothing is kept for undoing.");
        if (m_plan.steps.size() > 1 || !m_plan.leftOut.isEmpty()) {
            auto *dialog = new PlanPreviewDialog(title, question + u'\n' + manner, Velmora::tr("&Delete for good"),
                                                 m_plan, m_window);
            if (keeps)
                dialog->offer(Velmora::tr("&Keep nothing for undoing"),
                              Velmora::tr("The space is free at once, and nobody can bring the contents back."));
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            QObject::connect(dialog, &QDialog::accepted, m_window, [dialog, answered = m_answered] {
                answered(dialog->isOfferTaken() ? PlanAnswer::KeepNothing : PlanAnswer::CarryOut);
            });
            dialog->open();
            return;
        }
        QList<Dialogs::Choice> choices{{Velmora::tr("&Delete for good"), Delete, false, false},
                                       {Velmora::tr("Cancel"), Cancel, true, true}};
        if (keeps)
            choices.insert(1, {Velmora::tr("Delete and &keep nothing"), DeleteNow, false, false});
        Dialogs::instance().ask(m_window, Dialogs::Tone::Warning, title, question + QLatin1String("\n\n") + manner,
                                choices, [answered = m_answered](int answer) {
                                    if (answer != Cancel)
                                        answered(answer == Delete ? PlanAnswer::CarryOut : PlanAnswer::KeepNothing);
                                });
    }

    void askReplacing() const
    {
        enum Answer { Cancel, Replace, ShowList };
        const QString title = Velmora::tr(wordsOf(m_request.command).name);
        Dialogs::instance().ask(
            m_window, Dialogs::Tone::Warning, title, replacementText(m_plan, otherSide(sourceOf(m_request.command))),
            {{Velmora::tr("&Replace"), Replace, false, false},
             {Velmora::tr("&Show list..."), ShowList, false, false},
             {Velmora::tr("Cancel"), Cancel, true, true}},
            [*this, title](int answer) {
                if (answer == Replace)
                    m_answered(PlanAnswer::CarryOut);
                else if (answer == ShowList)
                    preview(title, actionTitle(m_request) + u'\n' + wayLines(), Velmora::tr("&Replace"));
            });
    }

    /// Not everything can be taken along: what stays behind is named first.
    void askIncomplete() const
    {
        preview(Velmora::tr(wordsOf(m_request.command).name), actionTitle(m_request) + u'\n' + wayLines(),
                isMove(m_request.command) ? Velmora::tr("&Move") : Velmora::tr("&Copy"));
    }

    /// `taken` is the number of files that are there already.
    void askReplacingThere(qsizetype taken) const
    {
        enum Answer { Cancel, Replace, Skip };
        Dialogs::instance().ask(m_window, Dialogs::Tone::Warning, actionTitle(m_request),
                                Velmora::tr("Files of the same name in the destination folder: %1. Replace them?")
                                        .arg(QLocale().toString(taken)) +
                                    QLatin1String("\n\n") + wayLines(),
                                {{Velmora::tr("&Replace"), Replace, false, false},
                                 {Velmora::tr("&Skip them"), Skip, true, false},
                                 {Velmora::tr("Cancel"), Cancel, false, true}},
                                [answered = m_answered](int answer) {
                                    if (answer != Cancel)
                                        answered(answer == Replace ? PlanAnswer::CarryOut
                                                                   : PlanAnswer::LeaveOutPresent);
                                });
    }

private:
    /// Where entries come from and where they go.
    [[nodiscard]] QString wayLines() const
    {
        const QString from = sourceLines(m_request);
        if (m_request.command == FolderCommand::UpdateBoth)
            return from;
        const Side target = otherSide(sourceOf(m_request.command));
        const QString to = m_request.destination.isEmpty() ? sideLine(target, rootOn(m_request.context, target))
                                                           : shownPath(m_request.destination);
        return from + QStringLiteral("\n→ ") + to;
    }

    void preview(const QString &title, const QString &question, const QString &consent) const
    {
        previewPlan(*m_window, m_plan, title, question, consent,
                    [answered = m_answered] { answered(PlanAnswer::CarryOut); });
    }

    QWidget *m_window;
    ActionRequest m_request;
    OperationPlan m_plan;
    JournalLimits m_limits;
    PlanAnswered m_answered;
};

qsizetype presentTargets(const OperationPlan &plan)
{
    return std::count_if(plan.steps.begin(), plan.steps.end(), [](const OperationStep &step) {
        return step.to.isSet() && step.toSeen.isPresent() && step.kind != OperationKind::MakeFolder;
    });
}

bool leavesKindsBehind(const OperationPlan &plan)
{
    return std::any_of(plan.leftOut.begin(), plan.leftOut.end(),
                       [](const LeftOutEntry &entry) { return entry.reason == LeftOutReason::UnsupportedKind; });
}

} // namespace

void confirmPlan(QWidget &window, const ActionRequest &request, const OperationPlan &plan, const JournalLimits &limits,
                 const PlanAnswered &answered)
{
    const Confirmation confirmation(window, request, plan, limits, answered);
    const bool goesToPlace = request.command == FolderCommand::CopyTo || request.command == FolderCommand::MoveTo;
    const qsizetype taken = goesToPlace ? presentTargets(plan) : 0;
    switch (kindOf(request.command)) {
    case CommandKind::Mirror:
        return confirmation.askMirror();
    case CommandKind::Update:
    case CommandKind::UpdateBoth:
        return confirmation.askUpdate();
    case CommandKind::Delete:
        return confirmation.askDelete();
    default:
        break;
    }
    if (taken > 0)
        confirmation.askReplacingThere(taken);
    else if (leavesKindsBehind(plan))
        confirmation.askIncomplete();
    else if (goesToPlace || isPlainReplacement(plan, limits.keptBytes))
        answered(PlanAnswer::CarryOut);
    else
        confirmation.askReplacing();
}

void previewPlan(QWidget &window, const OperationPlan &plan, const QString &title, const QString &question,
                 const QString &consent, const std::function<void()> &agreed)
{
    auto *dialog = new PlanPreviewDialog(title, question, consent, plan, &window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, &window, agreed);
    dialog->open();
}

} // namespace velmora
