#include "text/view/diff_editor.h"

#include "session/translate.h"
#include "text/view/row_patch.h"

#include <algorithm>
#include <utility>

namespace velmora {

DiffEditor::DiffEditor(DiffScene &scene, QObject *parent) : QObject(parent), m_scene(scene) {}

void DiffEditor::setTexts(const std::optional<TextLines> &left, const std::optional<TextLines> &right,
                          const TextSessionOptions &options)
{
    m_options = options;
    if (left)
        m_left = EditBuffer(*left);
    if (right)
        m_right = EditBuffer(*right);
    Q_EMIT stateChanged();
}

void DiffEditor::markClean(Side side)
{
    own(side).markClean();
    Q_EMIT stateChanged();
}

void DiffEditor::endSave(Side side, bool saved)
{
    own(side).endSave(saved);
    Q_EMIT stateChanged();
}

void DiffEditor::restoreText(Side side, const TextLines &text)
{
    own(side) = EditBuffer(text);
    own(side).markUnsaved();
    Q_EMIT stateChanged();
}

void DiffEditor::swapSides()
{
    std::swap(m_left, m_right);
    Q_EMIT stateChanged();
}

void DiffEditor::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    Q_EMIT stateChanged();
}

void DiffEditor::setObstacle(Side side, const QString &reason)
{
    (side == Side::Left ? m_leftObstacle : m_rightObstacle) = reason;
}

bool DiffEditor::mayEdit(Side side)
{
    QString reason;
    if (!m_scene.document())
        reason = Velmora::tr("There is no text to edit yet: compare first");
    else if (!obstacle(side).isEmpty())
        reason = obstacle(side);
    else if (!m_enabled)
        reason = Velmora::tr("The texts are locked: switch on \"Enable editing\" to change them");
    if (!reason.isEmpty())
        Q_EMIT refused(reason);
    return reason.isEmpty();
}

bool DiffEditor::mayReplaceSelection(Side side)
{
    if (!mayEdit(side))
        return false;
    const TextCaret &caret = m_scene.caret();
    const RowLayout &layout = m_scene.layout();
    const qsizetype rows = caret.selectionEnd().row - caret.selectionStart().row;
    const bool isHidden = caret.side == side && layout.filter() == RowFilter::Identical &&
                          layout.indexOf(caret.selectionEnd().row) - layout.indexOf(caret.selectionStart().row) != rows;
    if (isHidden)
        Q_EMIT refused(Velmora::tr("The selection reaches over lines that are not shown: show all lines first"));
    return !isHidden;
}

// Places ------------------------------------------------------------------------------------------------------------

bool DiffEditor::hasLine(Side side, qsizetype row) const
{
    const DiffDocument &document = *m_scene.document();
    return row < document.rowCount() && document.lineNumber(row, side) >= 1;
}

qsizetype DiffEditor::linesBefore(Side side, qsizetype row) const
{
    const DiffDocument &document = *m_scene.document();
    for (qsizetype above = std::min(row, document.rowCount()) - 1; above >= 0; --above) {
        if (document.lineNumber(above, side) >= 1)
            return document.lineNumber(above, side);
    }
    return 0;
}

EditPosition DiffEditor::place(Side side, TextPosition position, Toward toward) const
{
    if (hasLine(side, position.row))
        return {m_scene.document()->lineNumber(position.row, side) - 1, position.unit};
    const qsizetype line = linesBefore(side, position.row);
    const EditSnapshot &text = *buffer(side).snapshot();
    if (toward == Toward::End && line < text.count())
        return {line, 0};
    return line > 0 ? EditPosition{line - 1, text.text(line - 1).size()} : EditPosition{};
}

// Editing -----------------------------------------------------------------------------------------------------------

bool DiffEditor::insert(Side side, const QString &text, EditBuffer::Merge merge)
{
    if (!mayReplaceSelection(side))
        return false;
    const TextCaret caret = m_scene.caret();
    const TextPosition start = caret.side == side ? caret.selectionStart() : TextPosition{caret.position.row, 0};
    const TextPosition end = caret.side == side ? caret.selectionEnd() : start;
    const EditPosition from = place(side, start, Toward::End);
    const EditPosition to = place(side, end, Toward::Start);
    if (from < to || (hasLine(side, start.row) && start == end)) {
        apply(side, own(side).replace(from, to, text, from == to ? merge : EditBuffer::Merge::Never));
    } else {
        const bool isBreak = text == QStringLiteral("\n");
        apply(side, own(side).insertLines(linesBefore(side, start.row), isBreak ? QString() : text));
    }
    return true;
}

bool DiffEditor::insertAt(Side side, TextPosition at, const QString &text)
{
    if (text.isEmpty() || !mayEdit(side))
        return false;
    const EditPosition to = place(side, at, Toward::End);
    if (hasLine(side, at.row)) {
        const LineChange change = own(side).replace(to, to, text);
        apply(side, change);
        select(side, to, change.caret);
    } else {
        const qsizetype line = linesBefore(side, at.row);
        const LineChange change = own(side).insertLines(line, text);
        apply(side, change);
        select(side, {line, 0}, change.caret);
    }
    return true;
}

bool DiffEditor::moveSelection(Side side, TextPosition at)
{
    const TextCaret caret = m_scene.caret();
    if (caret.side != side || !caret.hasSelection() || !mayReplaceSelection(side))
        return false;
    const EditPosition from = place(side, caret.selectionStart(), Toward::End);
    const EditPosition until = place(side, caret.selectionEnd(), Toward::Start);
    const EditPosition to = place(side, at, Toward::End);
    if (from >= until || (to >= from && to <= until))
        return false;
    const EditBuffer::Moved moved = own(side).move(from, until, to);
    apply(side, moved.change);
    select(side, moved.start, moved.change.caret);
    return true;
}

bool DiffEditor::eraseSelection(Side side)
{
    const TextCaret caret = m_scene.caret();
    if (caret.side != side || !caret.hasSelection())
        return false;
    if (!mayReplaceSelection(side))
        return true;
    const EditPosition from = place(side, caret.selectionStart(), Toward::End);
    const EditPosition to = place(side, caret.selectionEnd(), Toward::Start);
    if (from < to)
        apply(side, own(side).replace(from, to, QString()));
    return true;
}

bool DiffEditor::erase(Side side, TextPosition to)
{
    if (!mayEdit(side))
        return false;
    const TextPosition here = m_scene.caret().position;
    const Toward toward = to < here ? Toward::Start : Toward::End;
    const EditPosition from = place(side, here, toward);
    const EditPosition until = place(side, to, toward);
    if (!hasLine(side, here.row)) // between lines there is nothing to remove
        showChange(side, from);
    else if (from != until)
        apply(side, own(side).replace(from, until, QString(), EditBuffer::Merge::Erasing));
    return true;
}

bool DiffEditor::copyRows(Side from, RowRange rows)
{
    const Side to = otherSide(from);
    if (!mayEdit(to) || rows.count <= 0 || rows.end() > m_scene.document()->rowCount())
        return false;
    const qsizetype source = linesBefore(from, rows.first);
    const qsizetype sourceEnd = linesBefore(from, rows.end());
    const qsizetype target = linesBefore(to, rows.first);
    const qsizetype targetEnd = linesBefore(to, rows.end());
    const LineChange change =
        own(to).copyLines(target, targetEnd - target, *buffer(from).snapshot(), source, sourceEnd - source);
    apply(to, change);
    select(to, change.caret, change.caret);
    return true;
}

void DiffEditor::replaceLines(Side side, qsizetype first, qsizetype removed, const TextLines &with)
{
    const TextCaret &caret = m_scene.caret();
    const EditPosition here = caret.side == side ? place(side, caret.position, Toward::Start) : EditPosition{first, 0};
    showText(side, own(side).replaceLines(first, removed, with, here));
    const TextPosition line{m_scene.caret().position.row, 0};
    if (caret.side == side && line.row < m_scene.document()->rowCount() && hasLine(side, line.row)) {
        const qsizetype units = m_scene.document()->text(line.row, side).size();
        const TextPosition kept{line.row, std::min(m_scene.caret().position.unit, units)};
        m_scene.setCaret({side, kept, kept});
    }
    Q_EMIT edited(side);
    Q_EMIT stateChanged();
}

void DiffEditor::undo(Side side)
{
    if (buffer(side).canUndo() && mayEdit(side))
        apply(side, own(side).undo());
}

void DiffEditor::redo(Side side)
{
    if (buffer(side).canRedo() && mayEdit(side))
        apply(side, own(side).redo());
}

void DiffEditor::showText(Side side, const LineChange &change)
{
    Q_EMIT linesChanged(side, change);
    m_scene.replaceDocument(
        patchDocument(*m_scene.document(), {m_left.snapshot(), m_right.snapshot()}, side, change, m_options), side,
        change);
}

void DiffEditor::apply(Side side, const LineChange &change)
{
    showText(side, change);
    showChange(side, change.caret);
    Q_EMIT edited(side);
    Q_EMIT stateChanged();
}

void DiffEditor::showChange(Side side, EditPosition caret)
{
    const Side active = m_scene.caret().side;
    const qsizetype row = std::max<qsizetype>(m_scene.document()->rowOfLine(side, qint32(caret.line + 1)), 0);
    const TextPosition position{row, side == active ? caret.unit : 0};
    m_scene.setCaret({active, position, position});
    m_scene.showCaret();
}

void DiffEditor::select(Side side, EditPosition start, EditPosition end)
{
    const auto positionOf = [this, side](EditPosition at) {
        const qsizetype row = m_scene.document()->rowOfLine(side, qint32(at.line + 1));
        return TextPosition{std::max<qsizetype>(row, 0), at.unit};
    };
    m_scene.setCaret({side, positionOf(start), positionOf(end)});
    m_scene.showCaret();
}

} // namespace velmora
