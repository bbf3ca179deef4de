#include "merge/change_list.h"
#include "merge/merge_bar.h"
#include "merge/merge_editing.h"
#include "merge/merge_heads.h"
#include "merge/merge_recovery.h"
#include "merge/three_way_merge_widget.h"
#include "session/document/change_watcher.h"
#include "session/document/recovery_keeper.h"
#include "session/document/text_description.h"
#include "session/fault_text.h"
#include "session/frame/notice_card.h"
#include "session/frame/progress_strip.h"
#include "session/pane/pane_options.h"
#include "session/pane/syntax_detection.h"
#include "session/pane/text_pane.h"
#include "session/translate.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace velmora {

namespace {

constexpr QLatin1String partsKey("parts");
constexpr QLatin1String runsKey("runs");

QString pathOf(const SessionPaths &paths, MergeSource source)
{
    return source == MergeSource::Left ? paths.left : source == MergeSource::Base ? paths.base : paths.right;
}

bool isAlone(const SessionPaths &paths)
{
    return !paths.left.isEmpty() && paths.right.isEmpty() && paths.base.isEmpty();
}

} // namespace

// Merging -------------------------------------------------------------------------------------------------------------

void ThreeWayMergeWidget::start()
{
    m_runner.abandon();
    onMerge();
}

QString ThreeWayMergeWidget::problem() const
{
    const SessionPaths chosen = paths();
    if (chosen.left.isEmpty())
        return Velmora::tr("Select the versions to merge and their base, or one file with conflict markers");
    if (!isAlone(chosen) && chosen.right.isEmpty())
        return Velmora::tr("Select the right version");
    for (const MergeSource source : {MergeSource::Left, MergeSource::Base, MergeSource::Right}) {
        const TextInput &input = m_heads->input(source);
        const bool isKept = m_keptSources[std::size_t(source)].has_value();
        if (!isKept && !input.path().isEmpty() && !input.exists())
            return Velmora::tr("There is no such file: %1").arg(QDir::toNativeSeparators(input.path()));
        if (!isKept && input.isFileAtLeast(TextInput::sizeLimit))
            return Velmora::tr("File too large to be merged here (limit %1 MB)").arg(TextInput::limitInMegabytes);
    }
    return {};
}

void ThreeWayMergeWidget::onMerge()
{
    if (m_runner.isRunning()) {
        m_runner.cancel();
        showMessage(Velmora::tr("Cancelling..."));
        return;
    }
    if (const QString why = problem(); !why.isEmpty()) {
        showMessage(why);
        return;
    }
    mergeAnew([this] { startMerge(ChangedFile::Reload, {}); });
}

void ThreeWayMergeWidget::mergeAnew(std::function<void()> start)
{
    m_texts->confirmDiscard([] { return QList<PaneIndex>{paneOfResult}; }, Velmora::tr("Merge anew"),
                            [](const QList<PaneIndex> &) {
                                return Velmora::tr("The result has unsaved decisions and edits. Give them up?");
                            },
                            std::move(start));
}

void ThreeWayMergeWidget::settleTouching(bool settles)
{
    const bool isMerged = m_view->document() || m_runner.isRunning();
    if (!isMerged || isAlone(paths()) || !problem().isEmpty())
        return;
    m_bar->settleTouching->setChecked(!settles); // until it is known that no decisions are in the way
    mergeAnew([this, settles] {
        m_bar->settleTouching->setChecked(settles);
        startMerge(ChangedFile::KeepLoaded, {});
    });
}

void ThreeWayMergeWidget::startMerge(ChangedFile changed, std::optional<KeptMerge> kept)
{
    m_running = paths();
    MergeRequest request;
    request.kept = std::move(kept);
    request.isMarked = isAlone(m_running) && !request.kept;
    request.options.joinTouching = !m_bar->settleTouching->isChecked();
    request.tabWidth = m_paneOptions->tabWidth();
    for (std::size_t k = 0; k < mergeSourceCount; ++k) {
        request.sources[k] = m_heads->input(MergeSource(k)).origin(changed);
        if (m_keptSources[k])
            request.sources[k].loaded = m_keptSources[k];
    }
    if (isAlone(m_running) && m_output.isEmpty())
        m_output = m_running.left;
    request.output.path = QFileInfo(m_output).isFile() ? m_output : QString();
    showMessage(Velmora::tr("Merging..."));
    m_runner.start([request = std::move(request)](const CancelFlag &cancel,
                                                  Progress &progress) { return runMerge(request, cancel, progress); },
                   [this](RunOutcome<MergeResult> &&outcome) { takeOutcome(std::move(outcome)); },
                   [this](const ProgressState &state) { showProgress(state); });
}

void ThreeWayMergeWidget::takeOutcome(RunOutcome<MergeResult> &&outcome)
{
    using End = MergeResult::End;
    if (outcome.end == RunEnd::Cancelled) {
        showMessage(Velmora::tr("Merge cancelled"));
        return;
    }
    if (!outcome.value) {
        showMessage(faultText(outcome.fault, Velmora::tr("Not enough memory to merge these files")));
        return;
    }
    const QString path = QDir::toNativeSeparators(pathOf(m_running, outcome.value->failed));
    switch (outcome.value->end) {
    case End::Unreadable:
        showMessage(Velmora::tr("Cannot open file: %1").arg(path));
        break;
    case End::TooLarge:
        showMessage(Velmora::tr("File too large to be merged here (limit %1 MB)").arg(TextInput::limitInMegabytes));
        break;
    case End::NoMarkers:
        m_output.clear();
        showMessage(Velmora::tr("This file has no complete conflict markers: select the other version and the base"));
        break;
    case End::Merged:
        takeResult(std::move(*outcome.value));
        break;
    }
}

void ThreeWayMergeWidget::takeResult(MergeResult &&result)
{
    m_merged = m_running;
    m_labels = result.labels;
    m_savedWhole.clear();
    for (std::size_t k = 0; k < mergeSourceCount; ++k)
        m_heads->input(MergeSource(k)).setLoaded(result.sources[k], pathOf(m_running, MergeSource(k)));
    m_heads->result().setPath(m_output);
    m_heads->result().setLoaded(result.output, m_output);
    m_heads->showResult(m_output);
    m_texts->editor().setObstacle(paneOfResult, describeLoss(m_texts->at(paneOfResult)));
    m_editing->setMerge(result.document, std::move(result.parts), std::move(result.result));
    chooseSyntax();
    m_format->setText(describeEncoding(result.output.missing ? result.sources[0] : result.output));
    setFocusProxy(m_view);
    m_view->pane(paneOfResult).setFocus();
    m_view->notice(paneOfResult).clear();
    m_bar->showMerge(true);
    m_title.clear();
    showTitle();
    m_watcher->follow();
    if (m_editing->parts().openConflicts() > 0 && !m_recovered)
        m_editing->goToPart(m_editing->parts().nextConflict(-1, true, true));
    showPosition();
    showCounts();
    if (result.lineEnds)
        showMessage(Velmora::tr("The texts end their lines differently: the result ends them with %1")
                        .arg(lineEndStyleName(*result.lineEnds)));
    if (m_recovered) {
        m_texts->editor().markUnsaved(paneOfResult);
        m_keeper->keepNow(std::exchange(m_recovered, {}));
    }
    Q_EMIT comparisonFinished(m_merged.left, m_merged.right);
}

void ThreeWayMergeWidget::chooseSyntax()
{
    std::shared_ptr<const SyntaxDefinition> found;
    const MergeDocument &document = *m_view->document();
    for (const QString &path : {m_output, m_merged.left, m_merged.right, m_merged.base}) {
        if (!found)
            found = detectSyntax(path, document.source(paneOfResult));
    }
    for (int pane = 0; pane < m_view->paneCount(); ++pane)
        m_view->scene().colouring(pane).setDefinition(found);
}

void ThreeWayMergeWidget::showProgress(const ProgressState &state)
{
    if (state.phase == 0 || state.total <= 0)
        m_progress->showBusy();
    else
        m_progress->showFraction(double(state.done) / double(state.total));
}

void ThreeWayMergeWidget::showRunning()
{
    m_bar->showMerging(m_runner.isRunning());
    if (m_runner.isRunning())
        return;
    m_progress->clear();
    Q_EMIT readingEnded();
}

// Crash recovery ------------------------------------------------------------------------------------------------------

void ThreeWayMergeWidget::connectRecovery()
{
    m_keeper->setSource([this] { return unsavedTexts(); });
    connect(&m_texts->editor(), &PaneEditor::stateChanged, m_keeper,
            [this] { m_keeper->takeChange(m_view->document() && m_texts->isModified(paneOfResult)); });
    connect(m_keeper, &RecoveryKeeper::failed, this, [this](const QString &why) {
        showMessage(Velmora::tr("Unsaved changes cannot be kept for a restart: %1").arg(why));
    });
}

/// The versions are kept, too: the files of a merge that another program asked for may be gone by then.
UnsavedTexts ThreeWayMergeWidget::unsavedTexts() const
{
    UnsavedTexts kept{kind(), m_merged, options(), m_texts->unsaved()};
    if (kept.texts.empty())
        return kept;
    kept.options.insert(partsKey, toJson(m_editing->parts().all()));
    const auto result = m_texts->editor().buffer(paneOfResult).snapshot();
    kept.options.insert(runsKey, toJson(m_view->document()->merged(), result->runs(0, result->count())));
    for (std::size_t k = 0; k < mergeSourceCount; ++k) {
        const auto source = MergeSource(k);
        kept.texts.push_back({paneOf(source), pathOf(m_merged, source), m_heads->input(source).loaded(), false,
                              m_texts->editor().buffer(paneOf(source)).snapshot()});
    }
    return kept;
}

void ThreeWayMergeWidget::recover(const RecoveryRecord &record, std::function<void()> kept)
{
    const std::optional<UnsavedTexts> texts = fromRecoveryRecord(record);
    if (!texts || texts->kind != kind())
        return;
    setOptions(texts->options);
    setPaths(texts->paths);
    KeptMerge merge{partsFromJson(texts->options.value(partsKey).toArray()),
                    {},
                    runsFromJson(texts->options.value(runsKey).toArray())};
    for (const UnsavedText &text : texts->texts) {
        if (text.pane == paneOfResult)
            merge.result = text.loaded.text.lines;
        else if (text.pane.number() >= 0 && std::size_t(text.pane.number()) < mergeSourceCount)
            m_keptSources[std::size_t(text.pane.number())] = text.loaded;
    }
    m_recovered = std::move(kept);
    startMerge(ChangedFile::KeepLoaded, std::move(merge));
}

} // namespace velmora
