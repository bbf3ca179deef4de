#include "filetypes/binary/binary_compare_bar.h"
#include "filetypes/binary/binary_compare_widget.h"
#include "filetypes/binary/binary_hex_view.h"
#include "filetypes/binary/hex_scene.h"
#include "filetypes/binary/hex_starts_bar.h"
#include "session/dialogs.h"
#include "session/frame/pair_inputs.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLocale>
#include <QWheelEvent>

#include <algorithm>

namespace velmora {

namespace {

QString hexNumber(qint64 number)
{
    return QStringLiteral("0x") + QString::number(number, 16).toUpper();
}

} // namespace

void BinaryCompareWidget::onNextDiff()
{
    showDifference(m_index.next());
}

void BinaryCompareWidget::onPrevDiff()
{
    showDifference(m_index.previous());
}

void BinaryCompareWidget::showDifference(qsizetype index)
{
    if (index < 0)
        return;
    m_scene->showRow(m_scene->document()->stops[std::size_t(index)]);
    m_status->showMessage(Velmora::tr("Diff %1/%2").arg(index + 1).arg(m_index.count()));
    // Who steps through differences is done with the paths: keys are for the bytes.
    if (!m_views.left->hasFocus() && !m_views.right->hasFocus())
        focusView(m_scene->caret().side);
}

void BinaryCompareWidget::onSwapSides()
{
    const SessionPaths files = paths();
    setPaths({files.right, files.left, {}});
    if (const std::optional<Sides<qint64>> starts = m_starts->starts())
        m_starts->setStarts({starts->right, starts->left});
    compareAnew();
}

void BinaryCompareWidget::onGoToOffset()
{
    if (m_scene->rowCount() == 0)
        return;
    const qint64 here = std::max<qint64>(m_scene->caret().offset, 0);
    Dialogs::instance().askText(this, Velmora::tr("Go to offset"),
                                Velmora::tr("Offset (1234, 0x4D2 or 4D2h; +/- counts from the caret):"),
                                hexNumber(here), [this, here](const QString &text) {
                                    const std::optional<qint64> offset = offsetFromText(text, here);
                                    if (!offset) {
                                        m_status->showMessage(Velmora::tr("\"%1\" is no offset").arg(text));
                                        return;
                                    }
                                    goToOffset(*offset);
                                });
}

void BinaryCompareWidget::goToOffset(qint64 offset)
{
    const Side side = m_scene->caret().side;
    const qint64 size = m_scene->document()->source(side).size();
    m_scene->moveCaret(side, offset);
    m_scene->setTop(m_scene->currentRow() - m_scene->visibleRows() / 2);
    focusView(side);
    if (offset >= size)
        m_status->showMessage(Velmora::tr("%1 is behind the end of this side, which has %2 bytes")
                                  .arg(hexNumber(offset), QLocale().toString(size)));
}

void BinaryCompareWidget::showPlace()
{
    const HexScene::Caret &caret = m_scene->caret();
    if (caret.offset < 0) {
        m_place->clear();
        return;
    }
    const ByteSelection selected = m_scene->selection();
    const QString place = QStringLiteral("%1 (%2)").arg(hexNumber(caret.offset), QLocale().toString(caret.offset));
    m_place->setText(selected.length() > 1
                         ? Velmora::tr("%1 | %2 bytes selected").arg(place, QLocale().toString(selected.length()))
                         : place);
}

void BinaryCompareWidget::copy(ByteForm form)
{
    constexpr qint64 limit = 16 * 1024 * 1024;
    const ByteSelection range = m_scene->selection();
    if (range.length() == 0)
        return;
    if (range.length() > limit) {
        m_status->showMessage(Velmora::tr("Too much to copy (limit %1 MB)").arg(limit >> 20));
        return;
    }
    QByteArray bytes(qsizetype(range.length()), Qt::Uninitialized);
    if (!m_scene->document()->source(range.side).read(range.begin, bytes.data(), bytes.size())) {
        m_status->showMessage(Velmora::tr("Some of these bytes cannot be read"));
        return;
    }
    QApplication::clipboard()->setText(writtenBytes(bytes, form));
}

void BinaryCompareWidget::zoom(int points)
{
    for (const Side side : bothSides)
        m_views[side]->setPointSize(points);
}

void BinaryCompareWidget::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        SessionWidget::wheelEvent(event);
        return;
    }
    zoom(m_views.left->font().pointSize() + (event->angleDelta().y() > 0 ? 1 : -1));
    event->accept();
}

void BinaryCompareWidget::focusView(Side side)
{
    m_views[side]->setFocus();
}

void BinaryCompareWidget::compareAnew()
{
    if (m_scene->document())
        start();
}

void BinaryCompareWidget::startHere()
{
    const HexScene::Caret &caret = m_scene->caret();
    std::optional<Sides<qint64>> starts = m_starts->starts();
    if (caret.offset < 0 || !starts)
        return;
    (*starts)[caret.side] = caret.offset;
    m_starts->setStarts(*starts);
    m_bar->showStarts->setChecked(true);
    start();
}

void BinaryCompareWidget::goToRow(qint64 row)
{
    const std::vector<qint64> &stops = m_scene->document()->stops;
    m_index.set(std::lower_bound(stops.begin(), stops.end(), row) - stops.begin());
    showDifference(m_index.current());
}

} // namespace velmora
