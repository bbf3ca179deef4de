#include "text/text_compare_widget.h"

#include "session/dialogs.h"
#include "session/document/change_watcher.h"
#include "session/document/conflict_notice.h"
#include "session/document/recovery_keeper.h"
#include "session/fault_text.h"
#include "session/find/find_bar.h"
#include "session/find/find_controller.h"
#include "session/find/replace_controller.h"
#include "session/frame/notice_bar.h"
#include "session/frame/progress_strip.h"
#include "session/frame/status_line.h"
#include "session/pane/text_pane.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "settings/dialogs/text_session_settings_dialog.h"
#include "settings/options/text_defaults.h"
#include "text/editing/text_editing.h"
#include "text/manual_alignment.h"
#include "text/result/patch_copy.h"
#include "text/result/result_presenter.h"
#include "text/result/side_description.h"
#include "text/syntax_choice.h"
#include "text/text_compare_bar.h"
#include "text/text_inputs.h"
#include "text/text_view_options.h"
#include "text/view/diff_view.h"
#include "text/view/line_detail.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

namespace velmora {

namespace {

/// Beside the keys of the options: the lines that were aligned by hand.
constexpr QLatin1String alignedLinesKey("alignedLines");

} // namespace

TextCompareWidget::TextCompareWidget(SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_options(loadDefaultTextOptions()),
      m_bar(new TextCompareBar(this)),
      m_inputs(new TextInputs(this)),
      m_progress(new ProgressStrip(this)),
      m_verdict(new NoticeBar(QStringLiteral("verdictBar"), this)),
      m_view(new DiffView(this)),
      m_presenter(new ResultPresenter(window, *m_view, *m_verdict, this)),
      m_editing(new TextEditing(*m_view, *m_inputs, this)),
      m_patches(new PatchCopy(this)),
      m_findBar(
          new FindBar({Velmora::tr("Find in this side"),
                       Velmora::tr("Replace all matches in the whole text of this side, shown or not, as one step")},
                      this)),
      m_finder(new FindController(*m_findBar, *m_view, this)),
      m_replacer(new ReplaceController(*m_findBar, *m_finder, *m_view, m_editing->editor(), this)),
      m_alignment(new ManualAlignment(*m_view, m_editing->editor(), this)),
      m_changeBar(new NoticeBar(QStringLiteral("changeBar"), this)),
      m_conflicts(new ConflictNotice(window, this)),
      m_changes(
          new ChangeWatcher(*m_changeBar, m_editing->texts(), Velmora::tr("Both files have changed on disk."), this)),
      m_foot(new StatusLine(this)),
      m_blocks(m_foot->addFact(QStringLiteral("blocksLabel"))),
      m_place(m_foot->addFact(QStringLiteral("placeLabel"))),
      m_format(m_foot->addFact(QStringLiteral("formatLabel"))),
      m_keeper(new RecoveryKeeper(window.recovery(), this)),
      m_reports(window, *this, Velmora::tr("Export diff report"))
{
    m_blocks->setToolTip(
        Velmora::tr("A block is a run of rows that differ; the bar above counts and steps through blocks"));
    showMessage(Velmora::tr("Ready"));
    buildLayout();
    connectBar();
    connectInputs();
    connectEditing();
    connectRecovery();
    connect(m_changes, &ChangeWatcher::reloadWanted, this,
            [this](const QList<PaneIndex> &panes) { reload(panes.contains(Side::Left), panes.contains(Side::Right)); });
    connectAlignment();
    addPresets();
    addReportForms();
    connect(&m_runner, &Runner::runningChanged, this, &TextCompareWidget::showRunning);
    connect(&m_runner, &Runner::runningChanged, this, [this] {
        if (!m_runner.isRunning())
            Q_EMIT readingEnded();
    });
    connect(&m_view->scene(), &PaneScene::currentBlockChanged, this, &TextCompareWidget::showPosition);
    connect(&m_view->scene(), &PaneScene::documentChanged, this, &TextCompareWidget::showPosition);
    connect(&m_view->scene(), &PaneScene::caretMoved, this, &TextCompareWidget::showPosition);
    connect(&m_view->scene(), &PaneScene::caretMoved, this, &TextCompareWidget::showCaret);
    connect(&m_view->scene().changes(), &IntraLineChanges::arrived, this, &TextCompareWidget::showPosition);
    connect(m_verdict, &NoticeBar::actionWanted, this, &TextCompareWidget::onIgnoreMinor);
    connect(m_bar->ignoreMinor, &QAction::toggled, this, &TextCompareWidget::showCounts);
    connect(m_view, &DiffView::panesMoved, m_inputs,
            [this] { m_inputs->alignTo(m_view->pane(Side::Left), m_view->pane(Side::Right)); });
    connect(m_view, &DiffView::contextMenuWanted, this, &TextCompareWidget::showContextMenu);
    connect(&m_reports, &ReportSaver::failed, this, [this](const QString &message) { showMessage(message); });
    m_inputs->apply(m_options);
}

TextCompareWidget::~TextCompareWidget() = default;

void TextCompareWidget::buildLayout()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_inputs);
    column->addWidget(m_progress);
    column->addWidget(m_changeBar);
    column->addWidget(m_conflicts);
    column->addWidget(m_verdict);
    column->addWidget(m_view, 1);
    auto *detail = new LineDetail(m_view->scene(), this);
    m_viewOptions = new TextViewOptions(*m_bar, *m_view, *detail, this);
    column->addWidget(detail);
    column->addWidget(m_findBar);
    column->addWidget(m_foot);
    setFocusProxy(m_inputs);
}

void TextCompareWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, void (TextCompareWidget::*slot)()) {
        connect(action, &QAction::triggered, this, slot);
    };
    onTrigger(m_bar->compare, &TextCompareWidget::onCompare);
    onTrigger(m_bar->cancel, &TextCompareWidget::onCompare);
    onTrigger(m_bar->reload, &TextCompareWidget::onReloadBoth);
    onTrigger(m_bar->previousDifference, &TextCompareWidget::onPrevDiff);
    onTrigger(m_bar->nextDifference, &TextCompareWidget::onNextDiff);
    onTrigger(m_bar->showAll, &TextCompareWidget::onShowAll);
    onTrigger(m_bar->showDifferences, &TextCompareWidget::onShowDifferences);
    onTrigger(m_bar->showIdentical, &TextCompareWidget::onShowIdentical);
    onTrigger(m_bar->find, &TextCompareWidget::onFind);
    connect(m_bar->replace, &QAction::triggered, m_finder, &FindController::openForReplacing);
    connect(m_replacer, &ReplaceController::message, this, [this](const QString &text) {
        m_replaced = text;
        showMessage(text);
    });
    onTrigger(m_bar->findNext, &TextCompareWidget::onFindNext);
    onTrigger(m_bar->findPrevious, &TextCompareWidget::onFindPrev);
    onTrigger(m_bar->goToLine, &TextCompareWidget::onGotoLine);
    connect(m_findBar, &FindBar::queryChanged, this, &TextCompareWidget::onFindTextChanged);
    connect(m_findBar, &FindBar::nextWanted, this, &TextCompareWidget::onFindNext);
    connect(m_findBar, &FindBar::previousWanted, this, &TextCompareWidget::onFindPrev);
    connect(m_findBar, &FindBar::closeWanted, this, &TextCompareWidget::onFindClose);
    onTrigger(m_bar->swapSides, &TextCompareWidget::onSwapSides);
    onTrigger(m_bar->exportReport, &TextCompareWidget::onExportHtml);
    connect(m_bar->settings, &QAction::triggered, this,
            [this] { onSessionSettings(TextSessionSettingsDialog::Importance); });
    connect(m_bar->wrapLines, &QAction::toggled, this, &TextCompareWidget::tellOfUnwrapped);
    onTrigger(m_bar->copyPatch, &TextCompareWidget::copyAsPatch);
    connect(m_bar->takeClipboard, &QAction::triggered, this,
            [this] { useClipboardText(sideOf(m_view->focusedPane())); });
    connect(m_patches, &PatchCopy::message, this, &TextCompareWidget::showMessage);
    connect(m_bar->switchPane, &QAction::triggered, m_view, &DiffView::switchPane);
}

void TextCompareWidget::connectInputs()
{
    connect(m_inputs, &TextInputs::browseRequested, this, &TextCompareWidget::browse);
    connect(m_inputs, &TextInputs::encodingChosen, this, &TextCompareWidget::chooseEncoding);
    connect(m_inputs, &TextInputs::submitted, this, [this] {
        m_view->setFocus();
        start();
    });
}

// The session as the window knows it ----------------------------------------------------------------------------------

SessionPaths TextCompareWidget::paths() const
{
    return m_inputs->paths();
}

void TextCompareWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
}

void TextCompareWidget::start()
{
    m_runner.abandon();
    onCompare();
}

QJsonObject TextCompareWidget::options() const
{
    QJsonObject object = toJson(m_options);
    if (!m_alignment->pairs().isEmpty())
        object.insert(alignedLinesKey, m_alignment->pairs().toJson());
    return object;
}

void TextCompareWidget::setOptions(const QJsonObject &options)
{
    if (!fromJson(options, m_options))
        return;
    m_inputs->apply(m_options);
    m_alignment->setPairs(LinePairs::fromJson(options.value(alignedLinesKey).toArray()));
}

bool TextCompareWidget::setPendingReport(const QString &path)
{
    m_pendingReport = path;
    return true;
}

void TextCompareWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_findBar->refreshTheme();
    m_changeBar->refreshTheme();
    m_verdict->refreshTheme();
    m_foot->refreshTheme();
    m_view->refreshTheme();
    m_viewOptions->takeAppearance();
}

// Comparing -----------------------------------------------------------------------------------------------------------

void TextCompareWidget::onCompare()
{
    if (m_runner.isRunning()) {
        m_runner.cancel();
        showMessage(Velmora::tr("Cancelling..."));
        return;
    }
    if (checkInputs())
        m_editing->confirmOtherFiles([this] { checkExternalChange(); });
}

bool TextCompareWidget::checkInputs()
{
    const QString problem = m_inputs->problem();
    if (!problem.isEmpty())
        showMessage(problem);
    return problem.isEmpty();
}

void TextCompareWidget::checkExternalChange()
{
    ExternalChange change = m_inputs->externalChange();
    change.unsavedEdits = hasUnsavedChanges();
    if (change.isEmpty()) {
        startComparison(ChangedFile::Reload);
        return;
    }
    askAboutExternalChange(this, change, [this, change](ExternalChangeAnswer answer) {
        if (answer == ExternalChangeAnswer::Cancel || m_runner.isRunning())
            return;
        const bool reloads = answer == ExternalChangeAnswer::Reload;
        if (reloads && !change.leftPath.isEmpty())
            m_editing->texts().discard(Side::Left);
        if (reloads && !change.rightPath.isEmpty())
            m_editing->texts().discard(Side::Right);
        startComparison(answer == ExternalChangeAnswer::Reload ? ChangedFile::Reload : ChangedFile::KeepLoaded);
    });
}

void TextCompareWidget::startComparison(ChangedFile changed)
{
    m_running = {paths(), m_options};
    const SessionPaths exchanged{m_compared.paths.right, m_compared.paths.left, {}};
    if (m_compared.document && m_compared.paths != paths() && exchanged != paths())
        m_alignment->setPairs({}); // they were of other files
    m_editing->setPairs(m_alignment->pairs());
    TextCompareInput input{m_editing->texts().origin(Side::Left, changed),
                           m_editing->texts().origin(Side::Right, changed), m_options, m_alignment->pairs(),
                           m_viewOptions->tabWidth()};
    showMessage(Velmora::tr("Comparing..."));
    setFocusProxy(m_view); // from now on the texts are what keys are for
    if (qobject_cast<QLineEdit *>(focusWidget()))
        focusTexts();
    m_runner.start([input = std::move(input)](const CancelFlag &cancel,
                                              Progress &progress) { return runTextCompare(input, cancel, progress); },
                   [this](RunOutcome<TextCompareResult> &&outcome) { takeOutcome(std::move(outcome)); },
                   [this](const ProgressState &state) { showProgress(state); });
}

void TextCompareWidget::takeOutcome(RunOutcome<TextCompareResult> &&outcome)
{
    if (!outcome.value) {
        showMessage(faultText(outcome.fault, Velmora::tr("Not enough memory to compare these files")));
        return;
    }
    const TextCompareResult &result = *outcome.value;
    const bool cancelled = outcome.end == RunEnd::Cancelled;
    if (result.unreadable && !cancelled) {
        const bool left = *result.unreadable == Side::Left;
        const QString path = shownPath(left ? m_running.paths.left : m_running.paths.right);
        showMessage(left ? Velmora::tr("Cannot open left file: %1").arg(path)
                         : Velmora::tr("Cannot open right file: %1").arg(path));
        return;
    }
    if (result.multiplied && !cancelled) {
        showMessage(*result.multiplied == Side::Left
                        ? Velmora::tr("The replacement rules make the left text many times as long: not compared")
                        : Velmora::tr("The replacement rules make the right text many times as long: not compared"));
        return;
    }
    onTextCompareFinished(outcome.number, result.document, describeFormats(result.left, result.right),
                          QFileInfo(m_running.paths.left).suffix(), QFileInfo(m_running.paths.right).suffix(),
                          cancelled, result.left, result.right);
    if (!cancelled && result.remarks.expressionsGivenUp > 0)
        showMessage(m_message + QStringLiteral(" | ") + slownessRemark(result.remarks));
}

void TextCompareWidget::onTextCompareFinished(quint64 generation, const std::shared_ptr<const DiffDocument> &diff,
                                              const QString &encodingLabel, const QString & /*leftSuffix*/,
                                              const QString & /*rightSuffix*/, bool cancelled,
                                              const LoadedText &leftRaw, const LoadedText &rightRaw)
{
    if (generation != m_runner.currentNumber())
        return;
    if (cancelled || !diff) {
        showMessage(Velmora::tr("Compare cancelled"));
        return;
    }
    const SessionPaths &paths = m_running.paths;
    m_compared = {diff, leftRaw.text.lines, rightRaw.text.lines, m_running.options, paths};
    m_inputs->at(Side::Left).setLoaded(leftRaw, paths.left);
    m_inputs->at(Side::Right).setLoaded(rightRaw, paths.right);
    m_formatText = encodingLabel;
    m_format->setText(encodingLabel);
    chooseSyntax(m_view->scene(), *diff, m_running.options, paths);
    m_presenter->show({diff, {leftRaw, rightRaw}, paths, m_running.options});

    m_title = title();
    m_editing->takeComparison({{}, leftRaw, rightRaw, diff, {}, {}}, m_running.options);
    showCounts();
    m_changes->follow();
    m_conflicts->offer(leftRaw.hasConflictMarkers ? paths.left : rightRaw.hasConflictMarkers ? paths.right : QString());
    Q_EMIT tabTitleChanged(m_title);
    Q_EMIT comparisonFinished(paths.left, paths.right);
    if (m_recovered)
        keepRecovered();
    if (!m_pendingReport.isEmpty())
        m_reports.write(std::exchange(m_pendingReport, {}), textReportWriter(m_compared));
}

void TextCompareWidget::showProgress(const ProgressState &state)
{
    if (!state.item.isEmpty()) {
        showMessage(leftOutRemark({state.item}));
        return;
    }
    if (state.phase == 0 || state.total <= 0) {
        m_progress->showBusy();
        return;
    }
    // Reading the lines takes about as long as matching them.
    const double share = double(state.done) / double(state.total);
    m_progress->showFraction((state.phase - 1 + share) / 2);
    const QLocale locale;
    const QString text =
        state.phase == 1 ? Velmora::tr("Reading lines: %1 of %2") : Velmora::tr("Matching lines: %1 of %2");
    m_format->setText(text.arg(locale.toString(state.done), locale.toString(state.total)));
}

void TextCompareWidget::showRunning()
{
    m_bar->showRunning(m_runner.isRunning(), m_runner.isCancelling());
    m_presenter->showRunning(m_runner.isRunning());
    if (!m_runner.isRunning()) {
        m_progress->clear();
        m_format->setText(m_formatText);
    }
}

void TextCompareWidget::showMessage(const QString &message)
{
    m_message = message;
    m_foot->showMessage(message);
    Q_EMIT statusMessage(message);
}

void TextCompareWidget::onExportHtml()
{
    exportReport({});
}

void TextCompareWidget::exportReport(const std::optional<MarkedReportForm> &form)
{
    if (!m_compared.document) {
        showMessage(Velmora::tr("No comparison result to export"));
        return;
    }
    Dialogs::instance().saveFile(this, Velmora::tr("Export diff report"),
                                 besideFile(m_compared.paths.left, QStringLiteral("diff_report.html")),
                                 QStringLiteral("HTML (*.html)"), [this, form](const QString &path) {
                                     TextReportContent content = m_compared;
                                     content.marked = form;
                                     m_reports.write(path, textReportWriter(content));
                                 });
}

} // namespace velmora
