#include "text/text_editing.h"

#include "session/dialogs.h"
#include "session/translate.h"
#include "text/text_inputs.h"
#include "text/text_saver.h"
#include "text/view/diff_view.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

constexpr auto pauseBeforeComparing = std::chrono::milliseconds(350);

QString codePointName(const QString &character)
{
    const QList<uint> points = character.toUcs4();
    return QStringLiteral("U+%1").arg(points.isEmpty() ? 0 : points.first(), 4, 16, QLatin1Char('0')).toUpper();
}

/// Why a text cannot be changed without harm; empty when it can.
QString obstacleOf(const LoadedSide &loaded, bool isReadOnly)
{
    if (isReadOnly)
        return Velmora::tr("This side is read-only by the session's settings");
    if (loaded.text.binary || loaded.text.tooLarge)
        return Velmora::tr("This side holds bytes that no text has and is not edited here");
    if (loaded.text.undecodable > 0)
        return Velmora::tr("This side holds bytes that its encoding does not know: saving would lose them");
    return {};
}

} // namespace

TextEditing::TextEditing(DiffView &view, TextInputs &inputs, QWidget *window)
    : QObject(window), m_view(view), m_inputs(inputs), m_window(window), m_editor(view.scene(), this)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseBeforeComparing);
    connect(&m_pause, &QTimer::timeout, this, &TextEditing::recompare);
    connect(&m_editor, &DiffEditor::edited, this, &TextEditing::takeEdit);
    connect(&m_editor, &DiffEditor::refused, this, &TextEditing::message);
}

void TextEditing::takeComparison(const TextCompareResult &result, const TextSessionOptions &options)
{
    m_runner.abandon();
    m_pause.stop();
    m_options = options;
    m_editor.setObstacle(Side::Left, obstacleOf(result.left, options.leftReadOnly));
    m_editor.setObstacle(Side::Right, obstacleOf(result.right, options.rightReadOnly));
    m_editor.setTexts(result.left.text.lines, result.right.text.lines, options);
}

LoadedSide TextEditing::edited(Side side) const
{
    LoadedSide loaded = m_inputs.at(side).loaded();
    loaded.text.lines = m_editor.buffer(side).snapshot()->toLines();
    loaded.missing = false;
    return loaded;
}

SideInput TextEditing::input(Side side, ChangedFile changed) const
{
    SideInput input = m_inputs.at(side).input(changed);
    if (isModified(side))
        input.loaded = edited(side);
    return input;
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

void TextEditing::recompare()
{
    struct Texts {
        TextCompareInput input;
        std::shared_ptr<const EditSnapshot> left;
        std::shared_ptr<const EditSnapshot> right;
    };
    Texts texts{{{{}, {}, m_inputs.at(Side::Left).loaded()}, {{}, {}, m_inputs.at(Side::Right).loaded()}, m_options},
                m_editor.buffer(Side::Left).snapshot(),
                m_editor.buffer(Side::Right).snapshot()};
    const auto compare = [texts = std::move(texts)](const CancelFlag &cancel, Progress &progress) {
        TextCompareInput input = texts.input;
        input.left.loaded->text.lines = texts.left->toLines();
        input.right.loaded->text.lines = texts.right->toLines();
        return runTextCompare(input, cancel, progress);
    };
    m_runner.start(compare, [this](RunOutcome<TextCompareResult> &&outcome) {
        if (outcome.end != RunEnd::Done || !outcome.value->document)
            return;
        m_view.scene().replaceDocument(outcome.value->document);
        m_view.setBanner({});
        Q_EMIT recompared(outcome.value->document, outcome.value->left.text.lines, outcome.value->right.text.lines);
    });
}

// Saving ------------------------------------------------------------------------------------------------------------

void TextEditing::save(Side side)
{
    const TextSide &input = m_inputs.at(side);
    if (!m_view.scene().document()) {
        Q_EMIT message(Velmora::tr("There is no text to save yet: compare first"));
    } else if (!m_editor.obstacle(side).isEmpty()) {
        Q_EMIT message(m_editor.obstacle(side));
    } else if (input.isClipboard() || input.loadedPath().isEmpty()) {
        const QString title = side == Side::Left ? Velmora::tr("Save left file") : Velmora::tr("Save right file");
        Dialogs::instance().saveFile(m_window, title, QString(), QString(),
                                     [this, side](const QString &path) { saveTo(side, path); });
    } else if (input.isChangedOnDisk()) {
        const QString question = Velmora::tr("Another program has changed this file since it was read:\n%1\n\n"
                                             "Write over it?")
                                     .arg(QDir::toNativeSeparators(input.loadedPath()));
        Dialogs::instance().askYesNo(m_window, Velmora::tr("External file changed"), question, false,
                                     [this, side](bool yes) {
                                         if (yes)
                                             saveTo(side, m_inputs.at(side).loadedPath());
                                     });
    } else {
        saveTo(side, input.loadedPath());
    }
}

void TextEditing::saveTo(Side side, const QString &path)
{
    LoadedSide loaded = edited(side);
    const TextSaveResult result = saveText(loaded.text.lines, loaded.text.encoding, path);
    const QString shownPath = QDir::toNativeSeparators(path);
    const QString encoding = loaded.text.encoding.name();
    switch (result.end) {
    case TextSaveResult::End::NotEncodable:
        fail(Velmora::tr("Line %1 holds the character %2 (%3), which has no place in %4. Nothing was written.")
                 .arg(QString::number(result.line + 1), result.character, codePointName(result.character), encoding));
        return;
    case TextSaveResult::End::NotFaithful:
        fail(Velmora::tr("%1 would write lines that were not edited in other bytes. Nothing was written.")
                 .arg(encoding));
        return;
    case TextSaveResult::End::NotWritten:
        fail(Velmora::tr("Cannot write file: %1").arg(shownPath));
        return;
    case TextSaveResult::End::Saved:
        break;
    }
    loaded.stamp = FileStamp::of(path);
    m_inputs.at(side).setPath(path);
    m_inputs.at(side).setLoaded(loaded, path);
    m_editor.markClean(side);
    Q_EMIT message(side == Side::Left ? Velmora::tr("Left file saved: %1").arg(shownPath)
                                      : Velmora::tr("Right file saved: %1").arg(shownPath));
    Q_EMIT saved(side);
}

void TextEditing::fail(const QString &text)
{
    Q_EMIT message(text);
    Dialogs::instance().tell(m_window, Dialogs::Tone::Warning, Velmora::tr("Save failed"), text);
}

// Questions ---------------------------------------------------------------------------------------------------------

void TextEditing::confirmReload(bool left, bool right, std::function<void()> go)
{
    const bool losesLeft = left && isModified(Side::Left);
    const bool losesRight = right && isModified(Side::Right);
    if (!losesLeft && !losesRight) {
        go();
        return;
    }
    QString question = Velmora::tr("There are unsaved changes. Reload both sides from disk?");
    if (!losesRight)
        question = Velmora::tr("The left side has unsaved changes. Reload from disk?");
    else if (!losesLeft)
        question = Velmora::tr("The right side has unsaved changes. Reload from disk?");
    Dialogs::instance().askYesNo(m_window, Velmora::tr("Reload"), question, false, [go = std::move(go)](bool yes) {
        if (yes)
            go();
    });
}

void TextEditing::confirmOtherFiles(std::function<void()> go)
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
