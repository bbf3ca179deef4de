#pragma once

#include "core/rows_view.h"
#include "folder/compare/file_versions.h"
#include "folder/engine/folder_tree.h"
#include "session/list/tree_model.h"

#include <memory>

namespace velmora {

class FolderComparison;

/// What a side shows of its entries.
enum class FolderColumn {
    LeftName,
    LeftSize,
    LeftTime,
    LeftVersion,
    Sign,
    RightName,
    RightSize,
    RightTime,
    RightVersion
};

inline constexpr int folderColumnCount = int(FolderColumn::RightVersion) + 1;

/// The tree of a comparison as its rows show it, which outlives it.
class FolderRowTree final : public RowTree {
public:
    explicit FolderRowTree(FolderComparison &comparison) : m_comparison(comparison) {}

    [[nodiscard]] qint32 count() const override { return tree().size(); }
    [[nodiscard]] qint32 parent(qint32 node) const override { return tree().node(node).parent; }
    [[nodiscard]] qint32 end(qint32 node) const override { return tree().node(node).end; }
    [[nodiscard]] int depth(qint32 node) const override { return tree().node(node).depth; }
    [[nodiscard]] bool isExpandable(qint32 node) const override { return tree().isExpandable(node); }
    [[nodiscard]] bool isExpanded(qint32 node) const override { return tree().node(node).expanded; }
    void setExpanded(qint32 node, bool expanded) override;
    void setAllExpanded(qint32 node, bool expanded) override;
    [[nodiscard]] bool isShown(qint32 node) const override;
    [[nodiscard]] NodePlace place(qint32 node) const override;

    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 node, int column) const override;
    [[nodiscard]] QVariant data(qint32 node, int column, int role) const override;

    [[nodiscard]] const FolderTree &tree() const;
    [[nodiscard]] RowsView view() const noexcept { return m_view; }
    void setView(RowsView view) { m_view = view; }
    /// Where versions come from as they are asked for.
    [[nodiscard]] FileVersions &versions() const { return *m_versions; }

private:
    [[nodiscard]] QString versionText(qint32 node, Side side) const;

    FolderComparison &m_comparison;
    std::unique_ptr<FileVersions> m_versions = std::make_unique<FileVersions>();
    RowsView m_view = RowsView::All;
};

/// The rows of a folder comparison, which the three panes show different columns of. Follows the comparison, which
/// outlives it.
class FolderRowsModel final : public TreeModel {
    Q_OBJECT
public:
    explicit FolderRowsModel(FolderComparison &comparison, QObject *parent = nullptr);

    [[nodiscard]] const FolderTree &tree() const { return m_shown.tree(); }
    [[nodiscard]] RowsView view() const noexcept { return m_shown.view(); }
    void setView(RowsView view);

    /// The next or previous node that differs and is no folder that leads to one, from `node` on, also in closed
    /// folders; -1 when there is none. A folder on one side counts as one difference.
    [[nodiscard]] qint32 nextDifference(qint32 node, bool forward) const;

private:
    /// Takes over what it shows.
    FolderRowsModel(FolderRowTree *shown, FolderComparison &comparison, QObject *parent);

    FolderRowTree &m_shown; ///< the model's tree
};

/// The side whose column it is. Not for `Sign`.
[[nodiscard]] constexpr Side sideOf(FolderColumn column)
{
    return column < FolderColumn::Sign ? Side::Left : Side::Right;
}

/// What one side of an entry is called: its own name there, which an alignment may pair with another.
[[nodiscard]] QString sideName(const FolderDiffItem &item, Side side);

/// The column of the other side that says the same.
[[nodiscard]] constexpr FolderColumn otherColumn(FolderColumn column)
{
    constexpr int apart = int(FolderColumn::RightName) - int(FolderColumn::LeftName);
    return FolderColumn(int(column) + (column < FolderColumn::Sign ? apart : -apart));
}

/// The sign of a row between the two sides, and what it means in words.
[[nodiscard]] QString stateSign(const FolderTree &tree, qint32 node);
[[nodiscard]] QString stateWords(const FolderTree &tree, qint32 node);

} // namespace velmora
