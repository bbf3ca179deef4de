#include "session/document/edited_texts.h"

#include "session/dialogs.h"
#include "session/document/text_input.h"
#include "session/document/text_recovery.h"

#include <algorithm>

namespace velmora {

EditedTexts::EditedTexts(PaneScene &scene, std::vector<EditedText> texts, QWidget *window)
    : QObject(window),
      m_texts(std::move(texts)),
      m_window(window),
      m_editor(scene, this),
      m_saving(m_editor, m_texts, window, this)
{}

bool EditedTexts::hasUnsavedChanges() const
{
    return m_saving.isSaving() || std::any_of(m_texts.begin(), m_texts.end(),
                                              [this](const EditedText &text) { return isModified(text.pane); });
}

TextOrigin EditedTexts::origin(PaneIndex pane, ChangedFile changed) const
{
    const TextInput &input = *at(pane).input;
    TextOrigin origin = input.origin(changed);
    origin.shown = m_editor.buffer(pane).snapshot();
    if (isModified(pane)) {
        origin.loaded = input.loaded();
        origin.loaded->missing = false;
        origin.edited = origin.shown;
    }
    return origin;
}

std::optional<TextLines> EditedTexts::unlessShown(PaneIndex pane, const LoadedText &read) const
{
    if (read.shown == m_editor.buffer(pane).snapshot())
        return std::nullopt;
    return read.text.lines;
}

std::vector<UnsavedText> EditedTexts::unsaved() const
{
    std::vector<UnsavedText> unsaved;
    for (const EditedText &text : m_texts) {
        const TextInput &input = *text.input;
        const EditBuffer &buffer = m_editor.buffer(text.pane);
        if (buffer.isModified() || input.loadedPath() == TextInput::clipboardPath())
            unsaved.push_back({text.pane, input.loadedPath(), input.loaded(), buffer.isModified(), buffer.snapshot()});
    }
    return unsaved;
}

void EditedTexts::restore(const UnsavedText &text)
{
    TextInput &input = *at(text.pane).input;
    if (text.path == TextInput::clipboardPath())
        input.holdText(text.loaded);
    input.setLoaded(text.loaded, text.path);
    if (text.isEdited)
        m_editor.restoreText(text.pane, text.loaded.text.lines);
}

void EditedTexts::discard(PaneIndex pane)
{
    m_editor.markClean(pane);
}

void EditedTexts::confirmDiscard(std::function<QList<PaneIndex>()> panes, const QString &title,
                                 std::function<QString(const QList<PaneIndex> &)> question, std::function<void()> go)
{
    m_saving.whenSaved([this, panes = std::move(panes), title, question = std::move(question), go = std::move(go)] {
        QList<PaneIndex> lost = panes();
        lost.removeIf([this](PaneIndex pane) { return !isModified(pane); });
        if (lost.isEmpty()) {
            go();
            return;
        }
        Dialogs::instance().askYesNo(m_window, title, question(lost), false, [this, lost, go](bool yes) {
            if (!yes)
                return;
            for (const PaneIndex pane : lost)
                discard(pane);
            go();
        });
    });
}

} // namespace velmora
