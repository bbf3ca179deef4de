#include "text/manual_alignment.h"

#include "session/pane/pane_editor.h"
#include "session/translate.h"
#include "text/view/diff_view.h"

#include <utility>

namespace velmora {

ManualAlignment::ManualAlignment(DiffView &view, PaneEditor &editor, QObject *parent) : QObject(parent), m_view(view)
{
    connect(&editor, &PaneEditor::linesChanged, this, [this](PaneIndex pane, const LineChange &change) {
        m_chosen.reset();
        m_pairs.takeEdit(sideOf(pane), change);
        showPairs();
    });
}

void ManualAlignment::setPairs(const LinePairs &pairs)
{
    m_chosen.reset();
    m_pairs = pairs;
    showPairs();
}

void ManualAlignment::showPairs()
{
    std::vector<qint32> lines;
    for (const LinePair &pair : m_pairs.list())
        lines.push_back(pair.left);
    m_view.scene().setAlignedLines(std::move(lines));
}

qint32 ManualAlignment::caretLine() const
{
    const DiffDocument *document = m_view.document();
    const TextCaret &caret = m_view.scene().caret();
    return document && caret.position.row < document->rowCount() ? document->lineNumber(caret.position.row, caret.pane)
                                                                 : -1;
}

void ManualAlignment::chooseLine()
{
    const Side side = m_view.activeSide();
    const qint32 line = caretLine();
    if (line < 1) {
        Q_EMIT message(Velmora::tr("There is no line here that could be aligned"));
        return;
    }
    if (!m_chosen || m_chosen->side == side) {
        m_chosen = {side, line};
        const QString text = side == Side::Left ? Velmora::tr("Left line %1 is chosen: now choose a line on the right "
                                                              "in the same way (Esc gives up)")
                                                : Velmora::tr("Right line %1 is chosen: now choose a line on the left "
                                                              "in the same way (Esc gives up)");
        Q_EMIT message(text.arg(line));
        return;
    }
    const qint32 other = std::exchange(m_chosen, {})->line;
    LinePairs pairs = m_pairs;
    pairs.add(side == Side::Left ? LinePair{line, other} : LinePair{other, line});
    setPairs(pairs);
    Q_EMIT changed();
}

bool ManualAlignment::giveUp()
{
    const bool hadOne = m_chosen.has_value();
    m_chosen.reset();
    if (hadOne)
        Q_EMIT message(Velmora::tr("No line is chosen any more"));
    return hadOne;
}

void ManualAlignment::release()
{
    LinePairs pairs = m_pairs;
    if (!pairs.remove(m_view.activeSide(), caretLine())) {
        Q_EMIT message(Velmora::tr("This line is not aligned by hand"));
        return;
    }
    setPairs(pairs);
    Q_EMIT changed();
}

void ManualAlignment::releaseAll()
{
    if (m_pairs.isEmpty())
        return;
    setPairs({});
    Q_EMIT changed();
}

QString ManualAlignment::commandText() const
{
    if (!m_chosen || m_chosen->side == m_view.activeSide())
        return Velmora::tr("Align with...");
    return (m_chosen->side == Side::Left ? Velmora::tr("Align with left line %1")
                                         : Velmora::tr("Align with right line %1"))
        .arg(m_chosen->line);
}

bool ManualAlignment::canRelease() const
{
    LinePairs pairs = m_pairs;
    return pairs.remove(m_view.activeSide(), caretLine());
}

} // namespace velmora
