#include "merge/three_way_merge_widget.h"

#include "merge/change_list.h"
#include "merge/left_out_list.h"
#include "merge/merge_bar.h"
#include "merge/merge_editing.h"
#include "merge/merge_heads.h"
#include "session/document/change_watcher.h"
#include "session/document/recovery_keeper.h"
#include "session/document/text_description.h"
#include "session/find/find_bar.h"
#include "session/find/find_controller.h"
#include "session/find/replace_controller.h"
#include "session/frame/notice_bar.h"
#include "session/frame/notice_card.h"
#include "session/frame/progress_strip.h"
#include "session/frame/status_line.h"
#include "session/pane/pane_menu.h"
#include "session/pane/pane_options.h"
#include "session/pane/text_pane.h"
#include "session/session_host.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QSplitter>

namespace velmora {

namespace {

constexpr QLatin1String outputKey("output");
constexpr QLatin1String settleTouchingKey("settleTouching");

TextWords resultWords()
{
    return {Velmora::tr("not saved yet"),
            Velmora::tr("There is no result to save yet: merge first"),
            Velmora::tr("The result is saved already"),
            Velmora::tr("Save the result"),
            Velmora::tr("Saved %1"),
            Velmora::tr("Save the merged result?\n%1"),
            Velmora::tr("The file of the result has changed on disk: %1"),
            Velmora::tr("The file of the result is no longer there: %1"),
            Velmora::tr("The result's file holds bytes that no text has"),
            Velmora::tr("The result's file holds bytes that its encoding does not know")};
}

QWidget *oneAboveTheOther(QWidget *upper, QWidget *lower)
{
    auto *lists = new QSplitter(Qt::Vertical);
    lists->addWidget(upper);
    lists->addWidget(lower);
    lists->setChildrenCollapsible(false);
    return lists;
}

} // namespace

ThreeWayMergeWidget::ThreeWayMergeWidget(SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_bar(new MergeBar(this)),
      m_heads(new MergeHeads(this)),
      m_changes(new ChangeList(this)),
      m_leftOut(new LeftOutList(this)),
      m_view(new MergeView({m_heads->head(0), m_heads->head(1), m_heads->head(2), m_heads->head(resultPane)},
                           oneAboveTheOther(m_changes, m_leftOut), this)),
      m_progress(new ProgressStrip(this)),
      m_texts(new EditedTexts(m_view->scene(), {{paneOfResult, &m_heads->result(), resultWords()}}, this)),
      m_editing(new MergeEditing(*m_view, m_texts->editor(), this)),
      m_findBar(new FindBar(
          {Velmora::tr("Find in this text"), Velmora::tr("Replace all matches in the whole result as one step")},
          this)),
      m_finder(new FindController(*m_findBar, *m_view, this)),
      m_replacer(new ReplaceController(*m_findBar, *m_finder, *m_view, m_texts->editor(), this)),
      m_paneOptions(new PaneOptions(*m_bar, *m_view, this)),
      m_changeBar(new NoticeBar(QStringLiteral("changeBar"), this)),
      m_watcher(new ChangeWatcher(*m_changeBar, *m_texts, {}, this)),
      m_foot(new StatusLine(this)),
      m_place(m_foot->addFact(QStringLiteral("placeLabel"))),
      m_format(m_foot->addFact(QStringLiteral("formatLabel"))),
      m_keeper(new RecoveryKeeper(window.recovery(), this))
{
    buildLayout();
    connectBar();
    connectTaking();
    connectEditing();
    connectRecovery();
    connect(&m_runner, &Runner::runningChanged, this, &ThreeWayMergeWidget::showRunning);
    showMessage(Velmora::tr("Ready"));
}

ThreeWayMergeWidget::~ThreeWayMergeWidget() = default;

void ThreeWayMergeWidget::buildLayout()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_progress);
    column->addWidget(m_changeBar);
    column->addWidget(m_view, 1);
    column->addWidget(m_findBar);
    column->addWidget(m_foot);
    setFocusProxy(&m_heads->input(MergeSource::Left));
    m_view->notice(paneOfResult)
        .tell({Velmora::tr("Merge two versions of a text"),
               Velmora::tr("Choose both versions and the file that they come from, or drop all three here: left, "
                           "right, base. Of a file with conflict markers, the left place is enough.")});
}

void ThreeWayMergeWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->merge, &ThreeWayMergeWidget::onMerge);
    onTrigger(m_bar->cancel, &ThreeWayMergeWidget::onMerge);
    connect(m_bar->settleTouching, &QAction::triggered, this, &ThreeWayMergeWidget::settleTouching);
    onTrigger(m_bar->save, &ThreeWayMergeWidget::onSave);
    onTrigger(m_bar->saveAs, &ThreeWayMergeWidget::onSaveAs);
    onTrigger(m_bar->saveMarked, &ThreeWayMergeWidget::onSaveMarked);
    onTrigger(m_bar->undo, [this] { edit(EditCommand::Undo); });
    onTrigger(m_bar->redo, [this] { edit(EditCommand::Redo); });
    connect(m_bar->showBase, &QAction::toggled, m_view, &MergeView::setBaseShown);
    connect(m_bar->showList, &QAction::toggled, m_changes, &QWidget::setVisible);
    m_finder->follow(*m_bar);
    onTrigger(m_bar->goToLine, [this] { askForLine(*m_view, this); });
    onTrigger(m_bar->switchPane, [this] { m_view->switchPane(); });
    connect(m_replacer, &ReplaceController::message, this, &ThreeWayMergeWidget::showMessage);
    connect(m_heads, &MergeHeads::submitted, this, &ThreeWayMergeWidget::start);
    connect(m_heads, &MergeHeads::encodingChosen, this, [this] {
        if (m_view->document())
            start();
    });
    connect(m_view, &MergeView::contextMenuWanted, this, &ThreeWayMergeWidget::showContextMenu);
    connect(&m_view->scene(), &PaneScene::caretMoved, this, &ThreeWayMergeWidget::showPosition);
}

void ThreeWayMergeWidget::connectTaking()
{
    const auto onTake = [this](QAction *action, MergeChoice choice) {
        connect(action, &QAction::triggered, this, [this, choice] { take(m_editing->take(choice)); });
    };
    onTake(m_bar->takeLeft, MergeChoice::Left);
    onTake(m_bar->takeBase, MergeChoice::Base);
    onTake(m_bar->takeRight, MergeChoice::Right);
    onTake(m_bar->takeLeftThenRight, MergeChoice::LeftThenRight);
    onTake(m_bar->takeRightThenLeft, MergeChoice::RightThenLeft);
    onTake(m_bar->takeLineByLine, MergeChoice::LineByLine);
    const auto onTakeAll = [this](QAction *action, MergeChoice choice) {
        connect(action, &QAction::triggered, this, [this, choice] { take(m_editing->takeForAllOpen(choice)); });
    };
    onTakeAll(m_bar->takeLeftForAll, MergeChoice::Left);
    onTakeAll(m_bar->takeBaseForAll, MergeChoice::Base);
    onTakeAll(m_bar->takeRightForAll, MergeChoice::Right);
    onTakeAll(m_bar->takeLineByLineForAll, MergeChoice::LineByLine);
    connect(m_bar->nextDifference, &QAction::triggered, this,
            [this] { goTo(m_editing->goToConflict(true), noConflictText(true)); });
    connect(m_bar->previousDifference, &QAction::triggered, this,
            [this] { goTo(m_editing->goToConflict(false), noConflictText(false)); });
    connect(m_bar->nextChange, &QAction::triggered, this,
            [this] { goTo(m_editing->goToChange(true), Velmora::tr("No further change")); });
    connect(m_bar->previousChange, &QAction::triggered, this,
            [this] { goTo(m_editing->goToChange(false), Velmora::tr("No earlier change")); });
    connect(m_changes, &ChangeList::partChosen, m_editing, &MergeEditing::goToPart);
    connect(m_leftOut, &LeftOutList::lineChosen, m_editing, &MergeEditing::goToLine);
    connect(m_leftOut, &LeftOutList::lineWanted, m_editing, &MergeEditing::putIn);
}

void ThreeWayMergeWidget::connectEditing()
{
    PaneEditor &editor = m_texts->editor();
    editor.setEnabled(true);
    for (int pane = 0; pane < m_view->paneCount(); ++pane)
        m_view->pane(pane).setEditor(&editor);
    connect(&editor, &PaneEditor::refused, this, &ThreeWayMergeWidget::showMessage);
    connect(m_editing, &MergeEditing::partsChanged, this, [this] {
        const auto merge = std::static_pointer_cast<const MergeDocument>(m_view->scene().sharedDocument());
        m_changes->setMerge(merge);
        m_leftOut->setMerge(merge);
        showPosition();
        showCounts();
    });
    connect(&editor, &PaneEditor::stateChanged, this, [this] {
        m_bar->undo->setEnabled(canEdit(EditCommand::Undo));
        m_bar->redo->setEnabled(canEdit(EditCommand::Redo));
        showTitle();
        Q_EMIT editStateChanged();
    });
    connect(&m_texts->saving(), &TextSaving::message, this, &ThreeWayMergeWidget::showMessage);
    connect(&m_texts->saving(), &TextSaving::progressed, m_progress, &ProgressStrip::showFraction);
    connect(&m_texts->saving(), &TextSaving::savingChanged, this, [this] {
        if (m_texts->saving().isSaving())
            m_progress->showBusy();
        else if (!m_runner.isRunning())
            m_progress->clear();
    });
    connect(&m_texts->saving(), &TextSaving::saved, this, [this] {
        m_output = m_heads->result().loadedPath();
        m_heads->showResult(m_output);
        m_watcher->follow();
    });
}

// The session as the window knows it ----------------------------------------------------------------------------------

SessionPaths ThreeWayMergeWidget::paths() const
{
    return m_heads->paths();
}

void ThreeWayMergeWidget::setPaths(const SessionPaths &paths)
{
    m_heads->setPaths(paths);
    m_keptSources = {};
}

QJsonObject ThreeWayMergeWidget::options() const
{
    QJsonObject options;
    if (!m_output.isEmpty())
        options.insert(outputKey, m_output);
    if (m_bar->settleTouching->isChecked())
        options.insert(settleTouchingKey, true);
    return options;
}

void ThreeWayMergeWidget::setOptions(const QJsonObject &options)
{
    m_output = options.value(outputKey).toString();
    m_heads->showResult(m_output);
    m_bar->settleTouching->setChecked(options.value(settleTouchingKey).toBool());
}

bool ThreeWayMergeWidget::setOutput(const QString &path)
{
    m_output = path;
    m_wantedOutput = path;
    m_heads->showResult(m_output);
    return true;
}

int ThreeWayMergeWidget::waitStatus() const
{
    const bool isThere = !m_savedWhole.isEmpty() && (m_wantedOutput.isEmpty() || m_savedWhole == m_wantedOutput);
    return isThere ? 0 : 1;
}

void ThreeWayMergeWidget::dropPaths(const QStringList &dropped, QPoint position)
{
    if (dropped.isEmpty())
        return;
    if (std::any_of(dropped.begin(), dropped.end(), [](const QString &path) { return QFileInfo(path).isDir(); })) {
        showMessage(Velmora::tr("Folders are not supported here — use the Folder merge tab."));
        return;
    }
    SessionPaths next = paths();
    if (dropped.size() >= 3) {
        next = {dropped.at(0), dropped.at(1), dropped.at(2)};
    } else if (dropped.size() == 2) {
        next.left = dropped.at(0);
        next.right = dropped.at(1);
    } else {
        QString *const sides[] = {&next.left, &next.base, &next.right};
        *sides[std::size_t(m_heads->sourceUnder(position))] = dropped.first();
    }
    setPaths(next);
    const bool isComplete = !next.right.isEmpty() && !next.base.isEmpty();
    const bool isAlone = next.right.isEmpty() && next.base.isEmpty(); // it may have conflict markers
    if (!next.left.isEmpty() && (isComplete || isAlone))
        start();
}

void ThreeWayMergeWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_heads->refreshTheme();
    m_changes->refreshTheme();
    m_leftOut->refreshTheme();
    m_findBar->refreshTheme();
    m_changeBar->refreshTheme();
    m_foot->refreshTheme();
    m_view->refreshTheme();
    m_paneOptions->takeAppearance();
}

bool ThreeWayMergeWidget::canEdit(EditCommand command) const
{
    const EditBuffer &result = m_texts->editor().buffer(paneOfResult);
    if (command == EditCommand::Undo)
        return result.canUndo();
    return command == EditCommand::Redo && result.canRedo();
}

void ThreeWayMergeWidget::edit(EditCommand command)
{
    if (command == EditCommand::Undo)
        m_texts->editor().undo(paneOfResult);
    else if (command == EditCommand::Redo)
        m_texts->editor().redo(paneOfResult);
}

// What is shown -------------------------------------------------------------------------------------------------------

void ThreeWayMergeWidget::take(bool taken)
{
    if (!taken)
        showMessage(Velmora::tr("Go to a change or select some first"));
}

void ThreeWayMergeWidget::goTo(bool found, const QString &none)
{
    if (!found)
        showMessage(none);
    if (m_view->document() && qobject_cast<QLineEdit *>(focusWidget()))
        m_view->pane(paneOfResult).setFocus();
}

/// That there is none that way, and how many are open the other way.
QString ThreeWayMergeWidget::noConflictText(bool forward) const
{
    const MergeParts &parts = m_editing->parts();
    const qsizetype part = m_editing->currentPart();
    const qsizetype others = parts.openConflicts() - (part >= 0 && parts.at(part).isOpen() ? 1 : 0);
    if (others <= 0)
        return forward ? Velmora::tr("No further conflict") : Velmora::tr("No earlier conflict");
    return (forward ? Velmora::tr("No further conflict; still open above: %1")
                    : Velmora::tr("No earlier conflict; still open below: %1"))
        .arg(others);
}

void ThreeWayMergeWidget::showMessage(const QString &message)
{
    m_foot->showMessage(message);
    Q_EMIT statusMessage(message);
}

void ThreeWayMergeWidget::showCounts()
{
    if (!m_view->document())
        return;
    const MergeParts &parts = m_editing->parts();
    const auto changes =
        std::count_if(parts.all().begin(), parts.all().end(), [](const MergePart &part) { return !part.isPlain(); });
    showMessage(
        Velmora::tr("Changes: %1, conflicts: %2, open: %3")
            .arg(QString::number(changes), QString::number(parts.conflicts()), QString::number(parts.openConflicts())));
}

void ThreeWayMergeWidget::showPosition()
{
    m_place->setText(describePlace(m_view->document(), m_view->scene().caret()));
    if (!m_view->document())
        return;
    const MergeParts &parts = m_editing->parts();
    const qsizetype part = m_editing->currentPart();
    MergeBar::Position position{-1, parts.conflicts(), parts.openConflicts()};
    if (part >= 0 && parts.at(part).kind == ChunkKind::Conflict) {
        position.current = std::count_if(parts.all().begin(), parts.all().begin() + part,
                                         [](const MergePart &one) { return one.kind == ChunkKind::Conflict; });
    }
    m_bar->showPosition(position);
    m_changes->showCurrent(part);
}

void ThreeWayMergeWidget::showTitle()
{
    if (!m_view->document())
        return;
    const QString path = m_output.isEmpty() ? m_merged.left : m_output;
    const QString name = QFileInfo(path).fileName();
    const QString title = Velmora::tr("Merge: %1").arg(m_texts->isModified(paneOfResult) ? u'*' + name : name);
    if (title == m_title)
        return;
    m_title = title;
    Q_EMIT tabTitleChanged(title);
}

void ThreeWayMergeWidget::showContextMenu(PaneIndex pane, QPoint at)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addEditCommands(*menu, *m_view, pane);
    m_bar->addTo(*menu);
    menu->popup(at);
}

void ThreeWayMergeWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        m_finder->close();
    else
        SessionWidget::keyPressEvent(event);
}

void ThreeWayMergeWidget::changeEvent(QEvent *event)
{
    // Where no system tells of changes, a person comes back from the program that made them.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible() && m_view->document())
        m_watcher->check();
    SessionWidget::changeEvent(event);
}

} // namespace velmora
