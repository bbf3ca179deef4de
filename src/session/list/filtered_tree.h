#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QLineEdit;

namespace velmora {

class TreeModel;
class TreeView;

/// A column beside the names of a tree.
struct FittedColumn {
    int column = 0;
    QString widest; ///< a text as wide as any that it shows
};

/// A tree below a line for words that the names in it are to hold. Where the widget is too narrow, columns go, the
/// least important first, so that the names keep their room.
class FilteredTree final : public QWidget {
    Q_OBJECT
public:
    /// The model outlives the widget. The parts are named `name` + "Filter" and `name` + "Tree".
    FilteredTree(TreeModel &rows, const QString &name, QWidget *parent = nullptr);

    [[nodiscard]] TreeView &tree() const { return *m_tree; }
    void setFilterHint(const QString &hint);
    void focusFilter();

    /// All columns but the first, what matters most in front.
    /// \param fewestLetters of a name, that no column takes room from
    void setColumns(const QList<FittedColumn> &columns, int fewestLetters);
    /// Whether a column has anything to show; all have at first.
    void setColumnUsed(int column, bool used);

Q_SIGNALS:
    /// Something that is no folder was opened; folders open and close in place.
    void fileOpened();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Column {
        int column = 0;
        int width = 0;
        bool isUsed = true;
    };

    void open(int row);
    void fitColumns();

    TreeModel &m_rows;
    QLineEdit *m_filter;
    TreeView *m_tree;
    QList<Column> m_columns;
    int m_fewestLetters = 0;
};

} // namespace velmora
