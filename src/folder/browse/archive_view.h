#pragma once

#include "folder/browse/archive_rows.h"
#include "vfs/archive/archive_problem.h"

#include <QList>
#include <QPoint>
#include <QStringList>
#include <QWidget>

class QSplitter;

namespace velmora {

class FilteredTree;
class NoticeCard;
class PreviewPane;
class TreeModel;
class TreeView;

/// An archive that was opened: the tree with its filter, beside it what is in the current entry, and below it what is
/// missing or damaged.
class ArchiveView final : public QWidget {
    Q_OBJECT
public:
    explicit ArchiveView(QWidget *parent = nullptr);
    ~ArchiveView() override;

    void setListing(const SharedListing &listing);
    /// Marks what a test has found.
    void takeTest(const ArchiveTest &test);
    /// Lists these; none hide the list.
    void setProblems(const QList<ArchiveProblem> &problems);
    /// What is said in place of an archive.
    void setNotice(const QString &title, const QString &text);

    [[nodiscard]] qint32 currentRow() const;
    /// In ascending order.
    [[nodiscard]] QList<qint32> selectedRows() const;
    void goToRow(qint32 row);
    void setAllExpanded(bool expanded);
    void focusFilter();
    /// Takes the keyboard from the tree to the preview, or back.
    void switchPane();

    void refreshTheme();

Q_SIGNALS:
    /// A file is to be opened.
    void openWanted();
    void copyWanted();
    void contextMenuWanted(QPoint global);
    void passwordWanted();
    void selectionChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeTree();
    void makeProblems();
    void connectTree();
    void showUsedColumns();

    SharedListing m_listing;
    QSplitter *m_columns;
    QSplitter *m_rows;
    TreeModel *m_entries;
    FilteredTree *m_filtered;
    TreeView &m_tree;
    PreviewPane *m_preview;
    TreeModel *m_problemRows;
    TreeView *m_problems;
    NoticeCard *m_notice;
};

} // namespace velmora
