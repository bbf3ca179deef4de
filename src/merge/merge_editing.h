#pragma once

#include "merge/view/merge_view.h"
#include "session/pane/pane_editor.h"

#include <QObject>

namespace velmora {

/// The decisions of a merge and the edits of its result, as one history: carries decisions out in the editor, follows
/// what the editor does, and keeps the rows right. Lives on the interface thread.
class MergeEditing final : public QObject {
    Q_OBJECT
public:
    /// `view` and `editor`, which edits its scene, outlive this.
    MergeEditing(MergeView &view, PaneEditor &editor, QObject *parent);

    /// Shows another merge, whose result `result` is. `document` has these parts.
    void setMerge(const std::shared_ptr<const MergeDocument> &document, MergeParts parts, EditBuffer result);

    [[nodiscard]] const MergeParts &parts() const noexcept { return m_parts; }

    /// The part of the row with the caret; -1 without one.
    [[nodiscard]] qsizetype currentPart() const;
    /// The parts that a command is for: those of the selection that are not the same in all texts, or the current one.
    [[nodiscard]] std::vector<qsizetype> chosenParts() const;
    /// Takes lines for the chosen parts, as one step; false when there are none.
    bool take(MergeChoice choice);
    /// The same for all open conflicts.
    bool takeForAllOpen(MergeChoice choice);
    /// Puts a line into the result that a merge line by line has left out of a part, where it stands in its version;
    /// false when there is no such line.
    bool putIn(qsizetype part, SourceLine line);

    void goToPart(qsizetype part);
    /// Goes to a line of a version that is in a part, in its pane.
    void goToLine(qsizetype part, SourceLine line);
    /// Goes to the next open conflict, or any conflict when none is open; false when there is none.
    bool goToConflict(bool forward);
    /// Goes to the next part that is not the same in all texts.
    bool goToChange(bool forward);

Q_SIGNALS:
    void partsChanged();

private:
    void carryOut(MergePlan plan);
    [[nodiscard]] qsizetype placeFor(qsizetype row, qsizetype part, MergeSource source) const;
    bool takeFor(const std::vector<qsizetype> &parts, MergeChoice choice);
    void follow(PaneIndex pane, const LineChange &change);
    [[nodiscard]] std::shared_ptr<const PaneDocument> patched(const PaneDocument &before, const PaneTexts &texts,
                                                              const LineChange &change) const;
    [[nodiscard]] const MergeDocument *document() const { return m_view.document(); }

    MergeView &m_view;
    PaneEditor &m_editor;
    MergeParts m_parts;
    PartsChange m_change; ///< the latest one
};

} // namespace velmora
