#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/path_edit.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "system/snapshot_failure.h"
#include "system/snapshot_side.h"
#include "system/snapshot_widget.h"

#include <QLineEdit>

namespace velmora {

// Capturing, loading, saving
// ------------------------------------------------------------------------------------------

void SnapshotWidget::run(SnapshotOrder order, std::function<void(SnapshotOutcome &&)> done)
{
    inviteFiles();
    m_runner.start(
        [order = std::move(order), kind = m_kind](const CancelFlag &cancel, Progress &progress) {
            return carryOut(order, kind, cancel, progress);
        },
        [this, done = std::move(done)](RunOutcome<SnapshotOutcome> &&outcome) {
            handOver(std::move(outcome), *m_status, Velmora::tr("Not enough memory for these snapshots"), done);
        },
        [this](const ProgressState &state) { showProgress(state); });
}

void SnapshotWidget::askForFile(SnapshotSide &side)
{
    const QString place = side.place();
    const QString filter = Velmora::tr(m_kind.fileFilter) + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    Dialogs::instance().openFile(
        this, &side == m_left ? Velmora::tr("Load the left side") : Velmora::tr("Load the right side"),
        side.isLive() ? QString() : place, filter, [this, &side](const QString &path) { fetch(side, path); });
}

void SnapshotWidget::fetch(SnapshotSide &side, const QString &place)
{
    const bool captures = place == side.livePlace();
    const SideOrder wanted =
        captures ? SideOrder{SideOrder::Source::Capture, {}, {}} : SideOrder{SideOrder::Source::Load, place, {}};
    const bool left = &side == m_left;
    run(left ? SnapshotOrder{wanted, {}} : SnapshotOrder{{}, wanted}, [this, &side, place, captures,
                                                                       left](SnapshotOutcome &&outcome) {
        const SideResult &result = left ? outcome.left : outcome.right;
        if (tellFailure(result, place))
            return;
        side.take(place, result);
        const QString text = captures ? Velmora::tr(m_kind.captured) : Velmora::tr("Loaded %1 item(s)");
        m_status->showMessage(text.arg(result.snapshot->size()),
                              result.repeated > 0
                                  ? Velmora::tr("%1 name(s) more than once; the last one counts").arg(result.repeated)
                                  : QString());
    });
}

void SnapshotWidget::submit(SnapshotSide &side)
{
    if (!m_runner.isRunning() && !side.place().isEmpty())
        fetch(side, side.place());
}

void SnapshotWidget::askWhereToSave(SnapshotSide &side)
{
    // What the field of an empty side promises is taken now, before it is asked for a name.
    Progress none;
    const Snapshot snapshot = side.holdsSnapshot() ? side.snapshot() : m_kind.capture({}, none).snapshot;
    Dialogs::instance().saveFile(
        this, &side == m_left ? Velmora::tr("Save the left side") : Velmora::tr("Save the right side"),
        besideFile(side.isLive() ? QString() : side.place(), QLatin1String(m_kind.suggestedFile)),
        Velmora::tr(m_kind.fileFilter), [this, snapshot](const QString &path) { save(path, snapshot); });
}

void SnapshotWidget::save(const QString &path, const Snapshot &snapshot)
{
    m_runner.start([path, snapshot, form = m_kind.form, readers = m_kind.readers](
                       const CancelFlag &, Progress &) { return saveSnapshot(path, snapshot, form, readers); },
                   [this, path](RunOutcome<SaveResult> &&outcome) {
                       const QString shown = shownPath(path);
                       if (outcome.value && outcome.value->ok()) {
                           m_status->showMessage(Velmora::tr("Saved %1").arg(shown));
                           return;
                       }
                       const QString text = Velmora::tr(m_kind.cannotWrite);
                       m_status->showFailure(text.contains(QLatin1String("%1")) ? text.arg(shown) : text,
                                             outcome.value
                                                 ? outcome.value->error
                                                 : faultText(outcome.fault, Velmora::tr("Not enough memory")));
                   });
}

bool SnapshotWidget::tellFailure(const SideResult &result, const QString &place)
{
    const SnapshotFailure failure = describeFailure(result, m_kind, place);
    if (failure.text.isEmpty())
        return false;
    m_status->showFailure(failure.text, failure.detail);
    m_list->setNotice(failure.detail.isEmpty() ? failure.text : failure.text + u'\n' + failure.detail);
    return true;
}

// Comparing
// -----------------------------------------------------------------------------------------------------------

void SnapshotWidget::onCompare()
{
    if (m_runner.isRunning() || !m_left->isFilled() || !m_right->isFilled())
        return;
    run({m_left->orderForCompare(), m_right->orderForCompare(), true},
        [this](SnapshotOutcome &&outcome) { takeComparison(std::move(outcome)); });
}

void SnapshotWidget::takeComparison(SnapshotOutcome &&outcome)
{
    const SessionPaths compared = paths();
    m_left->takeCompared(outcome.left);
    m_right->takeCompared(outcome.right);
    if (tellFailure(outcome.left, compared.left) || tellFailure(outcome.right, compared.right))
        return;
    const qsizetype count = outcome.rows->size();
    m_list->setResult(std::make_unique<KeyedList>(Velmora::tr(m_kind.keyColumn), std::move(*outcome.rows)));
    m_status->showMessage(Velmora::tr(m_kind.finished).arg(count));
    const QWidget *focus = focusWidget();
    if (!focus || focus == &m_left->field().lineEdit() || focus == &m_right->field().lineEdit())
        m_list->setFocus();
    showTitle();
    Q_EMIT comparisonFinished(compared.left, compared.right);
}

/// The tab is called after the files; one without a file keeps the name that it was opened under.
void SnapshotWidget::showTitle()
{
    QString title;
    if (m_left->isFile() || m_right->isFile())
        title = Velmora::tr("%1 <-> %2").arg(m_left->name(), m_right->name());
    else if (!m_title.isEmpty())
        title = Velmora::tr(m_kind.heading);
    if (title.isEmpty() || title == m_title)
        return;
    m_title = title;
    Q_EMIT tabTitleChanged(title);
}

} // namespace velmora
