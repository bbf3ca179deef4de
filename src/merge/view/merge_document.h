#pragma once

#include "merge/model/merge_rows.h"
#include "session/pane/pane_document.h"
#include "session/pane/row_patch.h"

#include <memory>

namespace velmora {

/// The panes of a merge, by number: `MergeSource` for the texts, and `resultPane`.
[[nodiscard]] constexpr PaneIndex paneOf(MergeSource source) noexcept
{
    return int(source);
}
inline constexpr PaneIndex paneOfResult{int(resultPane)};

/// A merge as its four panes show it.
///
/// A version's lines are marked where they differ from the base: in the colour of open conflicts, or else in that of
/// their side. A line of the result has the letter of the text that it comes from: B, L or R, "=" where both versions
/// changed the base alike, H for what was written by hand. Where the result waits for a decision, it says so.
class MergeDocument final : public PaneDocument {
public:
    using Parts = std::shared_ptr<const std::vector<MergePart>>;

    /// `texts` are those of the panes.
    MergeDocument(std::shared_ptr<const MergeTexts> merged, Parts parts, MergeRows rows, const PaneTexts &texts,
                  int tabWidth);
    /// `before` after an edit of the result; `widest` as in `patchedWidth`.
    MergeDocument(const MergeDocument &before, Parts parts, MergeRows rows, const PaneTexts &texts, qint64 widest);

    [[nodiscard]] const MergeTexts &merged() const noexcept { return *m_merged; }
    [[nodiscard]] const std::shared_ptr<const MergeTexts> &sharedTexts() const noexcept { return m_merged; }
    [[nodiscard]] const std::vector<MergePart> &parts() const noexcept { return *m_parts; }
    [[nodiscard]] const Parts &sharedParts() const noexcept { return m_parts; }
    [[nodiscard]] const MergeRows &mergeRows() const noexcept { return m_rows; }

    /// The part that a row belongs to; -1 without rows.
    [[nodiscard]] qsizetype partOfRow(qsizetype row) const;
    [[nodiscard]] RowRange rowsOfPart(qsizetype part) const;
    /// The row of a line that is in a part; -1 for any other line.
    [[nodiscard]] qsizetype rowOf(qsizetype part, SourceLine line) const;

    [[nodiscard]] std::shared_ptr<const PaneDocument> withTabWidth(int columns) const override;
    [[nodiscard]] qsizetype rowCount() const override { return m_rows.rows.size(); }
    [[nodiscard]] qint32 lineNumber(qsizetype row, PaneIndex pane) const override;
    [[nodiscard]] bool isEqual(qsizetype row) const override { return partAt(row).isPlain(); }
    [[nodiscard]] std::vector<TextRowState> states(bool countsMinor) const override;
    [[nodiscard]] bool hasSameStates(const PaneDocument &other, bool countsMinor) const override;
    [[nodiscard]] RowLook look(qsizetype row, PaneIndex pane) const override;
    [[nodiscard]] QString describeRow(qsizetype row) const override;
    [[nodiscard]] QString describeBlock(const ShownRows &shown, qsizetype block) const override;

private:
    [[nodiscard]] const MergePart &partAt(qsizetype row) const { return (*m_parts)[std::size_t(partOfRow(row))]; }
    [[nodiscard]] bool differsFromBase(qsizetype row, MergeSource version) const;
    [[nodiscard]] bool isLeftOut(qsizetype row, MergeSource version) const;
    [[nodiscard]] RowLook lookOfVersion(qsizetype row, MergeSource version) const;
    [[nodiscard]] RowLook lookOfBase(qsizetype row) const;
    [[nodiscard]] RowLook lookOfResult(qsizetype row) const;

    std::shared_ptr<const MergeTexts> m_merged;
    Parts m_parts;
    MergeRows m_rows;
};

} // namespace velmora
