#pragma once

#include "settings/options/text_session_options.h"
#include "text/view/diff_scene.h"
#include "text/view/edit_buffer.h"

#include <QObject>

#include <optional>

namespace velmora {

/// Edits the texts that a scene shows: one buffer for each side, and after each edit a document in which the rows
/// around it are right again.
///
/// Edits happen only while editing is enabled and only on sides that may be edited; everything else is refused with
/// the reason. Positions are those of the scene; a place in a row without a line of its own is one between lines.
/// Lives on the interface thread.
class DiffEditor final : public QObject {
    Q_OBJECT
public:
    /// `scene` outlives the editor.
    DiffEditor(DiffScene &scene, QObject *parent);

    /// False before the first comparison.
    [[nodiscard]] bool hasTexts() const { return m_scene.document() != nullptr; }
    /// Takes up what a comparison has read. A side without a new text keeps the one it has, and its undo steps.
    void setTexts(const std::optional<TextLines> &left, const std::optional<TextLines> &right,
                  const TextSessionOptions &options);
    [[nodiscard]] const EditBuffer &buffer(Side side) const { return side == Side::Left ? m_left : m_right; }
    void markClean(Side side);
    /// See `EditBuffer`: a save of the side's text runs from the one to the other.
    void beginSave(Side side) { own(side).beginSave(); }
    void endSave(Side side, bool saved);
    /// Takes up a text that no file holds, before a comparison that shows it.
    void restoreText(Side side, const TextLines &text);
    /// Exchanges the texts with their undo steps.
    void swapSides();

    void setEnabled(bool enabled);
    [[nodiscard]] bool isEnabled() const noexcept { return m_enabled; }

    /// Says why a side can never be edited; empty when it can.
    void setObstacle(Side side, const QString &reason);
    [[nodiscard]] const QString &obstacle(Side side) const
    {
        return side == Side::Left ? m_leftObstacle : m_rightObstacle;
    }

    /// Puts `text` in the place of the selection or at the caret, as one step or merged with what was typed before.
    bool insert(Side side, const QString &text, EditBuffer::Merge merge = EditBuffer::Merge::Never);
    /// Puts `text` at `at` and selects it; one step.
    bool insertAt(Side side, TextPosition at, const QString &text);
    /// Moves the selection to `at` on the same side, where it stays selected; one step. Nothing happens to one that is
    /// moved into itself.
    bool moveSelection(Side side, TextPosition at);
    /// Removes the selection. False when there is none on `side`.
    bool eraseSelection(Side side);
    /// Removes what stands between the caret and `to`.
    bool erase(Side side, TextPosition to);

    /// Copies the lines that `rows` have on side `from` to the other side, which gets the caret; one step.
    bool copyRows(Side from, RowRange rows);

    /// Puts the lines of `with` in the place of the lines [first, first + removed) of `side`; one step, which leaves
    /// the caret in its line. Whether the side may be changed is for the caller to know.
    void replaceLines(Side side, qsizetype first, qsizetype removed, const TextLines &with);
    /// Whether `side` may be edited now; says why not.
    [[nodiscard]] bool mayEdit(Side side);

    void undo(Side side);
    void redo(Side side);

Q_SIGNALS:
    /// Before the scene shows the text after an edit: which lines it concerns.
    void linesChanged(velmora::Side side, const velmora::LineChange &change);
    void edited(velmora::Side side); ///< the scene shows the text after it already
    void stateChanged();             ///< what can be undone or saved, or whether editing is enabled
    void refused(const QString &reason);

private:
    enum class Toward { Start, End };

    [[nodiscard]] EditBuffer &own(Side side) { return side == Side::Left ? m_left : m_right; }
    /// The side may be edited, and nothing is selected that is not shown.
    [[nodiscard]] bool mayReplaceSelection(Side side);
    /// The lines of `side` before `row`.
    [[nodiscard]] qsizetype linesBefore(Side side, qsizetype row) const;
    [[nodiscard]] bool hasLine(Side side, qsizetype row) const;
    /// The place in the text; one in a row without a line moves to the line before or behind.
    [[nodiscard]] EditPosition place(Side side, TextPosition position, Toward toward) const;
    void apply(Side side, const LineChange &change);
    void showText(Side side, const LineChange &change);
    void showChange(Side side, EditPosition caret);
    void select(Side side, EditPosition start, EditPosition end);

    DiffScene &m_scene;
    EditBuffer m_left;
    EditBuffer m_right;
    TextSessionOptions m_options;
    QString m_leftObstacle;
    QString m_rightObstacle;
    bool m_enabled = false;
};

} // namespace velmora
