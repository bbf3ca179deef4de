#pragma once

#include "folder/compare/folder_rows_model.h"
#include "session/list/tree_view.h"

#include <QStringList>
#include <QWidget>

#include <array>
#include <optional>

class QSplitter;

namespace velmora {

class FolderCompareSidePane;
class NoticeCard;
class TreeLineTreeWidget;

/// The three columns of a folder comparison: the left pane, the signs, the right pane. They show the same rows, scroll
/// together and have one selection.
class FolderView final : public QWidget {
    Q_OBJECT
public:
    explicit FolderView(FolderComparison &comparison, QWidget *parent = nullptr);
    ~FolderView() override;

    [[nodiscard]] FolderRowsModel &rows() { return *m_rows; }
    [[nodiscard]] TreeLineTreeWidget &leftPane() { return *m_left; }
    [[nodiscard]] TreeLineTreeWidget &rightPane() { return *m_right; }
    [[nodiscard]] FolderCompareSidePane &leftSide() { return *m_leftSide; }
    [[nodiscard]] FolderCompareSidePane &rightSide() { return *m_rightSide; }
    [[nodiscard]] FolderCompareSidePane &head(Side side) { return side == Side::Left ? *m_leftSide : *m_rightSide; }
    [[nodiscard]] NoticeCard &notice() { return *m_notice; }
    /// The pane that has the keyboard, or had it last.
    [[nodiscard]] TreeLineTreeWidget &activePane();

    /// The selected nodes in ascending order.
    [[nodiscard]] QList<qint32> selectedNodes() const;
    [[nodiscard]] qint32 currentNode() const;
    /// Selects a node alone and shows it, opening the folders around it.
    void goToNode(qint32 node);
    /// Selects what has these names, as far as it is shown.
    void selectNames(const QStringList &names);

    /// The side of a place in the coordinates of this widget.
    [[nodiscard]] Side sideAt(QPoint place) const;

    /// Whether there are columns of the versions that files say; kept for later sessions.
    [[nodiscard]] bool showsVersions() const noexcept { return m_showsVersions; }
    void setVersionsShown(bool shown);
    /// What a right click on the headings offers.
    void addHeadingAction(QAction *action);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void openWanted(const QModelIndex &index);
    void upWanted();
    void swapWanted();
    /// The paths of the selected entries shall be copied, those of the left side or of the right.
    void pathsWanted(velmora::Side side);
    void contextMenuWanted(const QModelIndex &index, QPoint global);
    void selectionChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What is current and selected, to be found again in another tree.
    struct NamedPlace {
        QString current;
        QStringList selected;
        int scrolled = 0;
    };

    void buildLayout();
    void connectPane(TreeLineTreeWidget &pane);
    void keepPlace();
    void restorePlace();
    void restoreNames();
    void restoreColumns();
    void columnResized(int section, int width);
    /// Hides times, then sizes, where they would leave too little room for the names. Versions stay when wanted.
    void fitColumns();
    void orderFocus();
    void placeNotice();
    [[nodiscard]] std::array<TreeLineTreeWidget *, 3> panes() const { return {m_left, m_centre, m_right}; }

    FolderComparison &m_comparison;
    FolderRowsModel *m_rows;
    TreeLineTreeWidget *m_left;
    TreeLineTreeWidget *m_centre;
    TreeLineTreeWidget *m_right;
    FolderCompareSidePane *m_leftSide;
    FolderCompareSidePane *m_rightSide;
    NoticeCard *m_notice;
    QSplitter *m_splitter;
    bool m_rightIsActive = false;
    bool m_sharingWidth = false;
    bool m_showsVersions = false;
    std::array<int, 3> m_widths{};         ///< of sizes, times and versions, whether they are shown or not
    TreePlace m_kept;                      ///< over a change of what is shown
    std::optional<NamedPlace> m_keptNames; ///< of the tree before the load that is under way
    bool m_treeIsNew = false;              ///< the numbers of the nodes mean nothing until the rows were made anew
};

} // namespace velmora
