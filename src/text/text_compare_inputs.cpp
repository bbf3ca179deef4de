#include "session/dialogs.h"
#include "session/pane/text_pane.h"
#include "session/translate.h"
#include "text/editing/text_editing.h"
#include "text/manual_alignment.h"
#include "text/text_compare_widget.h"
#include "text/text_inputs.h"
#include "text/view/diff_view.h"

#include <QFileInfo>

namespace velmora {

void TextCompareWidget::browse(Side side)
{
    TextInput &input = m_inputs->at(side);
    Dialogs::instance().openFile(
        this, side == Side::Left ? Velmora::tr("Select left file") : Velmora::tr("Select right file"), input.path(), {},
        [&input](const QString &path) { input.setPath(path); });
}

void TextCompareWidget::onBrowseLeft()
{
    browse(Side::Left);
}

void TextCompareWidget::onBrowseRight()
{
    browse(Side::Right);
}

Side TextCompareWidget::sideUnder(QPoint position) const
{
    const QWidget *right = &m_inputs->at(Side::Right);
    if (position.y() >= m_view->y())
        right = &m_view->pane(Side::Right);
    return position.x() < right->mapTo(this, QPoint()).x() ? Side::Left : Side::Right;
}

void TextCompareWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (paths.isEmpty())
        return;
    if (std::any_of(paths.begin(), paths.end(), [](const QString &path) { return QFileInfo(path).isDir(); })) {
        showMessage(Velmora::tr("Folders are not supported here — use the Folder compare tab."));
        return;
    }
    if (paths.size() >= 2) {
        setPaths({paths.at(0), paths.at(1), {}});
        start();
        return;
    }
    const Side side = sideUnder(position);
    m_inputs->at(side).setPath(paths.first());
    // The second of two single drops completes a new pair; a drop on a pair that is shown may be the first of two.
    if (!m_compared.document && !m_inputs->at(otherSide(side)).path().isEmpty())
        start();
}

void TextCompareWidget::useClipboardText(Side side)
{
    m_editing->confirmReplacement(side, [this, side] {
        m_inputs->at(side).takeClipboard();
        start();
    });
}

void TextCompareWidget::onSwapSides()
{
    m_editing->saving().whenSaved([this] { swapSides(); });
}

void TextCompareWidget::swapSides()
{
    m_inputs->at(Side::Left).swapWith(m_inputs->at(Side::Right));
    m_editing->editor().swapTexts(Side::Left, Side::Right);
    if (!m_options.sameAsLeftFileFormat) {
        std::swap(m_options.leftFileType, m_options.rightFileType);
        std::swap(m_options.leftEncoding, m_options.rightEncoding);
        std::swap(m_options.leftEol, m_options.rightEol);
    }
    LinePairs pairs = m_alignment->pairs();
    pairs.swapSides();
    m_alignment->setPairs(pairs);
    std::swap(m_options.leftReadOnly, m_options.rightReadOnly); // it is the file that is protected
    std::swap(m_options.leftReplaceFind, m_options.rightReplaceFind);
    std::swap(m_options.leftReplaceWith, m_options.rightReplaceWith);
    m_inputs->apply(m_options);
    if (m_compared.document || m_runner.isRunning())
        start();
}

void TextCompareWidget::chooseEncoding(Side side)
{
    const QString name = m_inputs->at(side).encoding().name();
    m_inputs->apply(m_options); // until it is known that no edits are in the way
    m_editing->confirmReload(side == Side::Left, side == Side::Right, [this, side, name] {
        if (side == Side::Left) {
            m_options.leftEncoding = name;
        } else {
            m_options.rightEncoding = name;
            m_options.sameAsLeftFileFormat = false;
        }
        m_inputs->apply(m_options);
        if (m_compared.document)
            start();
    });
}

} // namespace velmora
