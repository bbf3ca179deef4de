#pragma once

#include "folder/usage/usage_colours.h"
#include "folder/usage/usage_rows.h"

#include <QStringList>
#include <QWidget>

class QSplitter;
class QTabWidget;

namespace velmora {

class FilteredTree;
class NoticeCard;
class TreeModel;
class TreeView;
class UsageMap;

/// The result of a scan: the tree with its filter, and beside it the map and the largest files. What is marked in one
/// is marked in the others.
class UsageView final : public QWidget {
    Q_OBJECT
public:
    explicit UsageView(QWidget *parent = nullptr);
    ~UsageView() override;

    /// Another scan of the same folder leaves open what is open, and a person where they are.
    void setResult(const SharedUsage &result);
    void setColouring(UsageColouring colouring);
    /// What is said in place of rows.
    void setNotice(const QString &title, const QString &text);

    [[nodiscard]] qint32 currentNode() const;
    /// What is selected in the part that has the keyboard, or had it last: absolute paths, without what lies in another
    /// selected folder.
    [[nodiscard]] QStringList selectedPaths() const;
    void goToNode(qint32 node);
    void zoomTo(qint32 node);

    void refreshTheme();

Q_SIGNALS:
    void contextMenuWanted(QPoint global);
    void deleteWanted();
    void copyWanted();
    /// A file was opened: it is to be shown in the file manager.
    void openWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeTree();
    void makeSide();
    void connectTree();
    [[nodiscard]] QString largestPath() const;
    void showLargest();

    SharedUsage m_result;
    QSplitter *m_splitter;
    TreeModel *m_rows;
    FilteredTree *m_filtered;
    TreeView &m_tree;
    TreeModel *m_largestRows;
    TreeView *m_largest;
    QTabWidget *m_side;
    UsageMap *m_map;
    NoticeCard *m_notice;
    bool m_largestIsActive = false; ///< it has the keyboard, or had it last
};

} // namespace velmora
