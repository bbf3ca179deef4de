#include "session/document/text_saving.h"

#include "session/dialogs.h"
#include "session/document/text_input.h"
#include "session/pane/pane_editor.h"
#include "session/shown_path.h"
#include "session/translate.h"

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

/// A text with other line ends.
struct Conversion {
    qsizetype before = 0; ///< lines of the text as it was
    TextLines lines;
    bool isOther = false; ///< than the text as it was
};

Conversion convert(const EditSnapshot &text, LineEndStyle style)
{
    const TextLines present = text.toLines();
    TextLines lines = withLineEnds(present, style);
    const bool isOther = lines.bytes() != present.bytes();
    return {present.count(), std::move(lines), isOther};
}

} // namespace

TextSaving::TextSaving(PaneEditor &editor, const std::vector<EditedText> &texts, QWidget *window, QObject *parent)
    : QObject(parent), m_editor(editor), m_texts(texts), m_window(window)
{
    for (const EditedText &text : texts) {
        m_lanes.push_back(std::make_unique<Lane>());
        m_lanes.back()->pane = text.pane;
        connect(&m_lanes.back()->saver, &Runner::runningChanged, this, &TextSaving::savingChanged);
    }
}

TextSaving::Lane &TextSaving::lane(PaneIndex pane) const
{
    const auto found =
        std::find_if(m_lanes.begin(), m_lanes.end(), [pane](const auto &one) { return one->pane == pane; });
    Q_ASSERT(found != m_lanes.end());
    return **found;
}

bool TextSaving::isSaving() const
{
    return std::any_of(m_lanes.begin(), m_lanes.end(), [](const auto &one) { return one->saver.isRunning(); });
}

bool TextSaving::hasFile(PaneIndex pane) const
{
    const QString path = text(pane).input->loadedPath();
    return !path.isEmpty() && path != TextInput::clipboardPath();
}

QList<PaneIndex> TextSaving::modified() const
{
    QList<PaneIndex> panes;
    for (const EditedText &one : m_texts) {
        if (m_editor.buffer(one.pane).isModified())
            panes.append(one.pane);
    }
    return panes;
}

// Saving ------------------------------------------------------------------------------------------------------------

bool TextSaving::needsSaving(PaneIndex pane) const
{
    return m_editor.buffer(pane).isModified() || text(pane).input->loadedPath() == TextInput::clipboardPath() ||
           (isToBeConverted(pane) && m_editor.obstacle(pane).isEmpty());
}

bool TextSaving::isToBeConverted(PaneIndex pane) const
{
    const DecodedText &read = text(pane).input->loaded().text;
    const Lane &wanted = lane(pane);
    const bool hasLineEnd = read.lineEnds != LineEndStyle::Lf || read.lines.count() > 1 ||
                            (!read.lines.isEmpty() && read.lines.lineEnd(0) != LineEnd::None);
    return (hasLineEnd && wanted.ends.value_or(read.lineEnds) != read.lineEnds) ||
           wanted.encoding.value_or(read.encoding) != read.encoding;
}

void TextSaving::save(PaneIndex pane, Done done)
{
    if (!done)
        done = [](bool) {};
    if (isSaving()) {
        whenSaved([this, pane, done = std::move(done)] { save(pane, done); });
        return;
    }
    // Not the path that is shown: that may be one to be compared next.
    const QString path = text(pane).input->loadedPath();
    if (!m_editor.hasTexts()) {
        Q_EMIT message(text(pane).words.noTextYet);
        done(false);
    } else if (!needsSaving(pane)) {
        Q_EMIT message(text(pane).words.noChanges);
        done(true);
    } else if (!m_editor.obstacle(pane).isEmpty()) {
        Q_EMIT message(m_editor.obstacle(pane));
        done(false);
    } else if (!hasFile(pane)) {
        saveUnderNewName(pane, std::move(done));
    } else {
        start(pane, path, Target::AsRead, std::move(done));
    }
}

void TextSaving::saveAs(PaneIndex pane)
{
    whenSaved([this, pane] {
        const QString loss = describeLoss(text(pane));
        if (m_editor.hasTexts() && loss.isEmpty())
            saveUnderNewName(pane, [](bool) {});
        else
            Q_EMIT message(loss.isEmpty() ? text(pane).words.noTextYet : loss);
    });
}

void TextSaving::saveAll()
{
    QList<PaneIndex> changed = modified();
    // A text without a file asks for a name, and nobody may answer: it comes last.
    std::stable_partition(changed.begin(), changed.end(), [this](PaneIndex pane) { return hasFile(pane); });
    if (changed.isEmpty())
        Q_EMIT message(Velmora::tr("There are no unsaved changes"));
    else
        saveInTurn(changed);
}

void TextSaving::saveInTurn(QList<PaneIndex> panes)
{
    const PaneIndex first = panes.takeFirst();
    if (panes.isEmpty())
        save(first);
    else
        save(first, [this, panes](bool) { saveInTurn(panes); });
}

void TextSaving::saveUnderNewName(PaneIndex pane, Done done)
{
    const QString present = hasFile(pane) ? text(pane).input->loadedPath() : QString();
    Dialogs::instance().saveFile(m_window, text(pane).words.saveTitle, present, QString(),
                                 [this, pane, present, done = std::move(done)](const QString &path) {
                                     start(pane, path, path == present ? Target::Changed : Target::Other, done);
                                 });
}

void TextSaving::start(PaneIndex pane, const QString &path, Target target, Done done)
{
    Q_EMIT message(Velmora::tr("Saving %1...").arg(shownPath(path)));
    const std::optional<LineEndStyle> style = lane(pane).ends;
    if (!style) {
        write(pane, path, target, std::move(done));
        return;
    }
    const std::shared_ptr<const EditSnapshot> present = m_editor.buffer(pane).snapshot();
    lane(pane).saver.start(
        [present, style](const CancelFlag &, Progress &progress) {
            progress.report(0, 0, 0);
            return convert(*present, *style);
        },
        [this, pane, path, target, present, done = std::move(done)](RunOutcome<Conversion> &&outcome) {
            if (!outcome.value) {
                RunOutcome<TextSaveResult> failed;
                failed.end = outcome.end;
                finish(pane, path, std::move(failed), done);
                return;
            }
            if (m_editor.buffer(pane).snapshot() != present) { // somebody has typed meanwhile
                start(pane, path, target, done);
                return;
            }
            if (outcome.value->isOther)
                m_editor.replaceLines(pane, 0, outcome.value->before, outcome.value->lines);
            write(pane, path, target, done);
        });
}

void TextSaving::write(PaneIndex pane, const QString &path, Target target, Done done)
{
    const LoadedText &loaded = text(pane).input->loaded();
    TextSaveRequest request{m_editor.buffer(pane).snapshot(), loaded.text.encoding, path, target, loaded.stamp};
    if (lane(pane).encoding != loaded.text.encoding)
        request.converted = lane(pane).encoding;
    m_editor.beginSave(pane);
    lane(pane).saver.start(
        [request = std::move(request)](const CancelFlag &, Progress &progress) { return saveText(request, progress); },
        [this, pane, path, done = std::move(done)](RunOutcome<TextSaveResult> &&outcome) {
            finish(pane, path, std::move(outcome), done);
        },
        [this](const ProgressState &state) {
            if (state.total > 0)
                Q_EMIT progressed(double(state.done) / double(state.total));
        });
}

void TextSaving::finish(PaneIndex pane, const QString &path, RunOutcome<TextSaveResult> &&outcome, const Done &done)
{
    using End = TextSaveResult::End;
    TextSaveResult result;
    if (outcome.value)
        result = std::move(*outcome.value);
    else
        result.end = End::NotWritten;
    const QString encoding = lane(pane).encoding.value_or(text(pane).input->loaded().text.encoding).name();
    if (result.end == End::Saved)
        take(pane, path, result);
    m_editor.endSave(pane, result.end == End::Saved);
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
        askToWriteOver(pane, path, result.stamp, done);
        break;
    case End::NotWritten:
        offerOtherName(pane, Velmora::tr("Cannot write file: %1").arg(shownPath(path)), result.error, done);
        break;
    case End::Saved:
        done(true);
        break;
    }
    for (const auto &go : std::exchange(m_waiting, {}))
        whenSaved(go);
}

void TextSaving::take(PaneIndex pane, const QString &path, const TextSaveResult &result)
{
    TextInput &input = *text(pane).input;
    LoadedText loaded = input.loaded();
    loaded.text.lines = result.written;
    loaded.text.lineEnds = lane(pane).ends.value_or(loaded.text.lineEnds);
    loaded.text.encoding = lane(pane).encoding.value_or(loaded.text.encoding);
    loaded.missing = false;
    loaded.stamp = result.stamp;
    // A path that was chosen to be read next stays.
    if (input.path() == input.loadedPath())
        input.setPath(path);
    input.setLoaded(loaded, path);
    Q_EMIT saved(pane);
    Q_EMIT message(text(pane).words.saved.arg(shownPath(path)));
}

void TextSaving::askToWriteOver(PaneIndex pane, const QString &path, const FileStamp &found, Done done)
{
    const QString question = found.isFile()
                                 ? Velmora::tr("Another program has changed this file since it was read:\n%1\n\n"
                                               "Write over it?")
                                 : Velmora::tr("This file is no longer there:\n%1\n\nWrite it anew?");
    Dialogs::instance().askYesNo(m_window, Velmora::tr("External file changed"), question.arg(shownPath(path)), false,
                                 [this, pane, path, done = std::move(done)](bool yes) {
                                     if (yes)
                                         start(pane, path, Target::Changed, done);
                                     else
                                         done(false);
                                 });
}

void TextSaving::fail(const QString &what, const Done &done)
{
    Q_EMIT message(what);
    Dialogs::instance().tell(m_window, Dialogs::Tone::Warning, Velmora::tr("Save failed"), what,
                             [done] { done(false); });
}

void TextSaving::offerOtherName(PaneIndex pane, const QString &what, const QString &why, Done done)
{
    enum Answer { Close, OtherName };
    Q_EMIT message(what);
    const auto act = [this, pane, done = std::move(done)](int answer) {
        if (answer == OtherName)
            saveUnderNewName(pane, done);
        else
            done(false);
    };
    Dialogs::instance().ask(
        m_window, Dialogs::Tone::Warning, Velmora::tr("Save failed"),
        why.isEmpty() ? what : what + QStringLiteral("\n\n") + why,
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
    whenSaved([this, answered = std::move(answered)] { askToKeep(modified(), answered); });
}

void TextSaving::askToKeep(QList<PaneIndex> panes, std::function<void(bool)> answered)
{
    panes.removeIf([this](PaneIndex pane) { return !m_editor.buffer(pane).isModified(); });
    if (panes.isEmpty()) {
        answered(true);
        return;
    }
    enum Answer { Cancel, Save, Discard };
    const EditedText &first = text(panes.first());
    const QString path = first.input->loadedPath();
    const auto act = [this, panes, answered = std::move(answered)](int answer) {
        if (answer == Cancel) {
            answered(false);
        } else if (answer == Discard) {
            askToKeep(panes.mid(1), answered);
        } else {
            save(panes.first(), [this, panes, answered](bool saved) {
                if (saved)
                    askToKeep(panes, answered);
                else
                    answered(false);
            });
        }
    };
    Dialogs::instance().ask(m_window, Dialogs::Tone::Warning, Velmora::tr("Unsaved changes"),
                            first.words.askToSave.arg(path.isEmpty() ? first.words.unnamed : shownPath(path)),
                            {{Velmora::tr("&Save"), Save, true, false},
                             {Velmora::tr("&Discard"), Discard, false, false},
                             {Velmora::tr("Cancel"), Cancel, false, true}},
                            act);
}

} // namespace velmora
