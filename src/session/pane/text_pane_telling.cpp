#include "core/utf8_text.h"
#include "session/pane/text_pane.h"
#include "session/pane/utf8_units.h"
#include "session/translate.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

namespace velmora {

QString TextPane::describeCurrentRow() const
{
    const PaneDocument *document = m_scene.document();
    const qsizetype row = m_scene.caret().position.row;
    if (!document || row >= document->rowCount())
        return {};
    const RowLayout &layout = m_scene.layout();
    const qsizetype index = layout.indexOf(row);
    if (index >= 0 && layout.isBand(index)) {
        return Velmora::tr("%1 equal lines are folded here; press Enter to show them")
            .arg(QString::number(layout.rowsAt(index).count));
    }
    const qint32 number = document->lineNumber(row, m_index);
    const QString kind = document->describeRow(row);
    if (number < 1)
        return Velmora::tr("No line here, %1").arg(kind);
    if (kind.isEmpty())
        return Velmora::tr("Line %1: %2").arg(QString::number(number), currentLine());
    return Velmora::tr("Line %1, %2: %3").arg(QString::number(number), kind, currentLine());
}

QString TextPane::currentLine() const
{
    const PaneDocument *document = m_scene.document();
    const qsizetype row = m_scene.caret().position.row;
    if (!document || row >= document->rowCount())
        return {};
    const PaneDocument::Cell cell = document->cell(row, m_index);
    if (!cell.source)
        return {};
    const std::string_view utf8 = cell.source->bytes(cell.line);
    return textOfUtf8(utf8.substr(0, std::size_t(byteOfUnit(utf8, longestTold))));
}

void TextPane::selectInLine(qsizetype start, qsizetype end)
{
    if (m_scene.layout().count() == 0)
        return;
    const qsizetype row = position().row;
    const qsizetype length = currentLine().size();
    m_scene.setCaret(
        {m_index, {row, std::clamp<qsizetype>(start, 0, length)}, {row, std::clamp<qsizetype>(end, 0, length)}});
    m_scene.showCaret();
}

void TextPane::tellCaret()
{
    if (!QAccessible::isActive() || !hasFocus())
        return;
    const TextPosition at = position();
    if (std::exchange(m_toldRow, at.row) != at.row) {
        QAccessibleValueChangeEvent event(this, describeCurrentRow());
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleTextCursorEvent moved(this, int(std::min<qsizetype>(at.unit, longestTold)));
    QAccessible::updateAccessibility(&moved);
}

void TextPane::tellDifference()
{
    if (!QAccessible::isActive() || !hasCaret() || m_scene.currentBlock() < 0)
        return;
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace velmora
