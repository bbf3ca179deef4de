#include "merge/merge_editing.h"

#include "session/translate.h"

#include <algorithm>
#include <utility>

namespace velmora {

MergeEditing::MergeEditing(MergeView &view, PaneEditor &editor, QObject *parent)
    : QObject(parent), m_view(view), m_editor(editor)
{
    for (const MergeSource source : {MergeSource::Left, MergeSource::Base, MergeSource::Right})
        m_editor.setObstacle(paneOf(source), Velmora::tr("The versions stay as they are: edit the result"));
    connect(&editor, &PaneEditor::linesChanged, this, &MergeEditing::follow);
    connect(&editor, &PaneEditor::edited, this, &MergeEditing::partsChanged);
}

void MergeEditing::setMerge(const std::shared_ptr<const MergeDocument> &document, MergeParts parts, EditBuffer result)
{
    m_parts = std::move(parts);
    const MergeTexts &texts = document->merged();
    m_editor.setBuffer(paneOfResult, std::move(result));
    m_editor.setTexts({texts.text(MergeSource::Left), texts.text(MergeSource::Base), texts.text(MergeSource::Right)},
                      [this](const PaneDocument &before, const PaneTexts &panes, PaneIndex, const LineChange &change) {
                          return patched(before, panes, change);
                      });
    m_view.scene().setDocument(document);
    Q_EMIT partsChanged();
}

// Following the text --------------------------------------------------------------------------------------------------

void MergeEditing::follow(PaneIndex pane, const LineChange &change)
{
    if (pane == paneOfResult)
        m_change = m_parts.follow(change, m_editor.buffer(paneOfResult).latestStep(), currentPart());
}

std::shared_ptr<const PaneDocument> MergeEditing::patched(const PaneDocument &before, const PaneTexts &texts,
                                                          const LineChange &change) const
{
    const auto &shown = static_cast<const MergeDocument &>(before);
    MergeDocument::Parts parts = shown.sharedParts();
    if (*parts != m_parts.all())
        parts = std::make_shared<const std::vector<MergePart>>(m_parts.all());
    MergeRows rows = patchedRows(shown.mergeRows(), shown.merged(), m_parts, *texts[resultPane], m_change,
                                 change.inserted - change.removed);
    return std::make_shared<MergeDocument>(shown, std::move(parts), std::move(rows), texts,
                                           patchedWidth(before, texts, paneOfResult, change));
}

// Decisions -----------------------------------------------------------------------------------------------------------

qsizetype MergeEditing::currentPart() const
{
    return document() ? document()->partOfRow(m_view.scene().caret().position.row) : -1;
}

std::vector<qsizetype> MergeEditing::chosenParts() const
{
    std::vector<qsizetype> chosen;
    if (!document() || m_parts.count() == 0)
        return chosen;
    const TextCaret &caret = m_view.scene().caret();
    TextPosition end = caret.selectionEnd();
    // A selection that ends before the first character of a line does not mean that line.
    if (end.unit == 0 && end.row > caret.selectionStart().row)
        --end.row;
    const qsizetype last = document()->partOfRow(end.row);
    for (qsizetype part = document()->partOfRow(caret.selectionStart().row); part <= last; ++part) {
        if (!m_parts.at(part).isPlain())
            chosen.push_back(part);
    }
    return chosen;
}

bool MergeEditing::take(MergeChoice choice)
{
    return takeFor(chosenParts(), choice);
}

bool MergeEditing::takeForAllOpen(MergeChoice choice)
{
    std::vector<qsizetype> open;
    for (qsizetype part = 0; part < m_parts.count(); ++part) {
        if (m_parts.at(part).isOpen())
            open.push_back(part);
    }
    return takeFor(open, choice);
}

bool MergeEditing::takeFor(const std::vector<qsizetype> &parts, MergeChoice choice)
{
    if (parts.empty() || !m_editor.mayEdit(paneOfResult))
        return false;
    carryOut(m_parts.plan(document()->merged(), *m_editor.buffer(paneOfResult).snapshot(), parts, choice));
    goToPart(std::min(parts.front(), m_parts.count() - 1));
    return true;
}

void MergeEditing::carryOut(MergePlan plan)
{
    const qsizetype firstLine = plan.firstLine;
    const qsizetype removed = plan.removedLines;
    const std::vector<LineRun> lines = plan.lines;
    m_parts.expect(std::move(plan));
    m_editor.replaceLines(paneOfResult, firstLine, removed, lines);
}

bool MergeEditing::putIn(qsizetype part, SourceLine line)
{
    if (!document() || part < 0 || part >= m_parts.count() || !m_parts.at(part).leftOut.contains(line) ||
        !m_editor.mayEdit(paneOfResult))
        return false;
    const qsizetype row = document()->rowOf(part, line);
    carryOut(m_parts.planToPutIn(document()->merged(), *m_editor.buffer(paneOfResult).snapshot(), part, line,
                                 placeFor(row, part, line.source)));
    goToLine(part, line);
    return true;
}

/// The line of the result before which one goes in that stands in a row of a part.
qsizetype MergeEditing::placeFor(qsizetype row, qsizetype part, MergeSource source) const
{
    const qint32 beside = row >= 0 ? document()->lineNumber(row, paneOfResult) : -1;
    if (beside >= 1)
        return source == MergeSource::Right ? beside : beside - 1;
    for (qsizetype above = row - 1; above >= document()->rowsOfPart(part).first; --above) {
        if (const qint32 number = document()->lineNumber(above, paneOfResult); number >= 1)
            return number;
    }
    return m_parts.resultStart(part);
}

// Going there ---------------------------------------------------------------------------------------------------------

void MergeEditing::goToPart(qsizetype part)
{
    if (!document() || part < 0 || part >= m_parts.count())
        return;
    PaneScene &scene = m_view.scene();
    const qsizetype row = document()->rowsOfPart(part).first;
    const qsizetype block = scene.layout().blockOf(row);
    if (block >= 0 && scene.layout().block(block).first == row) {
        scene.goToBlock(block);
        return;
    }
    const TextPosition start{row, 0};
    scene.setCaret({scene.caret().pane, start, start});
    scene.showCaretInContext();
}

void MergeEditing::goToLine(qsizetype part, SourceLine line)
{
    const qsizetype row = document() && part >= 0 && part < m_parts.count() ? document()->rowOf(part, line) : -1;
    if (row < 0)
        return;
    const TextPosition start{row, 0};
    m_view.scene().setCaret({paneOf(line.source), start, start});
    m_view.scene().showCaretInContext();
}

bool MergeEditing::goToConflict(bool forward)
{
    const qsizetype part = m_parts.nextConflict(currentPart(), forward, m_parts.openConflicts() > 0);
    goToPart(part);
    return part >= 0;
}

bool MergeEditing::goToChange(bool forward)
{
    const qsizetype step = forward ? 1 : -1;
    for (qsizetype part = currentPart() + step; part >= 0 && part < m_parts.count(); part += step) {
        if (!m_parts.at(part).isPlain()) {
            goToPart(part);
            return true;
        }
    }
    return false;
}

} // namespace velmora
