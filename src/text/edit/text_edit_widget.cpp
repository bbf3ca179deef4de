#include "text/edit/text_edit_widget.h"

#include "session/document/change_watcher.h"
#include "session/document/conflict_notice.h"
#include "session/document/edited_texts.h"
#include "session/document/recovery_keeper.h"
#include "session/document/text_input.h"
#include "session/find/find_bar.h"
#include "session/find/find_controller.h"
#include "session/find/replace_controller.h"
#include "session/frame/notice_bar.h"
#include "session/frame/progress_strip.h"
#include "session/frame/status_line.h"
#include "session/pane/pane_menu.h"
#include "session/pane/pane_options.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_pane.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "text/edit/text_edit_bar.h"
#include "text/edit/text_edit_comparing.h"
#include "text/edit/text_edit_format.h"
#include "text/edit/text_edit_place.h"
#include "text/edit/text_edit_wishes.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>

namespace velmora {

namespace {

constexpr int onlyPane = 0;

TextInput::Words inputWords()
{
    return {QStringLiteral("text"), Velmora::tr("Path of the text file (drop a file here)..."),
            Velmora::tr("Select text file"), Velmora::tr("Encoding that the file is read by")};
}

TextWords textWords()
{
    return {.unnamed = Velmora::tr("New text"),
            .noTextYet = Velmora::tr("There is no text to save yet"),
            .noChanges = Velmora::tr("The text has no unsaved changes"),
            .saveTitle = Velmora::tr("Save text file"),
            .saved = Velmora::tr("File saved: %1"),
            .askToSave = Velmora::tr("The text has unsaved changes:\n%1\n\nSave them?"),
            .changedOnDisk = Velmora::tr("The file has changed on disk: %1"),
            .goneFromDisk = Velmora::tr("The file is no longer there: %1"),
            .noText = Velmora::tr("This file holds bytes that no text has and is not edited here"),
            .undecodable = Velmora::tr("This file holds bytes that its encoding does not know: saving would lose "
                                       "them. Read it by another encoding to edit it.")};
}

FindBar::Words findWords()
{
    return {Velmora::tr("Find in the text"), Velmora::tr("Replace all matches in the whole text, as one step")};
}

} // namespace

TextEditWidget::TextEditWidget(SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_bar(new TextEditBar(this)),
      m_input(new TextInput(inputWords(), this)),
      m_progress(new ProgressStrip(this)),
      m_changeBar(new NoticeBar(QStringLiteral("changeBar"), this)),
      m_conflicts(new ConflictNotice(window, this)),
      m_view(new PaneView(1, {}, this)),
      m_texts(new EditedTexts(m_view->scene(), {{onlyPane, m_input, textWords()}}, this)),
      m_viewOptions(new PaneOptions(*m_bar, *m_view, this)),
      m_findBar(new FindBar(findWords(), this)),
      m_finder(new FindController(*m_findBar, *m_view, this)),
      m_replacer(new ReplaceController(*m_findBar, *m_finder, *m_view, m_texts->editor(), this)),
      m_changes(new ChangeWatcher(*m_changeBar, *m_texts, QString(), this)),
      m_foot(new StatusLine(this)),
      m_place(new TextEditPlace(*m_foot, m_view->scene(), this)),
      m_comparing(new TextEditComparing(window, *m_texts, *m_input, this)),
      m_format(new TextEditFormat(*m_foot, this)),
      m_wishes(new TextEditWishes({*m_input, *m_texts, m_view->scene(), *m_format}, this)),
      m_keeper(new RecoveryKeeper(window.recovery(), this))
{
    buildLayout();
    connectBar();
    m_finder->follow(*m_bar);
    connect(m_replacer, &ReplaceController::message, this, &TextEditWidget::showMessage);
    connectInput();
    connectTexts();
    connect(m_wishes, &TextEditWishes::applied, this, &TextEditWidget::showFormat);
    connect(&m_runner, &Runner::runningChanged, this, [this] {
        if (m_runner.isRunning())
            return;
        m_progress->clear();
        Q_EMIT readingEnded();
    });
    LoadedText empty;
    empty.text.encoding = TextEncoding::fromName(QStringLiteral("UTF-8"));
    showText(empty, {}, plainDocumentOf(empty, m_viewOptions->tabWidth()));
    m_texts->editor().setEnabled(true);
    showMessage(Velmora::tr("Ready"));
}

TextEditWidget::~TextEditWidget() = default;

void TextEditWidget::buildLayout()
{
    m_view->arrangeInRow();
    m_view->pane(onlyPane).setObjectName(QStringLiteral("textPane"));
    m_view->pane(onlyPane).setAccessibleName(Velmora::tr("Text"));
    m_view->pane(onlyPane).setEditor(&m_texts->editor());
    constexpr int margin = 6;
    m_input->layout()->setContentsMargins(margin, 2, margin, 4);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_input);
    column->addWidget(m_progress);
    column->addWidget(m_changeBar);
    column->addWidget(m_conflicts);
    column->addWidget(m_view, 1);
    column->addWidget(m_findBar);
    column->addWidget(m_foot);
    setFocusProxy(m_view);
}

void TextEditWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, void (TextEditWidget::*slot)()) {
        connect(action, &QAction::triggered, this, slot);
    };
    onTrigger(m_bar->newText, &TextEditWidget::onNew);
    onTrigger(m_bar->open, &TextEditWidget::onOpen);
    onTrigger(m_bar->save, &TextEditWidget::onSave);
    onTrigger(m_bar->saveAs, &TextEditWidget::onSaveAs);
    onTrigger(m_bar->reload, &TextEditWidget::onReload);
    connect(m_bar->compareWith, &QAction::triggered, m_comparing, &TextEditComparing::chooseFile);
    connect(m_bar->undo, &QAction::triggered, this, [this] { edit(EditCommand::Undo); });
    connect(m_bar->redo, &QAction::triggered, this, [this] { edit(EditCommand::Redo); });
    connect(m_bar, &TextEditBar::recentFileChosen, this, &TextEditWidget::openFile);
    connect(m_bar->goToLine, &QAction::triggered, this, [this] { askForLine(*m_view, this); });
    connect(m_bar->wrapLines, &QAction::toggled, this, [this](bool wraps) {
        if (wraps && m_view->scene().maximumColumn() > 0) {
            showMessage(Velmora::tr("Lines of more than %1 bytes are not wrapped: they are scrolled sideways")
                            .arg(QLocale().toString(LineRenderer::longestWrapped)));
        }
    });
    connect(m_view, &PaneView::contextMenuWanted, this, [this](PaneIndex, QPoint at) { showContextMenu(at); });
}

void TextEditWidget::connectTexts()
{
    connect(&m_texts->editor(), &PaneEditor::stateChanged, this, &TextEditWidget::showState);
    connect(&m_texts->editor(), &PaneEditor::refused, this, &TextEditWidget::showMessage);
    TextSaving &saving = m_texts->saving();
    connect(&saving, &TextSaving::message, this, &TextEditWidget::showMessage);
    connect(&saving, &TextSaving::progressed, m_progress, &ProgressStrip::showFraction);
    connect(&saving, &TextSaving::saved, this, &TextEditWidget::takeSaved);
    connect(&saving, &TextSaving::savingChanged, this, [this] {
        if (m_texts->saving().isSaving())
            m_progress->showBusy();
        else
            m_progress->clear();
    });
    connect(m_changes, &ChangeWatcher::reloadWanted, this, &TextEditWidget::onReload);
    m_keeper->setSource([this] { return unsavedTexts(); });
    connect(&m_texts->editor(), &PaneEditor::stateChanged, m_keeper,
            [this] { m_keeper->takeChange(m_texts->isModified(onlyPane)); });
    connect(m_keeper, &RecoveryKeeper::failed, this, [this](const QString &why) {
        showMessage(Velmora::tr("Unsaved changes cannot be kept for a restart: %1").arg(why));
    });
}

// The session as the window knows it ----------------------------------------------------------------------------------

SessionPaths TextEditWidget::paths() const
{
    return {m_input->path(), {}, {}};
}

void TextEditWidget::setPaths(const SessionPaths &paths)
{
    m_input->setPath(paths.left);
}

QJsonObject TextEditWidget::options() const
{
    return toJson(m_wishes->options());
}

void TextEditWidget::setOptions(const QJsonObject &options)
{
    const TextEditOptions wanted = textEditOptionsFrom(options);
    setEditingEnabled(!wanted.readOnly);
    m_wishes->setOptions(wanted);
}

void TextEditWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_input->pathEdit().refreshTheme();
    m_findBar->refreshTheme();
    m_changeBar->refreshTheme();
    m_conflicts->refreshTheme();
    m_foot->refreshTheme();
    m_view->refreshTheme();
    m_viewOptions->takeAppearance();
}

bool TextEditWidget::canEdit(EditCommand command) const
{
    const EditBuffer &buffer = m_texts->editor().buffer(onlyPane);
    return isEditingEnabled() &&
           ((command == EditCommand::Undo && buffer.canUndo()) || (command == EditCommand::Redo && buffer.canRedo()));
}

void TextEditWidget::edit(EditCommand command)
{
    if (command == EditCommand::Undo)
        m_texts->editor().undo(onlyPane);
    else if (command == EditCommand::Redo)
        m_texts->editor().redo(onlyPane);
}

bool TextEditWidget::isEditingEnabled() const
{
    return m_texts->editor().isEnabled();
}

void TextEditWidget::setEditingEnabled(bool enabled)
{
    m_wishes->setReadOnly(!enabled);
    m_texts->editor().setEnabled(enabled);
}

bool TextEditWidget::hasUnsavedChanges() const
{
    return m_texts->hasUnsavedChanges();
}

void TextEditWidget::confirmClose(std::function<void(bool)> answered)
{
    m_texts->saving().confirmClose(std::move(answered));
}

void TextEditWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        m_finder->close();
    else
        SessionWidget::keyPressEvent(event);
}

void TextEditWidget::changeEvent(QEvent *event)
{
    // Where no system tells of changes, a person comes back from the program that made them.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible())
        m_changes->check();
    SessionWidget::changeEvent(event);
}

// What is shown -------------------------------------------------------------------------------------------------------

bool TextEditWidget::isPristine() const
{
    return m_input->loadedPath().isEmpty() && !m_texts->isModified(onlyPane) && !m_runner.isRunning();
}

void TextEditWidget::showState()
{
    m_bar->save->setEnabled(m_texts->saving().needsSaving(onlyPane) || m_input->loadedPath().isEmpty());
    m_bar->undo->setEnabled(canEdit(EditCommand::Undo));
    m_bar->redo->setEnabled(canEdit(EditCommand::Redo));
    showTitle();
    Q_EMIT editStateChanged();
}

void TextEditWidget::showTitle()
{
    const QString file = QFileInfo(m_input->loadedPath()).fileName();
    const bool isModified = m_texts->isModified(onlyPane);
    // The window has named the tab of an empty session, and numbered it.
    if (file.isEmpty() && !isModified && m_title.isEmpty())
        return;
    const QString name = file.isEmpty() ? Velmora::tr("New text") : file;
    const QString title = isModified ? u'*' + name : name;
    if (title == m_title)
        return;
    m_title = title;
    Q_EMIT tabTitleChanged(title);
}

void TextEditWidget::showFormat()
{
    m_place->setWriteProtected(isWriteProtected());
    showState();
}

void TextEditWidget::showMessage(const QString &message)
{
    m_foot->showMessage(message);
    Q_EMIT statusMessage(message);
}

void TextEditWidget::showContextMenu(QPoint at)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addEditCommands(*menu, *m_view, onlyPane);
    m_bar->addTo(*menu);
    m_format->addTo(*menu);
    menu->popup(at);
}

} // namespace velmora
