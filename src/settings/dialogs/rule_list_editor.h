#pragma once

#include <QWidget>

class QAbstractItemModel;
class QAbstractItemView;
class QHBoxLayout;
class QPushButton;
class QToolButton;

namespace velmora {

/// A list or table of rules with the buttons that add, edit and remove them.
///
/// The model stays the caller's; removing needs its removeRows(). What a rule is, and the dialog for it, is the
/// caller's, too. In the list Insert adds, F2 and a double click edit, Delete removes; Alt+Up and Alt+Down move where
/// that is offered.
class RuleListEditor final : public QWidget {
    Q_OBJECT
public:
    struct ToolTips {
        QString add;
        QString edit;
        QString remove;
    };

    /// The list is named `prefix` followed by "List", the buttons by "Add", "Edit" and "Remove".
    RuleListEditor(QAbstractItemModel &model, const QString &prefix, const ToolTips &toolTips,
                   QWidget *parent = nullptr);
    /// With a view of the caller's making, which selects whole rows, keeps its name and becomes the editor's. A double
    /// click on a check box only checks.
    RuleListEditor(QAbstractItemView *list, QAbstractItemModel &model, const QString &prefix, const ToolTips &toolTips,
                   QWidget *parent = nullptr);

    /// The list, for a label's buddy.
    [[nodiscard]] QAbstractItemView &list() { return *m_list; }
    /// Puts another button behind the three.
    void addButton(QPushButton *button);
    /// Other words on two of the buttons than "Add..." and "Remove".
    void setButtonTexts(const QString &add, const QString &remove);
    /// Lets several rules be selected, to be removed together.
    void allowManySelected();
    /// Offers to change the order, for rules whose order counts; needs the model's moveRows().
    void addMoveButtons();
    void selectRow(int row);

Q_SIGNALS:
    void addRequested();
    void editRequested(int row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] QPushButton *makeButton(const QString &text, const QString &name, const QString &toolTip);
    [[nodiscard]] bool obeyKey(int key);
    [[nodiscard]] bool obeyMoveKey(int key);
    [[nodiscard]] QToolButton *makeMoveButton(int by, const QString &name, const QString &toolTip);
    /// From the last to the first.
    [[nodiscard]] QList<int> selectedRows() const;
    /// -1 unless one row alone is selected.
    [[nodiscard]] int selectedRow() const;
    void requestEdit();
    void obeyDoubleClick(const QModelIndex &index);
    void removeSelected();
    /// By one row: -1 up, 1 down.
    void moveSelected(int by);
    void enableButtons();

    QString m_prefix;
    QAbstractItemView *m_list;
    QHBoxLayout *m_buttons;
    QPushButton *m_add;
    QPushButton *m_edit;
    QPushButton *m_remove;
    QToolButton *m_up = nullptr; ///< null where rules are not moved
    QToolButton *m_down = nullptr;
};

} // namespace velmora
