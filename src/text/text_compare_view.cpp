#include "session/document/text_description.h"
#include "session/find/find_controller.h"
#include "session/pane/pane_menu.h"
#include "session/pane/text_pane.h"
#include "session/translate.h"
#include "text/editing/text_editing.h"
#include "text/manual_alignment.h"
#include "text/result/patch_copy.h"
#include "text/result/side_description.h"
#include "text/text_compare_bar.h"
#include "text/text_compare_widget.h"
#include "text/text_view_options.h"
#include "text/view/diff_view.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>

namespace velmora {

namespace {

QString describeBlocks(qsizetype rows, qsizetype blocks)
{
    if (rows == 1)
        return Velmora::tr("1 row in 1 block");
    if (blocks == 1)
        return Velmora::tr("%1 rows in 1 block").arg(rows);
    return Velmora::tr("%1 rows in %2 blocks").arg(rows).arg(blocks);
}

} // namespace

void TextCompareWidget::showPosition()
{
    PaneScene &scene = m_view->scene();
    m_bar->showPosition({scene.currentBlock(), scene.layout().blockCount(), scene.canStep(false), scene.canStep(true)});
    const qsizetype blocks = scene.layout().blockCount();
    m_blocks->setText(describeBlocks(scene.layout().rowsInBlocks(), blocks));
    m_blocks->setVisible(blocks > 0);
}

void TextCompareWidget::showCaret()
{
    m_place->setText(describePlace(m_view->document(), m_view->scene().caret()));
}

void TextCompareWidget::tellOfUnwrapped()
{
    const PaneScene &scene = m_view->scene();
    if (scene.wraps() && scene.maximumColumn() > 0) {
        showMessage(Velmora::tr("Lines of more than %1 bytes are not wrapped: they are scrolled sideways")
                        .arg(QLocale().toString(LineRenderer::longestWrapped)));
    }
}

void TextCompareWidget::onNextDiff()
{
    focusTexts();
    m_view->scene().step(true);
}

void TextCompareWidget::onPrevDiff()
{
    focusTexts();
    m_view->scene().step(false);
}

void TextCompareWidget::onShowAll()
{
    m_bar->showAll->setChecked(true);
    m_view->scene().setFilter(RowFilter::All);
}

void TextCompareWidget::onShowDifferences()
{
    m_bar->showDifferences->setChecked(true);
    m_view->scene().setFilter(RowFilter::Differences);
}

void TextCompareWidget::onShowIdentical()
{
    m_bar->showIdentical->setChecked(true);
    m_view->scene().setFilter(RowFilter::Identical);
}

void TextCompareWidget::copyAsPatch()
{
    PaneScene &scene = m_view->scene();
    if (!scene.document()) {
        showMessage(Velmora::tr("There is no difference to copy"));
        return;
    }
    const TextCaret &caret = scene.caret();
    RowRange rows{0, scene.document()->rowCount()};
    if (caret.hasSelection())
        rows = {caret.selectionStart().row, caret.selectionEnd().row - caret.selectionStart().row + 1};
    const PaneEditor &editor = m_editing->editor();
    m_patches->copy({std::static_pointer_cast<const DiffDocument>(scene.sharedDocument()),
                     editor.buffer(Side::Left).snapshot(), editor.buffer(Side::Right).snapshot(), m_compared.paths},
                    rows);
}

void TextCompareWidget::onIgnoreMinor()
{
    m_viewOptions->toggleMinor();
}

void TextCompareWidget::showContextMenu(PaneIndex index, QPoint at)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addEditCommands(*menu, *m_view, index);
    menu->addAction(m_bar->copyPatch);
    menu->addAction(m_bar->takeClipboard);
    m_bar->alignLines->setText(m_alignment->commandText());
    m_bar->addTo(*menu, {m_alignment->canRelease(), !m_alignment->pairs().isEmpty()});
    menu->popup(at);
}

void TextCompareWidget::onFind()
{
    m_finder->open();
}

void TextCompareWidget::onFindNext()
{
    m_finder->step(true);
}

void TextCompareWidget::onFindPrev()
{
    m_finder->step(false);
}

void TextCompareWidget::onFindClose()
{
    m_finder->close();
}

void TextCompareWidget::onFindTextChanged(const QString & /*text*/)
{
    m_finder->takeQuery();
}

void TextCompareWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !m_alignment->giveUp())
        onFindClose();
    else if (event->key() == Qt::Key_Escape)
        event->accept();
    else
        SessionWidget::keyPressEvent(event);
}

void TextCompareWidget::onGotoLine()
{
    askForLine(*m_view, this);
}

} // namespace velmora
