#pragma once

#include <QWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace velmora {

/// The panel beside the tabs: a tree with all kinds of session under "New".
///
/// Each item carries its identifier as `idRole`: "category_…" for what only groups others, "new_" and the kind for what
/// opens an empty session.
class SessionPanel final : public QWidget {
    Q_OBJECT
public:
    static constexpr int idRole = Qt::UserRole;

    explicit SessionPanel(QWidget *parent = nullptr);

    [[nodiscard]] QTreeWidget *tree() const noexcept { return m_tree; }

    void refreshTheme();

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// A click, once for a double click too, or a key.
    void itemChosen(QTreeWidgetItem *item, int column);

private:
    void addNewKinds();
    void chooseOnce(QTreeWidgetItem *item, int column);

    QTreeWidget *m_tree;
    bool m_secondClick = false;
};

} // namespace velmora
