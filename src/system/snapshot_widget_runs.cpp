#include "core/visible_name.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/status_line.h"
#include "session/translate.h"
#include "system/snapshot_failure.h"
#include "system/snapshot_rows_model.h"
#include "system/snapshot_side.h"
#include "system/snapshot_view.h"
#include "system/snapshot_widget.h"

#include <QDir>
#include <QLineEdit>

namespace velmora {

// Capturing, loading, saving ------------------------------------------------------------------------------------------

void SnapshotWidget::onCaptureLeft()
{
    capture(*m_left);
}

void SnapshotWidget::onCaptureRight()
{
    capture(*m_right);
}

void SnapshotWidget::onLoadLeft()
{
    askForFile(*m_left);
}

void SnapshotWidget::onLoadRight()
{
    askForFile(*m_right);
}

void SnapshotWidget::onSaveLeft()
{
    askWhereToSave(*m_left);
}

void SnapshotWidget::onSaveRight()
{
    askWhereToSave(*m_right);
}

void SnapshotWidget::onCancel()
{
    m_runner.cancel();
}

void SnapshotWidget::run(SnapshotOrder order, std::function<void(SnapshotOutcome &&)> done)
{
    showNotice(); // in place of an earlier failure
    m_runner.start(
        [order = std::move(order), kind = m_kind](const CancelFlag &cancel, Progress &progress) {
            return carryOut(order, kind, cancel, progress);
        },
        [this, done = std::move(done)](RunOutcome<SnapshotOutcome> &&outcome) {
            m_status->clearProgress();
            if (outcome.end == RunEnd::Done)
                done(std::move(*outcome.value));
            else if (outcome.end == RunEnd::Cancelled)
                m_status->showMessage(Velmora::tr("Cancelled"));
            else
                m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory for these snapshots")),
                                      {});
        },
        [this](const ProgressState &state) { showProgress(state); });
}

void SnapshotWidget::capture(SnapshotSide &side)
{
    SnapshotOrder order;
    (isLeft(side) ? order.left : order.right).source = SideOrder::Source::Capture;
    run(std::move(order), [this, &side](SnapshotOutcome &&outcome) {
        const SideResult &result = isLeft(side) ? outcome.left : outcome.right;
        if (tellFailure(result, {}))
            return;
        side.take(side.livePlace(), result);
        m_status->showMessage(Velmora::tr(m_kind.captured).arg(result.snapshot->size()));
    });
}

void SnapshotWidget::askForFile(SnapshotSide &side)
{
    const QString place = side.place();
    const QString filter = Velmora::tr(m_kind.fileFilter) + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    Dialogs::instance().openFile(
        this, isLeft(side) ? Velmora::tr("Load the left side") : Velmora::tr("Load the right side"),
        side.isLive() ? QString() : place, filter, [this, &side](const QString &path) { load(side, path); });
}

void SnapshotWidget::load(SnapshotSide &side, const QString &path)
{
    SnapshotOrder order;
    (isLeft(side) ? order.left : order.right) = {SideOrder::Source::Load, path, {}};
    run(std::move(order), [this, &side, path](SnapshotOutcome &&outcome) {
        const SideResult &result = isLeft(side) ? outcome.left : outcome.right;
        if (tellFailure(result, path))
            return;
        side.take(path, result);
        m_status->showMessage(Velmora::tr("Loaded %1 item(s)").arg(result.snapshot->size()),
                              result.repeated > 0
                                  ? Velmora::tr("%1 name(s) more than once; the last one counts").arg(result.repeated)
                                  : QString());
    });
}

void SnapshotWidget::submit(SnapshotSide &side)
{
    if (m_runner.isRunning() || side.place().isEmpty())
        return;
    if (side.isLive())
        capture(side);
    else
        load(side, side.place());
}

void SnapshotWidget::askWhereToSave(SnapshotSide &side)
{
    // What the field of an empty side promises is taken now, before it is asked for a name.
    Progress none;
    const Snapshot snapshot = side.holdsSnapshot() ? side.snapshot() : m_kind.capture({}, none).snapshot;
    Dialogs::instance().saveFile(
        this, isLeft(side) ? Velmora::tr("Save the left side") : Velmora::tr("Save the right side"),
        besideFile(side.isLive() ? QString() : side.place(), QLatin1String(m_kind.suggestedFile)),
        Velmora::tr(m_kind.fileFilter), [this, snapshot](const QString &path) { save(path, snapshot); });
}

void SnapshotWidget::save(const QString &path, const Snapshot &snapshot)
{
    m_runner.start([path, snapshot, form = m_kind.form, readers = m_kind.readers](
                       const CancelFlag &, Progress &) { return saveSnapshot(path, snapshot, form, readers); },
                   [this, path](RunOutcome<SaveResult> &&outcome) {
                       const QString shown = visibleName(QDir::toNativeSeparators(path));
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
    if (!m_hasResult)
        m_view->setNotice(failure.detail.isEmpty() ? failure.text : failure.text + u'\n' + failure.detail);
    return true;
}

// Comparing -----------------------------------------------------------------------------------------------------------

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
    m_hasResult = true;
    m_rows->setRows(std::move(*outcome.rows));
    showNotice();
    showShownCount();
    m_status->showMessage(Velmora::tr(m_kind.finished).arg(count));
    if (QWidget *focus = focusWidget(); !focus || focus == &m_left->field() || focus == &m_right->field())
        m_view->setFocus();
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
