#include "session/document/change_watcher.h"
#include "session/frame/progress_strip.h"
#include "session/frame/status_line.h"
#include "session/pane/text_pane.h"
#include "session/translate.h"
#include "text/editing/text_editing.h"
#include "text/manual_alignment.h"
#include "text/result/result_presenter.h"
#include "text/result/side_description.h"
#include "text/text_compare_bar.h"
#include "text/text_compare_widget.h"
#include "text/text_inputs.h"
#include "text/view/diff_view.h"
#include "text/view/merge_splitter.h"

#include <QFileInfo>
#include <QLabel>

namespace velmora {

void TextCompareWidget::connectEditing()
{
    PaneEditor &editor = m_editing->editor();
    m_view->pane(Side::Left).setEditor(&editor);
    m_view->pane(Side::Right).setEditor(&editor);
    for (const Side side : {Side::Left, Side::Right}) {
        connect(&m_view->pane(side), &TextPane::pastedBeforeATextIsThere, this,
                [this, side] { useClipboardText(side); });
    }
    connect(m_editing, &TextEditing::message, this, &TextCompareWidget::showMessage);
    connect(&m_editing->saving(), &TextSaving::savingChanged, this, &TextCompareWidget::showSaving);
    connect(&m_editing->saving(), &TextSaving::progressed, m_progress, &ProgressStrip::showFraction);
    connect(&m_editing->saving(), &TextSaving::saved, this, &TextCompareWidget::takeSaved);
    connect(m_editing, &TextEditing::textEdited, this, [this] {
        m_runner.abandon();
        m_replaced.clear();
        showPosition();
    });
    connect(m_editing, &TextEditing::recompared, this,
            [this](const std::shared_ptr<const DiffDocument> &document, const TextLines &left, const TextLines &right) {
                m_compared.document = document;
                m_compared.left = left;
                m_compared.right = right;
                m_presenter->takeEdited(document, left, right);
                showCounts();
                if (const QString replaced = std::exchange(m_replaced, {}); !replaced.isEmpty())
                    showMessage(replaced + QStringLiteral(" | ") + m_message);
            });
    connect(&editor, &PaneEditor::stateChanged, this, [this] {
        const PaneEditor &changed = m_editing->editor();
        m_bar->showEditing(changed.isEnabled());
        m_bar->saveLeft->setEnabled(m_editing->saving().needsSaving(Side::Left));
        m_bar->saveRight->setEnabled(m_editing->saving().needsSaving(Side::Right));
        for (const Side side : {Side::Left, Side::Right})
            m_view->splitter().setCopyable(side, changed.obstacle(side).isEmpty());
        const QString name = m_compared.document ? title() : QString();
        if (name != m_title) {
            m_title = name;
            Q_EMIT tabTitleChanged(name);
        }
        Q_EMIT editStateChanged();
    });
    m_bar->saveLeft->setEnabled(false);
    m_bar->saveRight->setEnabled(false);
    connect(&m_view->splitter(), &MergeSplitter::copyWanted, this, &TextCompareWidget::copyDifference);
    connect(m_bar->edit, &QAction::triggered, this, &TextCompareWidget::setEditingEnabled);
    connect(m_bar->copyToRight, &QAction::triggered, this, &TextCompareWidget::onCopyLeftToRight);
    connect(m_bar->copyToLeft, &QAction::triggered, this, &TextCompareWidget::onCopyRightToLeft);
    connect(m_bar->saveLeft, &QAction::triggered, this, &TextCompareWidget::onSaveLeft);
    connect(m_bar->saveRight, &QAction::triggered, this, &TextCompareWidget::onSaveRight);
    TextSaving *saving = &m_editing->saving();
    connect(m_bar->save, &QAction::triggered, saving, [this, saving] { saving->save(m_view->activeSide()); });
    connect(m_bar->saveAs, &QAction::triggered, saving, [this, saving] { saving->saveAs(m_view->activeSide()); });
    connect(m_bar->saveAll, &QAction::triggered, saving, &TextSaving::saveAll);
    connect(m_bar->saveLeftAs, &QAction::triggered, saving, [saving] { saving->saveAs(Side::Left); });
    connect(m_bar->saveRightAs, &QAction::triggered, saving, [saving] { saving->saveAs(Side::Right); });
}

void TextCompareWidget::takeSaved(PaneIndex pane)
{
    const Side side = sideOf(pane);
    (side == Side::Left ? m_compared.paths.left : m_compared.paths.right) = m_inputs->at(side).loadedPath();
    m_formatText = describeFormats(m_inputs->at(Side::Left).loaded(), m_inputs->at(Side::Right).loaded());
    if (!m_runner.isRunning())
        m_format->setText(m_formatText);
}

void TextCompareWidget::changeEvent(QEvent *event)
{
    // Where no system tells of changes, a person comes back from the program that made them.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible() && m_compared.document)
        m_changes->check();
    SessionWidget::changeEvent(event);
}

void TextCompareWidget::connectAlignment()
{
    connect(m_bar->alignLines, &QAction::triggered, m_alignment, &ManualAlignment::chooseLine);
    connect(m_bar->releaseLines, &QAction::triggered, m_alignment, &ManualAlignment::release);
    connect(m_bar->releaseAllLines, &QAction::triggered, m_alignment, &ManualAlignment::releaseAll);
    connect(m_alignment, &ManualAlignment::message, this, &TextCompareWidget::showMessage);
    connect(m_alignment, &ManualAlignment::changed, this, [this] {
        m_editing->setPairs(m_alignment->pairs());
        m_editing->compareAgain();
    });
    connect(m_editing, &TextEditing::textEdited, this, [this] { m_editing->setPairs(m_alignment->pairs()); });
}

void TextCompareWidget::showCounts()
{
    if (m_compared.document)
        showMessage(describeCounts(m_presenter->findings(), m_view->scene().countsMinor()));
}

QString TextCompareWidget::title() const
{
    const auto name = [this](Side side, const QString &path) {
        const QString file = QFileInfo(path).fileName();
        return m_editing->isModified(side) ? u'*' + file : file;
    };
    const SessionPaths &paths = m_compared.paths;
    return Velmora::tr("%1 <-> %2").arg(name(Side::Left, paths.left), name(Side::Right, paths.right));
}

// The Edit menu -------------------------------------------------------------------------------------------------------

namespace {

/// The side that a command is for, and whether it undoes.
std::pair<Side, bool> sideCommand(EditCommand command, Side active)
{
    using enum EditCommand;
    const bool isLeft = command == UndoLeft || command == RedoLeft;
    const bool isRight = command == UndoRight || command == RedoRight;
    return {isLeft    ? Side::Left
            : isRight ? Side::Right
                      : active,
            command == Undo || command == UndoLeft || command == UndoRight};
}

} // namespace

bool TextCompareWidget::canEdit(EditCommand command) const
{
    const auto [side, undoes] = sideCommand(command, m_view->activeSide());
    const EditBuffer &buffer = m_editing->editor().buffer(side);
    return isEditingEnabled() && (undoes ? buffer.canUndo() : buffer.canRedo());
}

void TextCompareWidget::edit(EditCommand command)
{
    const auto [side, undoes] = sideCommand(command, m_view->activeSide());
    if (undoes)
        m_editing->editor().undo(side);
    else
        m_editing->editor().redo(side);
}

bool TextCompareWidget::isEditingEnabled() const
{
    return m_editing->editor().isEnabled();
}

void TextCompareWidget::setEditingEnabled(bool enabled)
{
    m_editing->editor().setEnabled(enabled);
    m_bar->showEditing(enabled);
}

bool TextCompareWidget::hasUnsavedChanges() const
{
    return m_editing->texts().hasUnsavedChanges();
}

void TextCompareWidget::confirmClose(std::function<void(bool)> answered)
{
    m_editing->saving().confirmClose(std::move(answered));
}

bool TextCompareWidget::isSaving() const
{
    return m_editing->saving().isSaving();
}

void TextCompareWidget::showSaving()
{
    if (m_editing->saving().isSaving())
        m_progress->showBusy();
    else if (!m_runner.isRunning())
        m_progress->clear();
}

// Merging by hand -----------------------------------------------------------------------------------------------------

void TextCompareWidget::copyFrom(Side from)
{
    focusTexts();
    const PaneScene &scene = m_view->scene();
    const TextCaret &caret = scene.caret();
    if (caret.hasSelection()) {
        const TextPosition end = caret.selectionEnd();
        // A selection that ends before the first character of a line does not mean that line.
        const qsizetype last = end.unit == 0 ? end.row - 1 : end.row;
        const qsizetype first = caret.selectionStart().row;
        copyRows(from, {first, std::max(last, first) - first + 1});
    } else if (scene.currentBlock() >= 0) {
        copyDifference(from, scene.layout().block(scene.currentBlock()).first);
    } else {
        showMessage(Velmora::tr("Select lines or go to a difference first"));
    }
}

void TextCompareWidget::focusTexts()
{
    if (const QWidget *focused = focusWidget(); focused && m_inputs->isAncestorOf(focused))
        m_view->pane(m_view->activeSide()).setFocus();
}

void TextCompareWidget::copyDifference(Side from, qsizetype row)
{
    const RowLayout &layout = m_view->scene().layout();
    const qsizetype block = layout.blockOf(row);
    if (block >= 0)
        copyRows(from, layout.block(block));
}

void TextCompareWidget::copyRows(Side from, RowRange rows)
{
    m_editing->editor().unlockFor(otherSide(from));
    if (m_editing->editor().copyRows(from, otherSide(from), rows))
        m_view->pane(otherSide(from)).setFocus(); // what undoes and saves the change goes there
}

void TextCompareWidget::onCopyLeftToRight()
{
    copyFrom(Side::Left);
}

void TextCompareWidget::onCopyRightToLeft()
{
    copyFrom(Side::Right);
}

void TextCompareWidget::onArrowCopyLeftToRight(int lineIndex)
{
    copyDifference(Side::Left, lineIndex);
}

void TextCompareWidget::onArrowCopyRightToLeft(int lineIndex)
{
    copyDifference(Side::Right, lineIndex);
}

// Files ---------------------------------------------------------------------------------------------------------------

void TextCompareWidget::onSaveLeft()
{
    m_editing->saving().save(Side::Left);
}

void TextCompareWidget::onSaveRight()
{
    m_editing->saving().save(Side::Right);
}

void TextCompareWidget::reload(bool left, bool right)
{
    if (!checkInputs())
        return;
    m_editing->confirmReload(left, right, [this] {
        m_runner.abandon();
        startComparison(ChangedFile::Reload);
    });
}

void TextCompareWidget::onReloadLeft()
{
    reload(true, false);
}

void TextCompareWidget::onReloadRight()
{
    reload(false, true);
}

void TextCompareWidget::onReloadBoth()
{
    reload(true, true);
}

} // namespace velmora
