#pragma once

#include "folder/compare/folder_rows_model.h"
#include "session/list/tree_view.h"

namespace velmora {

/// One pane of a folder comparison: some columns of the rows.
class TreeLineTreeWidget final : public TreeView {
    Q_OBJECT
public:
    /// Shows `columns` of `model`, which outlives it.
    TreeLineTreeWidget(FolderRowsModel &model, const QList<FolderColumn> &columns, QWidget *parent = nullptr);
};

} // namespace velmora
