#include "session/find/replace_controller.h"

#include "session/fault_text.h"
#include "session/find/find_bar.h"
#include "session/find/find_controller.h"
#include "session/pane/pane_editor.h"
#include "session/pane/pane_view.h"
#include "session/translate.h"

#include <QLocale>

namespace velmora {

ReplaceController::ReplaceController(FindBar &bar, FindController &finder, PaneView &view, PaneEditor &editor,
                                     QObject *parent)
    : QObject(parent), m_bar(bar), m_finder(finder), m_view(view), m_editor(editor)
{
    connect(&bar, &FindBar::replaceWanted, this, &ReplaceController::replaceOne);
    connect(&bar, &FindBar::replaceAllWanted, this, &ReplaceController::replaceAll);
    connect(&bar, &FindBar::closeWanted, &m_runner, &Runner::cancel);
    connect(&editor, &PaneEditor::edited, this, [this] { m_runner.cancel(); });
    connect(&m_runner, &Runner::runningChanged, this, [this] { m_bar.showReplacing(m_runner.isRunning()); });
}

bool ReplaceController::mayReplace()
{
    const PaneIndex pane = m_view.activePane();
    m_editor.unlockFor(pane);
    return m_editor.mayEdit(pane);
}

void ReplaceController::replaceOne()
{
    const PaneScene &scene = m_view.scene();
    const TextCaret caret = scene.caret();
    const TextPosition start = caret.selectionStart();
    const SearchQuery query = m_bar.query();
    QRegularExpressionMatch match;
    if (scene.document() && caret.hasSelection() && start.row == caret.selectionEnd().row)
        match = query.expression().match(scene.document()->text(start.row, caret.pane), start.unit);
    const bool isSelected =
        match.hasMatch() && match.capturedStart() == start.unit && match.capturedEnd() == caret.selectionEnd().unit;
    if (!isSelected) {
        m_finder.step(true);
        return;
    }
    if (mayReplace() && m_editor.insert(caret.pane, replacementFor(match, query, m_bar.replacement())))
        m_finder.continueFromCaret();
}

void ReplaceController::replaceAll()
{
    if (m_runner.isRunning()) {
        m_runner.cancel();
        return;
    }
    const PaneIndex pane = m_view.activePane();
    if (!mayReplace())
        return;
    const std::shared_ptr<const EditSnapshot> text = m_editor.buffer(pane).snapshot();
    m_runner.start(
        [text, query = m_bar.query(), with = m_bar.replacement()](const CancelFlag &cancel, Progress &progress) {
            return replaceMatches(*text, query, with, cancel, progress);
        },
        [this, pane, text](RunOutcome<ReplacedText> &&outcome) { take(pane, text, std::move(outcome)); },
        [this](const ProgressState &state) {
            m_bar.showReplaced(state.total > 0 ? double(state.done) / double(state.total) : 0);
        });
}

void ReplaceController::take(PaneIndex pane, const std::shared_ptr<const EditSnapshot> &before,
                             RunOutcome<ReplacedText> &&outcome)
{
    if (!outcome.value || outcome.value->tooLong) {
        const QString tooLong = Velmora::tr("Nothing was replaced: the text would be too long");
        Q_EMIT message(outcome.value ? tooLong : faultText(outcome.fault, tooLong));
        return;
    }
    if (outcome.end != RunEnd::Done || m_editor.buffer(pane).snapshot() != before) {
        Q_EMIT message(Velmora::tr("Nothing was replaced"));
        return;
    }
    const ReplacedText &replaced = *outcome.value;
    const QLocale locale;
    if (replaced.matches > 0)
        m_editor.replaceLines(pane, replaced.first, replaced.removed, replaced.lines);
    QString text = Velmora::tr("Replaced matches: %1").arg(locale.toString(replaced.matches));
    if (replaced.linesGivenUp > 0) {
        text += QStringLiteral(" | ") + Velmora::tr("The expression is too slow for %1 lines, which stay as they are")
                                            .arg(locale.toString(replaced.linesGivenUp));
    }
    Q_EMIT message(text);
}

} // namespace velmora
