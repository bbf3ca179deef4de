#include "session/pane/pane_editor.h"

#include "session/translate.h"

#include <algorithm>
#include <utility>

namespace velmora {

PaneEditor::PaneEditor(PaneScene &scene, QObject *parent)
    : QObject(parent), m_scene(scene), m_lanes(std::size_t(scene.paneCount()))
{}

void PaneEditor::setTexts(const std::vector<std::optional<TextLines>> &texts, RowPatcher patcher)
{
    m_patcher = std::move(patcher);
    for (std::size_t pane = 0; pane < texts.size(); ++pane) {
        if (texts[pane])
            m_lanes[pane].buffer = EditBuffer(*texts[pane]);
    }
    Q_EMIT stateChanged();
}

void PaneEditor::markClean(PaneIndex pane)
{
    own(pane).markClean();
    Q_EMIT stateChanged();
}

void PaneEditor::markUnsaved(PaneIndex pane)
{
    own(pane).markUnsaved();
    Q_EMIT stateChanged();
}

void PaneEditor::endSave(PaneIndex pane, bool saved)
{
    own(pane).endSave(saved);
    Q_EMIT stateChanged();
}

void PaneEditor::restoreText(PaneIndex pane, const TextLines &text)
{
    own(pane) = EditBuffer(text);
    own(pane).markUnsaved();
    Q_EMIT stateChanged();
}

void PaneEditor::setBuffer(PaneIndex pane, EditBuffer buffer)
{
    own(pane) = std::move(buffer);
    Q_EMIT stateChanged();
}

void PaneEditor::swapTexts(PaneIndex one, PaneIndex other)
{
    std::swap(own(one), own(other));
    Q_EMIT stateChanged();
}

void PaneEditor::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    Q_EMIT stateChanged();
}

void PaneEditor::unlockFor(PaneIndex pane)
{
    if (hasTexts() && obstacle(pane).isEmpty())
        setEnabled(true);
}

void PaneEditor::setObstacle(PaneIndex pane, const QString &reason)
{
    m_lanes[std::size_t(pane.number())].obstacle = reason;
}

bool PaneEditor::mayEdit(PaneIndex pane)
{
    QString reason;
    if (!obstacle(pane).isEmpty())
        reason = obstacle(pane);
    else if (!m_scene.document())
        reason = Velmora::tr("There is no text to edit yet: compare first");
    else if (!m_enabled)
        reason = Velmora::tr("The texts are locked: switch on \"Enable editing\" to change them");
    if (!reason.isEmpty())
        Q_EMIT refused(reason);
    return reason.isEmpty();
}

bool PaneEditor::mayReplaceSelection(PaneIndex pane)
{
    if (!mayEdit(pane))
        return false;
    const TextCaret &caret = m_scene.caret();
    const RowLayout &layout = m_scene.layout();
    const qsizetype rows = caret.selectionEnd().row - caret.selectionStart().row;
    const bool isHidden = caret.pane == pane && layout.filter() == RowFilter::Identical &&
                          layout.indexOf(caret.selectionEnd().row) - layout.indexOf(caret.selectionStart().row) != rows;
    if (isHidden)
        Q_EMIT refused(Velmora::tr("The selection reaches over lines that are not shown: show all lines first"));
    return !isHidden;
}

// Places ------------------------------------------------------------------------------------------------------------

bool PaneEditor::hasLine(PaneIndex pane, qsizetype row) const
{
    const PaneDocument &document = *m_scene.document();
    return row < document.rowCount() && document.lineNumber(row, pane) >= 1;
}

EditPosition PaneEditor::place(PaneIndex pane, TextPosition position, Toward toward) const
{
    if (hasLine(pane, position.row))
        return {m_scene.document()->lineNumber(position.row, pane) - 1, position.unit};
    const qsizetype line = m_scene.document()->linesBefore(position.row, pane);
    const EditSnapshot &text = *buffer(pane).snapshot();
    if (toward == Toward::End && line < text.count())
        return {line, 0};
    return line > 0 ? EditPosition{line - 1, text.text(line - 1).size()} : EditPosition{};
}

// Editing -----------------------------------------------------------------------------------------------------------

bool PaneEditor::insert(PaneIndex pane, const QString &text, EditBuffer::Merge merge)
{
    if (!mayReplaceSelection(pane))
        return false;
    const TextCaret caret = m_scene.caret();
    const TextPosition start = caret.pane == pane ? caret.selectionStart() : TextPosition{caret.position.row, 0};
    const TextPosition end = caret.pane == pane ? caret.selectionEnd() : start;
    const EditPosition from = place(pane, start, Toward::End);
    const EditPosition to = place(pane, end, Toward::Start);
    if (from < to || (hasLine(pane, start.row) && start == end)) {
        apply(pane, own(pane).replace(from, to, text, from == to ? merge : EditBuffer::Merge::Never));
    } else {
        const bool isBreak = text == QStringLiteral("\n");
        apply(pane,
              own(pane).insertLines(m_scene.document()->linesBefore(start.row, pane), isBreak ? QString() : text));
    }
    return true;
}

bool PaneEditor::insertAt(PaneIndex pane, TextPosition at, const QString &text)
{
    if (text.isEmpty() || !mayEdit(pane))
        return false;
    const EditPosition to = place(pane, at, Toward::End);
    if (hasLine(pane, at.row)) {
        const LineChange change = own(pane).replace(to, to, text);
        apply(pane, change);
        select(pane, to, change.caret);
    } else {
        const qsizetype line = m_scene.document()->linesBefore(at.row, pane);
        const LineChange change = own(pane).insertLines(line, text);
        apply(pane, change);
        select(pane, {line, 0}, change.caret);
    }
    return true;
}

bool PaneEditor::moveSelection(PaneIndex pane, TextPosition at)
{
    const TextCaret caret = m_scene.caret();
    if (caret.pane != pane || !caret.hasSelection() || !mayReplaceSelection(pane))
        return false;
    const EditPosition from = place(pane, caret.selectionStart(), Toward::End);
    const EditPosition until = place(pane, caret.selectionEnd(), Toward::Start);
    const EditPosition to = place(pane, at, Toward::End);
    if (from >= until || (to >= from && to <= until))
        return false;
    const EditBuffer::Moved moved = own(pane).move(from, until, to);
    apply(pane, moved.change);
    select(pane, moved.start, moved.change.caret);
    return true;
}

bool PaneEditor::eraseSelection(PaneIndex pane)
{
    const TextCaret caret = m_scene.caret();
    if (caret.pane != pane || !caret.hasSelection())
        return false;
    if (!mayReplaceSelection(pane))
        return true;
    const EditPosition from = place(pane, caret.selectionStart(), Toward::End);
    const EditPosition to = place(pane, caret.selectionEnd(), Toward::Start);
    if (from < to)
        apply(pane, own(pane).replace(from, to, QString()));
    return true;
}

bool PaneEditor::erase(PaneIndex pane, TextPosition to)
{
    if (!mayEdit(pane))
        return false;
    const TextPosition here = m_scene.caret().position;
    const Toward toward = to < here ? Toward::Start : Toward::End;
    const EditPosition from = place(pane, here, toward);
    const EditPosition until = place(pane, to, toward);
    if (!hasLine(pane, here.row)) // between lines there is nothing to remove
        showChange(pane, from);
    else if (from != until)
        apply(pane, own(pane).replace(from, until, QString(), EditBuffer::Merge::Erasing));
    return true;
}

bool PaneEditor::copyRows(PaneIndex from, PaneIndex to, RowRange rows)
{
    if (!mayEdit(to) || rows.count <= 0 || rows.end() > m_scene.document()->rowCount())
        return false;
    const PaneDocument &document = *m_scene.document();
    const qsizetype source = document.linesBefore(rows.first, from);
    const qsizetype sourceEnd = document.linesBefore(rows.end(), from);
    const qsizetype target = document.linesBefore(rows.first, to);
    const qsizetype targetEnd = document.linesBefore(rows.end(), to);
    const LineChange change =
        own(to).copyLines(target, targetEnd - target, *buffer(from).snapshot(), source, sourceEnd - source);
    apply(to, change);
    select(to, change.caret, change.caret);
    return true;
}

void PaneEditor::replaceLines(PaneIndex pane, qsizetype first, qsizetype removed, const TextLines &with)
{
    const TextCaret &caret = m_scene.caret();
    const EditPosition here = caret.pane == pane ? place(pane, caret.position, Toward::Start) : EditPosition{first, 0};
    showText(pane, own(pane).replaceLines(first, removed, with, here));
    const TextPosition line{m_scene.caret().position.row, 0};
    if (caret.pane == pane && line.row < m_scene.document()->rowCount() && hasLine(pane, line.row)) {
        const qsizetype units = m_scene.document()->text(line.row, pane).size();
        const TextPosition kept{line.row, std::min(m_scene.caret().position.unit, units)};
        m_scene.setCaret({pane, kept, kept});
    }
    Q_EMIT edited(pane);
    Q_EMIT stateChanged();
}

void PaneEditor::replaceLines(PaneIndex pane, qsizetype first, qsizetype removed, const std::vector<LineRun> &with)
{
    apply(pane, own(pane).replaceLines(first, removed, with, {first, 0}));
}

void PaneEditor::undo(PaneIndex pane)
{
    if (buffer(pane).canUndo() && mayEdit(pane))
        apply(pane, own(pane).undo());
}

void PaneEditor::redo(PaneIndex pane)
{
    if (buffer(pane).canRedo() && mayEdit(pane))
        apply(pane, own(pane).redo());
}

void PaneEditor::showText(PaneIndex pane, const LineChange &change)
{
    Q_EMIT linesChanged(pane, change);
    PaneTexts texts;
    for (const Lane &lane : m_lanes)
        texts.push_back(lane.buffer.snapshot());
    m_scene.replaceDocument(m_patcher(*m_scene.document(), texts, pane, change), pane, change);
}

void PaneEditor::apply(PaneIndex pane, const LineChange &change)
{
    showText(pane, change);
    showChange(pane, change.caret);
    Q_EMIT edited(pane);
    Q_EMIT stateChanged();
}

void PaneEditor::showChange(PaneIndex pane, EditPosition caret)
{
    const PaneIndex active = m_scene.caret().pane;
    const qsizetype row = std::max<qsizetype>(m_scene.document()->rowOfLine(pane, qint32(caret.line + 1)), 0);
    const TextPosition position{row, pane == active ? caret.unit : 0};
    m_scene.setCaret({active, position, position});
    m_scene.showCaret();
}

void PaneEditor::select(PaneIndex pane, EditPosition start, EditPosition end)
{
    const auto positionOf = [this, pane](EditPosition at) {
        const qsizetype row = m_scene.document()->rowOfLine(pane, qint32(at.line + 1));
        return TextPosition{std::max<qsizetype>(row, 0), at.unit};
    };
    m_scene.setCaret({pane, positionOf(start), positionOf(end)});
    m_scene.showCaret();
}

} // namespace velmora
