#pragma once

#include "session/list/row_source.h"

#include <QScopedValueRollback>
#include <QWidget>

#include <memory>

class QHBoxLayout;

namespace velmora {

class ListModel;
class ListView;

/// A list beside the panes of a merge, below a line of its own controls. While it follows the panes, it does not tell
/// them where it is.
class MergeList : public QWidget {
    Q_OBJECT
public:
    ~MergeList() override;

    [[nodiscard]] const ListModel &rows() const { return *m_rows; }
    /// Takes up a changed theme.
    void refreshTheme();

protected:
    /// `rows`: of no merge. The name is that of the view, which has the focus.
    MergeList(std::unique_ptr<const RowSource> rows, const QString &name, QWidget *parent);

    [[nodiscard]] ListModel &model() { return *m_rows; }
    [[nodiscard]] ListView &view() const { return *m_view; }
    /// The line above the rows.
    [[nodiscard]] QHBoxLayout &head() { return *m_head; }
    /// As long as it lives, the current row is changed for the panes.
    [[nodiscard]] QScopedValueRollback<bool> follow() { return QScopedValueRollback<bool>(m_follows, true); }

    /// A person has gone to a row, from 0 on, or clicked it.
    virtual void tellChosen(int row) = 0;

private:
    void tellCurrent();

    ListModel *m_rows;
    ListView *m_view;
    QHBoxLayout *m_head;
    bool m_follows = false; ///< the panes
};

} // namespace velmora
