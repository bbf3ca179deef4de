#include "folder/engine/folder_rows.h"

namespace velmora {

bool isInView(const FolderTree &tree, qint32 node, RowsView view)
{
    if (view == RowsView::All)
        return true;
    const RowState state = tree.state(node);
    const FolderTree::Node &here = tree.node(node);
    if (view == RowsView::Differences)
        return state != RowState::Same && state != RowState::Filtered && !here.ignored;
    if (!tree.item(node).isDir)
        return state == RowState::Same;
    return state == RowState::Same || here.left.has(FolderMark::Same) || here.right.has(FolderMark::Same);
}

std::vector<FolderRow> visibleRows(const FolderTree &tree, RowsView view)
{
    std::vector<FolderRow> rows;
    for (qint32 node = 0; node < tree.size();) {
        const FolderTree::Node &here = tree.node(node);
        if (here.hidden || !isInView(tree, node, view)) {
            node = here.end;
            continue;
        }
        rows.push_back({node, 0});
        node = here.expanded ? node + 1 : here.end;
    }

    quint64 open = 0;
    for (std::size_t i = rows.size(); i-- > 0;) {
        const unsigned depth = tree.node(rows[i].node).depth;
        constexpr unsigned depths = 64;
        if (depth >= depths) {
            rows[i].lines = open;
            continue;
        }
        const quint64 bit = quint64(1) << depth;
        open &= (bit << 1) - 1; // what is deeper than this row belongs to others; all bits stay at depth 63
        rows[i].lines = open;
        open |= bit;
    }
    return rows;
}

} // namespace velmora
