#include "text/text_saving.h"

#include "session/dialogs.h"
#include "session/translate.h"
#include "text/text_inputs.h"
#include "text/view/diff_editor.h"

#include <QDir>

#include <utility>

namespace velmora {

namespace {

using Target = TextSaveRequest::Target;

QString codePointName(const QString &character)
{
    const QList<uint> points = character.toUcs4();
    return QStringLiteral("U+%1").arg(points.isEmpty() ? 0 : points.first(), 4, 16, QLatin1Char('0')).toUpper();
}

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

TextSaving::TextSaving(DiffEditor &editor, TextInputs &inputs, QWidget *window, QObject *parent)
    : QObject(parent), m_editor(editor), m_inputs(inputs), m_window(window)
{
    for (Runner *saver : {&m_leftSaver, &m_rightSaver})
        connect(saver, &Runner::runningChanged, this, &TextSaving::savingChanged);
}

// Saving ------------------------------------------------------------------------------------------------------------

void TextSaving::save(Side side, Done done)
{
    if (!done)
        done = [](bool) {};
    if (isSaving()) {
        whenSaved([this, side, done = std::move(done)] { save(side, done); });
        return;
    }
    // Not the path that is shown: that may be one to be compared next.
    const QString path = m_inputs.at(side).loadedPath();
    QString obstacle = m_editor.obstacle(side);
    if (!m_editor.hasTexts())
        obstacle = Velmora::tr("There is no text to save yet: compare first");
    if (!obstacle.isEmpty()) {
        Q_EMIT message(obstacle);
        done(false);
    } else if (path.isEmpty() || path == TextSide::clipboardPath()) {
        saveUnderNewName(side, std::move(done));
    } else {
        start(side, path, Target::AsRead, std::move(done));
    }
}

void TextSaving::saveUnderNewName(Side side, Done done)
{
    const QString title = side == Side::Left ? Velmora::tr("Save left file") : Velmora::tr("Save right file");
    Dialogs::instance().saveFile(
        m_window, title, QString(), QString(),
        [this, side, done = std::move(done)](const QString &path) { start(side, path, Target::Other, done); });
}

void TextSaving::start(Side side, const QString &path, Target target, Done done)
{
    const LoadedSide &loaded = m_inputs.at(side).loaded();
    TextSaveRequest request{m_editor.buffer(side).snapshot(), loaded.text.encoding, path, target, loaded.stamp};
    m_editor.beginSave(side);
    Q_EMIT message(Velmora::tr("Saving %1...").arg(shown(path)));
    saver(side).start(
        [request = std::move(request)](const CancelFlag &, Progress &progress) { return saveText(request, progress); },
        [this, side, path, done = std::move(done)](RunOutcome<TextSaveResult> &&outcome) {
            finish(side, path, std::move(outcome), done);
        },
        [this](const ProgressState &state) {
            if (state.total > 0)
                Q_EMIT progressed(double(state.done) / double(state.total));
        });
}

void TextSaving::finish(Side side, const QString &path, RunOutcome<TextSaveResult> &&outcome, const Done &done)
{
    using End = TextSaveResult::End;
    TextSaveResult result;
    if (outcome.value)
        result = std::move(*outcome.value);
    else
        result.end = End::NotWritten;
    const QString encoding = m_inputs.at(side).loaded().text.encoding.name();
    if (result.end == End::Saved)
        take(side, path, result);
    m_editor.endSave(side, result.end == End::Saved);
    switch (result.end) {
    case End::NotEncodable:
        fail(Velmora::tr("Line %1 holds the character %2 (%3), which has no place in %4. Nothing was written.")
                 .arg(QString::number(result.line + 1), result.character, codePointName(result.character), encoding),
             done);
        break;
    case End::NotFaithful:
        fail(
            Velmora::tr("%1 would write lines that were not edited in other bytes. Nothing was written.").arg(encoding),
            done);
        break;
    case End::ChangedMeanwhile:
        askToWriteOver(side, path, result.stamp, done);
        break;
    case End::NotWritten:
        fail(Velmora::tr("Cannot write file: %1").arg(shown(path)), done);
        break;
    case End::Saved:
        done(true);
        break;
    }
    for (const auto &go : std::exchange(m_waiting, {}))
        whenSaved(go);
}

void TextSaving::take(Side side, const QString &path, const TextSaveResult &result)
{
    LoadedSide loaded = m_inputs.at(side).loaded();
    loaded.text.lines = result.written;
    loaded.missing = false;
    loaded.stamp = result.stamp;
    // A path that was chosen for the next comparison stays.
    if (m_inputs.at(side).path() == m_inputs.at(side).loadedPath())
        m_inputs.at(side).setPath(path);
    m_inputs.at(side).setLoaded(loaded, path);
    Q_EMIT message(side == Side::Left ? Velmora::tr("Left file saved: %1").arg(shown(path))
                                      : Velmora::tr("Right file saved: %1").arg(shown(path)));
}

void TextSaving::askToWriteOver(Side side, const QString &path, const FileStamp &found, Done done)
{
    const QString question = found.isFile()
                                 ? Velmora::tr("Another program has changed this file since it was read:\n%1\n\n"
                                               "Write over it?")
                                 : Velmora::tr("This file is no longer there:\n%1\n\nWrite it anew?");
    Dialogs::instance().askYesNo(m_window, Velmora::tr("External file changed"), question.arg(shown(path)), false,
                                 [this, side, path, done = std::move(done)](bool yes) {
                                     if (yes)
                                         start(side, path, Target::Changed, done);
                                     else
                                         done(false);
                                 });
}

void TextSaving::fail(const QString &text, const Done &done)
{
    Q_EMIT message(text);
    Dialogs::instance().tell(m_window, Dialogs::Tone::Warning, Velmora::tr("Save failed"), text,
                             [done] { done(false); });
}

void TextSaving::whenSaved(std::function<void()> go)
{
    if (isSaving())
        m_waiting.push_back(std::move(go));
    else
        go();
}

// Closing -----------------------------------------------------------------------------------------------------------

void TextSaving::confirmClose(std::function<void(bool)> answered)
{
    whenSaved([this, answered = std::move(answered)] { askToKeep(false, false, answered); });
}

void TextSaving::askToKeep(bool leftDiscarded, bool rightDiscarded, std::function<void(bool)> answered)
{
    const bool left = !leftDiscarded && m_editor.buffer(Side::Left).isModified();
    const bool right = !rightDiscarded && m_editor.buffer(Side::Right).isModified();
    if (!left && !right) {
        answered(true);
        return;
    }
    enum Answer { Cancel, Save, Discard };
    const Side side = left ? Side::Left : Side::Right;
    const auto act = [this, side, leftDiscarded, rightDiscarded, answered = std::move(answered)](int answer) {
        if (answer == Cancel) {
            answered(false);
        } else if (answer == Discard) {
            askToKeep(leftDiscarded || side == Side::Left, rightDiscarded || side == Side::Right, answered);
        } else {
            save(side, [this, leftDiscarded, rightDiscarded, answered](bool saved) {
                if (saved)
                    askToKeep(leftDiscarded, rightDiscarded, answered);
                else
                    answered(false);
            });
        }
    };
    const QString question = left ? Velmora::tr("The left side has unsaved changes:\n%1\n\nSave them?")
                                  : Velmora::tr("The right side has unsaved changes:\n%1\n\nSave them?");
    Dialogs::instance().ask(m_window, Dialogs::Tone::Warning, Velmora::tr("Unsaved changes"),
                            question.arg(shown(m_inputs.at(side).loadedPath())),
                            {{Velmora::tr("&Save"), Save, true, false},
                             {Velmora::tr("&Discard"), Discard, false, false},
                             {Velmora::tr("Cancel"), Cancel, false, true}},
                            act);
}

} // namespace velmora
