#include "text/editing/text_editing.h"

#include "core/line_ends.h"
#include "core/visible_name.h"
#include "session/document/text_input.h"
#include "session/passing_copies.h"
#include "session/translate.h"
#include "text/text_inputs.h"
#include "text/view/diff_view.h"
#include "text/view/row_patch.h"

namespace velmora {

namespace {

constexpr auto pauseBeforeComparing = std::chrono::milliseconds(350);

TextWords leftWords()
{
    return {.unnamed = {},
            .noTextYet = Velmora::tr("There is no text to save yet: compare first"),
            .noChanges = Velmora::tr("The left side has no unsaved changes"),
            .saveTitle = Velmora::tr("Save left file"),
            .saved = Velmora::tr("Left file saved: %1"),
            .askToSave = Velmora::tr("The left side has unsaved changes:\n%1\n\nSave them?"),
            .changedOnDisk = Velmora::tr("The left file has changed on disk: %1"),
            .goneFromDisk = Velmora::tr("The left file is no longer there: %1"),
            .noText = Velmora::tr("This side holds bytes that no text has and is not edited here"),
            .undecodable =
                Velmora::tr("This side holds bytes that its encoding does not know: saving would lose them")};
}

TextWords rightWords()
{
    TextWords words = leftWords();
    words.noChanges = Velmora::tr("The right side has no unsaved changes");
    words.saveTitle = Velmora::tr("Save right file");
    words.saved = Velmora::tr("Right file saved: %1");
    words.askToSave = Velmora::tr("The right side has unsaved changes:\n%1\n\nSave them?");
    words.changedOnDisk = Velmora::tr("The right file has changed on disk: %1");
    words.goneFromDisk = Velmora::tr("The right file is no longer there: %1");
    return words;
}

/// Why a text cannot be changed without harm; empty when it can.
QString obstacleOf(const EditedText &text, bool isReadOnly)
{
    if (isReadOnly)
        return Velmora::tr("This side is read-only by the session's settings");
    if (const QString origin = originOfCopy(text.input->path()); !origin.isEmpty())
        return Velmora::tr("This side is a copy and cannot be changed: %1").arg(visibleName(origin));
    return describeLoss(text);
}

QList<PaneIndex> panesOf(bool left, bool right)
{
    QList<PaneIndex> panes;
    if (left)
        panes.append(Side::Left);
    if (right)
        panes.append(Side::Right);
    return panes;
}

} // namespace

TextEditing::TextEditing(DiffView &view, TextInputs &inputs, QWidget *window)
    : QObject(window),
      m_view(view),
      m_inputs(inputs),
      m_texts(view.scene(),
              {{Side::Left, &inputs.at(Side::Left), leftWords()}, {Side::Right, &inputs.at(Side::Right), rightWords()}},
              window)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseBeforeComparing);
    connect(&m_pause, &QTimer::timeout, this, &TextEditing::compareAgain);
    connect(&editor(), &PaneEditor::edited, this, &TextEditing::takeEdit);
    connect(&editor(), &PaneEditor::refused, this, &TextEditing::message);
    connect(&saving(), &TextSaving::message, this, &TextEditing::message);
}

void TextEditing::takeComparison(const TextCompareResult &result, const TextSessionOptions &options)
{
    m_runner.abandon();
    m_pause.stop();
    m_options = options;
    editor().setObstacle(Side::Left, obstacleOf(m_texts.at(Side::Left), options.leftReadOnly));
    editor().setObstacle(Side::Right, obstacleOf(m_texts.at(Side::Right), options.rightReadOnly));
    saving().setLineEnds(Side::Left, lineEndStyleFromName(options.leftEol));
    saving().setLineEnds(Side::Right,
                         lineEndStyleFromName(options.sameAsLeftFileFormat ? options.leftEol : options.rightEol));
    editor().setTexts({m_texts.unlessShown(Side::Left, result.left), m_texts.unlessShown(Side::Right, result.right)},
                      diffPatcher(options));
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
        TextOrigin origin;
        origin.loaded = m_inputs.at(side).loaded();
        origin.edited = editor().buffer(side).snapshot();
        return origin;
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

void TextEditing::confirmReload(bool left, bool right, std::function<void()> go)
{
    const auto panes = [this, left, right] {
        QList<PaneIndex> reloaded = panesOf(left, right);
        reloaded.removeIf([this](PaneIndex pane) { return m_inputs.at(sideOf(pane)).isClipboard(); });
        return reloaded;
    };
    const auto question = [](const QList<PaneIndex> &lost) {
        if (lost.size() > 1)
            return Velmora::tr("There are unsaved changes. Reload both sides from disk?");
        return lost.first() == Side::Left ? Velmora::tr("The left side has unsaved changes. Reload from disk?")
                                          : Velmora::tr("The right side has unsaved changes. Reload from disk?");
    };
    m_texts.confirmDiscard(panes, Velmora::tr("Reload"), question, std::move(go));
}

void TextEditing::confirmReplacement(Side side, std::function<void()> go)
{
    const auto question = [side](const QList<PaneIndex> &) {
        return side == Side::Left ? Velmora::tr("The left side has unsaved changes. Discard them?")
                                  : Velmora::tr("The right side has unsaved changes. Discard them?");
    };
    m_texts.confirmDiscard([side] { return QList<PaneIndex>{side}; }, Velmora::tr("Unsaved changes"), question,
                           std::move(go));
}

void TextEditing::confirmOtherFiles(std::function<void()> go)
{
    const auto panes = [this] {
        const auto isOther = [this](Side side) { return m_inputs.at(side).path() != m_inputs.at(side).loadedPath(); };
        return panesOf(isOther(Side::Left), isOther(Side::Right));
    };
    const auto question = [](const QList<PaneIndex> &) {
        return Velmora::tr("The texts shown have unsaved changes. Discard them and compare other files?");
    };
    m_texts.confirmDiscard(panes, Velmora::tr("Unsaved changes"), question, std::move(go));
}

} // namespace velmora
