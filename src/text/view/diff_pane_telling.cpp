#include "core/utf8_text.h"
#include "session/translate.h"
#include "text/view/diff_pane.h"
#include "text/view/utf8_units.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

QString describeKind(DiffLineKind kind)
{
    switch (kind) {
    case Equal:
        return Velmora::tr("identical");
    case Added:
        return Velmora::tr("added");
    case Removed:
        return Velmora::tr("removed");
    case Modified:
        return Velmora::tr("modified");
    }
    return {};
}

} // namespace

QString DiffPane::describeCurrentRow() const
{
    const DiffDocument *document = m_scene.document();
    const qsizetype row = m_scene.caret().position.row;
    if (!document || row >= document->rowCount())
        return {};
    const RowLayout &layout = m_scene.layout();
    const qsizetype index = layout.indexOf(row);
    if (index >= 0 && layout.isBand(index)) {
        return Velmora::tr("%1 equal lines are folded here; press Enter to show them")
            .arg(QString::number(layout.rowsAt(index).count));
    }
    const qint32 number = document->lineNumber(row, m_side);
    const bool onlyEndsDiffer = document->kind(row) == Equal && document->lineEndsOf(row);
    const QString kind = onlyEndsDiffer ? Velmora::tr("line ends differ") : describeKind(document->kind(row));
    if (number < 1)
        return Velmora::tr("No line here, %1").arg(kind);
    return Velmora::tr("Line %1, %2: %3").arg(QString::number(number), kind, currentLine());
}

QString DiffPane::currentLine() const
{
    const DiffDocument *document = m_scene.document();
    const qsizetype row = m_scene.caret().position.row;
    if (!document || row >= document->rowCount())
        return {};
    const DiffDocument::Cell cell = document->cell(row, m_side);
    if (!cell.source)
        return {};
    const std::string_view utf8 = cell.source->bytes(cell.line);
    return textOfUtf8(utf8.substr(0, std::size_t(byteOfUnit(utf8, longestTold))));
}

void DiffPane::selectInLine(qsizetype start, qsizetype end)
{
    if (m_scene.layout().count() == 0)
        return;
    const qsizetype row = position().row;
    const qsizetype length = currentLine().size();
    m_scene.setCaret(
        {m_side, {row, std::clamp<qsizetype>(start, 0, length)}, {row, std::clamp<qsizetype>(end, 0, length)}});
    m_scene.showCaret();
}

void DiffPane::tellCaret()
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

void DiffPane::tellDifference()
{
    if (!QAccessible::isActive() || !hasCaret() || m_scene.currentBlock() < 0)
        return;
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace velmora
