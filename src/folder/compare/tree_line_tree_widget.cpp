#include "folder/compare/tree_line_tree_widget.h"

#include "folder/compare/folder_row_delegate.h"

namespace velmora {

namespace {

QList<int> numbersOf(const QList<FolderColumn> &columns)
{
    QList<int> numbers;
    for (const FolderColumn column : columns)
        numbers.append(int(column));
    return numbers;
}

} // namespace

TreeLineTreeWidget::TreeLineTreeWidget(FolderRowsModel &model, const QList<FolderColumn> &columns, QWidget *parent)
    : TreeView(model, numbersOf(columns), new FolderRowDelegate(model), parent)
{}

} // namespace velmora
