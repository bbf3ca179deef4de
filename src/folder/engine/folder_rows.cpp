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

} // namespace velmora
