#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QTreeView;

namespace velmora {

class RowCardModel;
class TableScene;

/// The current row of a table comparison as a card: both values of every column below each other, with the characters
/// that differ marked.
class RowCard final : public QWidget {
    Q_OBJECT
public:
    explicit RowCard(TableScene &scene, QWidget *parent = nullptr);

    /// -1 for no row.
    void showRow(qint32 row);
    /// Whether the keyboard is in it.
    [[nodiscard]] bool hasKeyboard() const;
    /// Copies the chosen columns, or all of them, as lines of name and both values with tabs between.
    void copy() const;

    /// Which columns are shown, in which order: 0 those of the table, 1 the differing ones first, 2 those alone.
    [[nodiscard]] int order() const;
    void setOrder(int order);

    /// Takes up a changed theme.
    void refreshTheme();

private:
    void tell(qint32 row);

    TableScene &m_scene;
    QLabel *m_title;
    QComboBox *m_order;
    RowCardModel *m_values;
    QTreeView *m_view;
};

} // namespace velmora
