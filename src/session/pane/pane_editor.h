#pragma once

#include "session/pane/pane_scene.h"
#include "session/pane/row_patch.h"

#include <QObject>

#include <optional>

namespace velmora {

/// Edits the texts that a scene shows: one buffer for each pane, and after each edit a document in which the rows
/// around it are right again.
///
/// Edits happen only while editing is enabled and only in panes that may be edited; everything else is refused with
/// the reason. Positions are those of the scene; a place in a row without a line of its own is one between lines.
/// Lives on the interface thread.
class PaneEditor final : public QObject {
    Q_OBJECT
public:
    /// `scene` outlives the editor.
    PaneEditor(PaneScene &scene, QObject *parent);

    /// False before there is a document.
    [[nodiscard]] bool hasTexts() const { return m_scene.document() != nullptr; }
    /// Takes up the texts that have been read, and how the rows follow their edits. A pane without a new text keeps the
    /// one it has, and its undo steps.
    void setTexts(const std::vector<std::optional<TextLines>> &texts, RowPatcher patcher);
    [[nodiscard]] const EditBuffer &buffer(PaneIndex pane) const { return m_lanes[std::size_t(pane.number())].buffer; }
    void markClean(PaneIndex pane);
    /// See `EditBuffer`: no file holds the text.
    void markUnsaved(PaneIndex pane);
    /// See `EditBuffer`: a save of the text runs from the one to the other.
    void beginSave(PaneIndex pane) { own(pane).beginSave(); }
    void endSave(PaneIndex pane, bool saved);
    /// Takes up a text that no file holds, before a comparison that shows it.
    void restoreText(PaneIndex pane, const TextLines &text);
    /// Takes up a text that was put together from others, before `setTexts` says how rows follow its edits.
    void setBuffer(PaneIndex pane, EditBuffer buffer);
    /// Exchanges two texts with their undo steps.
    void swapTexts(PaneIndex one, PaneIndex other);

    void setEnabled(bool enabled);
    [[nodiscard]] bool isEnabled() const noexcept { return m_enabled; }
    /// Enables editing when that is all that keeps `pane` from being changed.
    void unlockFor(PaneIndex pane);

    /// Says why a pane can never be edited; empty when it can.
    void setObstacle(PaneIndex pane, const QString &reason);
    [[nodiscard]] const QString &obstacle(PaneIndex pane) const { return m_lanes[std::size_t(pane.number())].obstacle; }

    /// Puts `text` in the place of the selection or at the caret, as one step or merged with what was typed before.
    bool insert(PaneIndex pane, const QString &text, EditBuffer::Merge merge = EditBuffer::Merge::Never);
    /// Puts `text` at `at` and selects it; one step.
    bool insertAt(PaneIndex pane, TextPosition at, const QString &text);
    /// Moves the selection to `at` in the same pane, where it stays selected; one step. Nothing happens to one that is
    /// moved into itself.
    bool moveSelection(PaneIndex pane, TextPosition at);
    /// Removes the selection. False when there is none on `pane`.
    bool eraseSelection(PaneIndex pane);
    /// Removes what stands between the caret and `to`.
    bool erase(PaneIndex pane, TextPosition to);

    /// Copies the lines that `rows` have in pane `from` to pane `to`, which gets the caret; one step.
    bool copyRows(PaneIndex from, PaneIndex to, RowRange rows);

    /// Puts the lines of `with` in the place of the lines [first, first + removed) of `pane`; one step, which leaves
    /// the caret in its line. Whether the text may be changed is for the caller to know.
    void replaceLines(PaneIndex pane, qsizetype first, qsizetype removed, const TextLines &with);
    /// The same with lines of any texts; the caret goes to the first of them.
    void replaceLines(PaneIndex pane, qsizetype first, qsizetype removed, const std::vector<LineRun> &with);
    /// Whether `pane` may be edited now; says why not.
    [[nodiscard]] bool mayEdit(PaneIndex pane);

    void undo(PaneIndex pane);
    void redo(PaneIndex pane);

Q_SIGNALS:
    /// Before the scene shows the text after an edit: which lines it concerns.
    void linesChanged(velmora::PaneIndex pane, const velmora::LineChange &change);
    void edited(velmora::PaneIndex pane); ///< the scene shows the text after it already
    void stateChanged();                  ///< what can be undone or saved, or whether editing is enabled
    void refused(const QString &reason);

private:
    enum class Toward { Start, End };

    struct Lane {
        EditBuffer buffer;
        QString obstacle;
    };

    [[nodiscard]] EditBuffer &own(PaneIndex pane) { return m_lanes[std::size_t(pane.number())].buffer; }
    /// The pane may be edited, and nothing is selected that is not shown.
    [[nodiscard]] bool mayReplaceSelection(PaneIndex pane);
    [[nodiscard]] bool hasLine(PaneIndex pane, qsizetype row) const;
    /// The place in the text; one in a row without a line moves to the line before or behind.
    [[nodiscard]] EditPosition place(PaneIndex pane, TextPosition position, Toward toward) const;
    void apply(PaneIndex pane, const LineChange &change);
    void showText(PaneIndex pane, const LineChange &change);
    void showChange(PaneIndex pane, EditPosition caret);
    void select(PaneIndex pane, EditPosition start, EditPosition end);

    PaneScene &m_scene;
    std::vector<Lane> m_lanes;
    RowPatcher m_patcher;
    bool m_enabled = false;
};

} // namespace velmora
