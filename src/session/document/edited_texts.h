#pragma once

#include "session/document/edited_text.h"
#include "session/document/loaded_text.h"
#include "session/document/text_saving.h"
#include "session/pane/pane_editor.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

namespace velmora {

class PaneScene;
struct UnsavedText;
enum class ChangedFile;

/// The texts of a session, each with its file, as they are edited in panes: their buffers, their saving, and the
/// questions before edits are given up. What is to be done with the texts after an edit is for the session to know.
/// Lives on the interface thread.
class EditedTexts final : public QObject {
    Q_OBJECT
public:
    /// `scene` shows the texts; it and the inputs outlive this. `window` is what questions belong to.
    EditedTexts(PaneScene &scene, std::vector<EditedText> texts, QWidget *window);

    [[nodiscard]] PaneEditor &editor() noexcept { return m_editor; }
    [[nodiscard]] const PaneEditor &editor() const noexcept { return m_editor; }
    [[nodiscard]] TextSaving &saving() noexcept { return m_saving; }

    [[nodiscard]] const std::vector<EditedText> &all() const noexcept { return m_texts; }
    [[nodiscard]] const EditedText &at(PaneIndex pane) const { return textIn(pane, m_texts); }

    [[nodiscard]] bool isModified(PaneIndex pane) const { return m_editor.buffer(pane).isModified(); }
    /// Also true while changes are on their way to a file.
    [[nodiscard]] bool hasUnsavedChanges() const;

    /// What a run takes from a text: the edited one, or what its input is.
    [[nodiscard]] TextOrigin origin(PaneIndex pane, ChangedFile changed) const;

    /// The text that a run has read, for `PaneEditor::setTexts`; nothing where the editor keeps its own.
    [[nodiscard]] std::optional<TextLines> unlessShown(PaneIndex pane, const LoadedText &read) const;

    /// What would be lost if the program ended now.
    [[nodiscard]] std::vector<UnsavedText> unsaved() const;
    /// Takes up a text of an earlier run, before a run that shows it.
    void restore(const UnsavedText &text);

    /// Forgets the edits of a text that will be read again.
    void discard(PaneIndex pane);
    /// As soon as nothing is being saved, asks whether the edits of those of `panes` that have any may be given up,
    /// forgets them and calls `go`: at once where there are none, and never after a no. `question` gets the panes that
    /// would lose edits.
    void confirmDiscard(std::function<QList<PaneIndex>()> panes, const QString &title,
                        std::function<QString(const QList<PaneIndex> &lost)> question, std::function<void()> go);

private:
    std::vector<EditedText> m_texts;
    QWidget *m_window;
    PaneEditor m_editor;
    TextSaving m_saving;
};

} // namespace velmora
