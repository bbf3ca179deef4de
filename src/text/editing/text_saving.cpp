#include "text/editing/text_saving.h"

#include "core/visible_name.h"
#include "session/dialogs.h"
#include "session/pane/pane_editor.h"
#include "session/translate.h"
#include "text/result/side_description.h"
#include "text/text_inputs.h"

#include <QDir>

#include <algorithm>
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
    return visibleName(QDir::toNativeSeparators(path));
}

} // namespace

TextSaving::TextSaving(PaneEditor &editor, TextInputs &inputs, QWidget *window, QObject *parent)
    : QObject(parent), m_editor(editor), m_inputs(inputs), m_window(window)
{
    for (Runner *saver : {&m_savers.left, &m_savers.right})
        connect(saver, &Runner::runningChanged, this, &TextSaving::savingChanged);
}

// Saving ------------------------------------------------------------------------------------------------------------

bool TextSaving::needsSaving(Side side) const
{
    if (m_editor.buffer(side).isModified() || m_inputs.at(side).loadedPath() == TextSide::clipboardPath())
        return true;
    const DecodedText &text = m_inputs.at(side).loaded().text;
    const bool hasLineEnd = text.lineEnds != LineEndStyle::Lf || text.lines.count() > 1 ||
                            (!text.lines.isEmpty() && text.lines.lineEnd(0) != LineEnd::None);
    return hasLineEnd && m_ends[side].value_or(text.lineEnds) != text.lineEnds && m_editor.obstacle(side).isEmpty();
}

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
    if (!m_editor.hasTexts()) {
        Q_EMIT message(Velmora::tr("There is no text to save yet: compare first"));
        done(false);
    } else if (!needsSaving(side)) {
        Q_EMIT message(side == Side::Left ? Velmora::tr("The left side has no unsaved changes")
                                          : Velmora::tr("The right side has no unsaved changes"));
        done(true);
    } else if (!m_editor.obstacle(side).isEmpty()) {
        Q_EMIT message(m_editor.obstacle(side));
        done(false);
    } else if (path.isEmpty() || path == TextSide::clipboardPath()) {
        saveUnderNewName(side, std::move(done));
    } else {
        start(side, path, Target::AsRead, std::move(done));
    }
}

void TextSaving::saveAs(Side side)
{
    whenSaved([this, side] {
        const QString loss = lossOfSaving(m_inputs.at(side).loaded());
        if (m_editor.hasTexts() && loss.isEmpty())
            saveUnderNewName(side, [](bool) {});
        else
            Q_EMIT message(loss.isEmpty() ? Velmora::tr("There is no text to save yet: compare first") : loss);
    });
}

void TextSaving::saveAll()
{
    QList<Side> changed;
    for (const Side side : {Side::Left, Side::Right}) {
        if (m_editor.buffer(side).isModified())
            changed.append(side);
    }
    if (changed.isEmpty()) {
        Q_EMIT message(Velmora::tr("There are no unsaved changes"));
        return;
    }
    // A side without a file asks for a name, and nobody may answer: it comes last.
    if (m_inputs.at(changed.first()).loadedPath() == TextSide::clipboardPath())
        std::reverse(changed.begin(), changed.end());
    const Side last = changed.last();
    if (changed.size() == 1)
        save(last);
    else
        save(changed.first(), [this, last](bool) { save(last); });
}

void TextSaving::saveUnderNewName(Side side, Done done)
{
    const QString title = side == Side::Left ? Velmora::tr("Save left file") : Velmora::tr("Save right file");
    const QString loaded = m_inputs.at(side).loadedPath();
    const QString present = loaded == TextSide::clipboardPath() ? QString() : loaded;
    Dialogs::instance().saveFile(m_window, title, present, QString(),
                                 [this, side, present, done = std::move(done)](const QString &path) {
                                     start(side, path, path == present ? Target::Changed : Target::Other, done);
                                 });
}

void TextSaving::convertLineEnds(Side side)
{
    const std::optional<LineEndStyle> style = m_ends[side];
    if (!style)
        return;
    const TextLines text = m_editor.buffer(side).snapshot()->toLines();
    const TextLines converted = withLineEnds(text, *style);
    if (converted.bytes() != text.bytes())
        m_editor.replaceLines(side, 0, text.count(), converted);
}

void TextSaving::start(Side side, const QString &path, Target target, Done done)
{
    convertLineEnds(side);
    const LoadedSide &loaded = m_inputs.at(side).loaded();
    TextSaveRequest request{m_editor.buffer(side).snapshot(), loaded.text.encoding, path, target, loaded.stamp};
    m_editor.beginSave(side);
    Q_EMIT message(Velmora::tr("Saving %1...").arg(shown(path)));
    m_savers[side].start(
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
        offerOtherName(side, Velmora::tr("Cannot write file: %1").arg(shown(path)), result.error, done);
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
    loaded.text.lineEnds = m_ends[side].value_or(loaded.text.lineEnds);
    loaded.missing = false;
    loaded.stamp = result.stamp;
    // A path that was chosen for the next comparison stays.
    if (m_inputs.at(side).path() == m_inputs.at(side).loadedPath())
        m_inputs.at(side).setPath(path);
    m_inputs.at(side).setLoaded(loaded, path);
    Q_EMIT saved(side);
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

void TextSaving::offerOtherName(Side side, const QString &text, const QString &why, Done done)
{
    enum Answer { Close, OtherName };
    Q_EMIT message(text);
    const auto act = [this, side, done = std::move(done)](int answer) {
        if (answer == OtherName)
            saveUnderNewName(side, done);
        else
            done(false);
    };
    Dialogs::instance().ask(
        m_window, Dialogs::Tone::Warning, Velmora::tr("Save failed"),
        why.isEmpty() ? text : text + QStringLiteral("\n\n") + why,
        {{Velmora::tr("Save &as..."), OtherName, true, false}, {Velmora::tr("Cancel"), Close, false, true}}, act);
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
    whenSaved([this, answered = std::move(answered)] { askToKeep({Side::Left, Side::Right}, answered); });
}

void TextSaving::askToKeep(QList<Side> sides, std::function<void(bool)> answered)
{
    sides.removeIf([this](Side side) { return !m_editor.buffer(side).isModified(); });
    if (sides.isEmpty()) {
        answered(true);
        return;
    }
    enum Answer { Cancel, Save, Discard };
    const Side side = sides.first();
    const auto act = [this, sides, answered = std::move(answered)](int answer) {
        if (answer == Cancel) {
            answered(false);
        } else if (answer == Discard) {
            askToKeep(sides.mid(1), answered);
        } else {
            save(sides.first(), [this, sides, answered](bool saved) {
                if (saved)
                    askToKeep(sides, answered);
                else
                    answered(false);
            });
        }
    };
    const QString question = side == Side::Left ? Velmora::tr("The left side has unsaved changes:\n%1\n\nSave them?")
                                                : Velmora::tr("The right side has unsaved changes:\n%1\n\nSave them?");
    Dialogs::instance().ask(m_window, Dialogs::Tone::Warning, Velmora::tr("Unsaved changes"),
                            question.arg(shown(m_inputs.at(side).loadedPath())),
                            {{Velmora::tr("&Save"), Save, true, false},
                             {Velmora::tr("&Discard"), Discard, false, false},
                             {Velmora::tr("Cancel"), Cancel, false, true}},
                            act);
}

} // namespace velmora
