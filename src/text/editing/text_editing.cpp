#include "text/editing/text_editing.h"

#include "core/line_ends.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "text/editing/text_recovery.h"
#include "text/result/side_description.h"
#include "text/text_inputs.h"
#include "text/view/diff_view.h"
#include "text/view/row_patch.h"

namespace velmora {

namespace {

constexpr auto pauseBeforeComparing = std::chrono::milliseconds(350);

/// Why a text cannot be changed without harm; empty when it can.
QString obstacleOf(const LoadedSide &loaded, bool isReadOnly)
{
    if (isReadOnly)
        return Velmora::tr("This side is read-only by the session's settings");
    return lossOfSaving(loaded);
}

} // namespace

TextEditing::TextEditing(DiffView &view, TextInputs &inputs, QWidget *window)
    : QObject(window),
      m_view(view),
      m_inputs(inputs),
      m_window(window),
      m_editor(view.scene(), this),
      m_saving(m_editor, inputs, window, this)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseBeforeComparing);
    connect(&m_pause, &QTimer::timeout, this, &TextEditing::compareAgain);
    connect(&m_editor, &PaneEditor::edited, this, &TextEditing::takeEdit);
    connect(&m_editor, &PaneEditor::refused, this, &TextEditing::message);
    connect(&m_saving, &TextSaving::message, this, &TextEditing::message);
}

void TextEditing::takeComparison(const TextCompareResult &result, const TextSessionOptions &options)
{
    m_runner.abandon();
    m_pause.stop();
    m_options = options;
    m_editor.setObstacle(Side::Left, obstacleOf(result.left, options.leftReadOnly));
    m_editor.setObstacle(Side::Right, obstacleOf(result.right, options.rightReadOnly));
    m_saving.setLineEnds(Side::Left, lineEndStyleFromName(options.leftEol));
    m_saving.setLineEnds(Side::Right,
                         lineEndStyleFromName(options.sameAsLeftFileFormat ? options.leftEol : options.rightEol));
    const auto newText = [this](Side side, const LoadedSide &loaded) -> std::optional<TextLines> {
        if (loaded.shown == m_editor.buffer(side).snapshot())
            return std::nullopt;
        return loaded.text.lines;
    };
    m_editor.setTexts({newText(Side::Left, result.left), newText(Side::Right, result.right)}, diffPatcher(options));
}

SideInput TextEditing::input(Side side, ChangedFile changed) const
{
    SideInput input = m_inputs.at(side).input(changed);
    input.shown = m_editor.buffer(side).snapshot();
    if (isModified(side)) {
        input.loaded = m_inputs.at(side).loaded();
        input.loaded->missing = false;
        input.edited = input.shown;
    }
    return input;
}

void TextEditing::restore(const UnsavedText &text)
{
    TextSide &input = m_inputs.at(text.side);
    if (text.path == TextSide::clipboardPath())
        input.holdText(text.loaded);
    input.setLoaded(text.loaded, text.path);
    if (text.isEdited)
        m_editor.restoreText(text.side, text.loaded.text.lines);
}

void TextEditing::discard(Side side)
{
    m_editor.markClean(side);
}

void TextEditing::unlockFor(Side side)
{
    if (m_view.scene().document() && m_editor.obstacle(side).isEmpty())
        m_editor.setEnabled(true);
}

// Comparing again ---------------------------------------------------------------------------------------------------

void TextEditing::takeEdit(PaneIndex pane)
{
    m_runner.abandon();
    m_pause.start();
    m_view.showNotice(pane, false);
    Q_EMIT textEdited();
}

void TextEditing::compareAgain()
{
    const auto editedSide = [this](Side side) {
        SideInput input;
        input.loaded = m_inputs.at(side).loaded();
        input.edited = m_editor.buffer(side).snapshot();
        return input;
    };
    const DiffDocument *shown = m_view.document();
    if (!shown)
        return;
    m_pause.stop();
    const TextCompareInput input{editedSide(Side::Left), editedSide(Side::Right), m_options, m_pairs,
                                 shown->tabWidth()};
    const auto compare = [input](const CancelFlag &cancel, Progress &progress) {
        return runTextCompare(input, cancel, progress);
    };
    m_runner.start(compare, [this](RunOutcome<TextCompareResult> &&outcome) {
        if (outcome.end != RunEnd::Done || !outcome.value->document)
            return;
        m_view.scene().replaceDocument(outcome.value->document);
        Q_EMIT recompared(outcome.value->document, outcome.value->left.text.lines, outcome.value->right.text.lines);
    });
}

// Questions ---------------------------------------------------------------------------------------------------------

void TextEditing::askToDiscard(const QList<Side> &lost, const QString &title, const QString &question,
                               const std::function<void()> &go)
{
    const auto discardAndGo = [this, lost, go](bool yes) {
        if (!yes)
            return;
        for (const Side side : lost)
            discard(side);
        go();
    };
    if (lost.isEmpty())
        go();
    else
        Dialogs::instance().askYesNo(m_window, title, question, false, discardAndGo);
}

void TextEditing::confirmReload(bool left, bool right, std::function<void()> go)
{
    m_saving.whenSaved([this, left, right, go = std::move(go)] {
        QList<Side> lost;
        for (const Side side : {Side::Left, Side::Right}) {
            if ((side == Side::Left ? left : right) && isModified(side) && !m_inputs.at(side).isClipboard())
                lost.append(side);
        }
        QString question = Velmora::tr("There are unsaved changes. Reload both sides from disk?");
        if (lost.size() == 1) {
            question = lost.first() == Side::Left
                           ? Velmora::tr("The left side has unsaved changes. Reload from disk?")
                           : Velmora::tr("The right side has unsaved changes. Reload from disk?");
        }
        askToDiscard(lost, Velmora::tr("Reload"), question, go);
    });
}

void TextEditing::confirmReplacement(Side side, std::function<void()> go)
{
    m_saving.whenSaved([this, side, go = std::move(go)] {
        askToDiscard(isModified(side) ? QList<Side>{side} : QList<Side>(), Velmora::tr("Unsaved changes"),
                     side == Side::Left ? Velmora::tr("The left side has unsaved changes. Discard them?")
                                        : Velmora::tr("The right side has unsaved changes. Discard them?"),
                     go);
    });
}

void TextEditing::confirmOtherFiles(std::function<void()> go)
{
    m_saving.whenSaved([this, go = std::move(go)] {
        QList<Side> lost;
        for (const Side side : {Side::Left, Side::Right}) {
            if (isModified(side) && m_inputs.at(side).path() != m_inputs.at(side).loadedPath())
                lost.append(side);
        }
        askToDiscard(lost, Velmora::tr("Unsaved changes"),
                     Velmora::tr("The texts shown have unsaved changes. Discard them and compare other files?"), go);
    });
}

} // namespace velmora
