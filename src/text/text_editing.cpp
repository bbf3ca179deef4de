#include "text/text_editing.h"

#include "core/line_ends.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "text/side_description.h"
#include "text/text_inputs.h"
#include "text/text_recovery.h"
#include "text/view/diff_view.h"

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
    connect(&m_editor, &DiffEditor::edited, this, &TextEditing::takeEdit);
    connect(&m_editor, &DiffEditor::refused, this, &TextEditing::message);
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
    m_editor.setTexts(newText(Side::Left, result.left), newText(Side::Right, result.right), options);
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

void TextEditing::takeEdit(Side side)
{
    m_runner.abandon();
    m_pause.start();
    m_view.showNotice(side, false);
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
    const std::shared_ptr<const DiffDocument> &shown = m_view.scene().sharedDocument();
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

void TextEditing::confirmReload(bool left, bool right, std::function<void()> go)
{
    m_saving.whenSaved([this, left, right, go = std::move(go)] { askToReload(left, right, go); });
}

void TextEditing::askToReload(bool left, bool right, std::function<void()> go)
{
    const bool losesLeft = left && isModified(Side::Left) && !m_inputs.at(Side::Left).isClipboard();
    const bool losesRight = right && isModified(Side::Right) && !m_inputs.at(Side::Right).isClipboard();
    if (!losesLeft && !losesRight) {
        go();
        return;
    }
    QString question = Velmora::tr("There are unsaved changes. Reload both sides from disk?");
    if (!losesRight)
        question = Velmora::tr("The left side has unsaved changes. Reload from disk?");
    else if (!losesLeft)
        question = Velmora::tr("The right side has unsaved changes. Reload from disk?");
    const auto discardAndGo = [this, losesLeft, losesRight, go = std::move(go)](bool yes) {
        if (!yes)
            return;
        if (losesLeft)
            discard(Side::Left);
        if (losesRight)
            discard(Side::Right);
        go();
    };
    Dialogs::instance().askYesNo(m_window, Velmora::tr("Reload"), question, false, discardAndGo);
}

void TextEditing::confirmReplacement(Side side, std::function<void()> go)
{
    const auto discardAndGo = [this, side, go = std::move(go)](bool yes) {
        if (!yes)
            return;
        discard(side);
        go();
    };
    m_saving.whenSaved([this, side, discardAndGo] {
        if (!isModified(side)) {
            discardAndGo(true);
            return;
        }
        Dialogs::instance().askYesNo(m_window, Velmora::tr("Unsaved changes"),
                                     side == Side::Left
                                         ? Velmora::tr("The left side has unsaved changes. Discard them?")
                                         : Velmora::tr("The right side has unsaved changes. Discard them?"),
                                     false, discardAndGo);
    });
}

void TextEditing::confirmOtherFiles(std::function<void()> go)
{
    m_saving.whenSaved([this, go = std::move(go)] { askToDiscard(go); });
}

void TextEditing::askToDiscard(std::function<void()> go)
{
    const auto isLost = [this](Side side) {
        return isModified(side) && m_inputs.at(side).path() != m_inputs.at(side).loadedPath();
    };
    const bool left = isLost(Side::Left);
    const bool right = isLost(Side::Right);
    if (!left && !right) {
        go();
        return;
    }
    const auto discardAndGo = [this, left, right, go = std::move(go)](bool yes) {
        if (!yes)
            return;
        if (left)
            discard(Side::Left);
        if (right)
            discard(Side::Right);
        go();
    };
    Dialogs::instance().askYesNo(m_window, Velmora::tr("Unsaved changes"),
                                 Velmora::tr("The texts shown have unsaved changes. Discard them and compare other "
                                             "files?"),
                                 false, discardAndGo);
}

} // namespace velmora
