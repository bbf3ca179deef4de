#include "folder/compare/folder_comparison.h"
#include "folder/compare/folder_rows_model.h"
#include "support/diff_items.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// The rows of a tree as a drawing: lines, then the name and a sign for the state.
QString drawn(const FolderTree &tree, RowsView view)
{
    FolderComparison comparison;
    FolderRowsModel model(comparison);
    comparison.show({}, tree);
    model.setView(view);
    QStringList lines;
    for (int row = 0; row < model.rowCount(); ++row) {
        const qint32 node = model.nodeAt(row);
        QString line;
        const int depth = tree.node(node).depth;
        for (int level = 1; level <= depth; ++level) {
            const bool goesOn = (model.row(row).lines >> level) & 1;
            line += level == depth ? (goesOn ? QStringLiteral("+") : QStringLiteral("`"))
                                   : (goesOn ? QStringLiteral("|") : QStringLiteral(" "));
        }
        line += tree.bareName(node).toString();
        line += u' ' + QStringLiteral("?.=<>!-").at(int(tree.state(node)));
        lines.append(line);
    }
    return lines.join(u'\n');
}

FolderTree smallTree()
{
    FolderTree tree(madeItems("=docs/|=docs/a|!src/|!src/lib/|!src/lib/b|=src/lib/c|<src/new/|<src/new/d|=src/z|>top"));
    tree.setAllExpanded(true);
    return tree;
}

} // namespace

class FolderRowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsOpenFoldersWithLines()
    {
        const FolderTree tree = smallTree();
        QCOMPARE(drawn(tree, RowsView::All),
                 QStringLiteral("docs =\n`a =\nsrc !\n+lib !\n|+b !\n|`c =\n+new <\n|`d <\n`z =\ntop >"));
    }

    void differencesKeepTheFoldersThatLeadToThem()
    {
        const FolderTree tree = smallTree();
        QCOMPARE(drawn(tree, RowsView::Differences), QStringLiteral("src !\n+lib !\n|`b !\n`new <\n `d <\ntop >"));
        QCOMPARE(drawn(tree, RowsView::Same), QStringLiteral("docs =\n`a =\nsrc !\n+lib !\n|`c =\n`z ="));
    }

    void closedAndHiddenFoldersShowNothingInside()
    {
        FolderTree tree = smallTree();
        tree.setExpanded(tree.find(QStringLiteral("src/lib")), false);
        FolderSessionOptions options;
        options.excludeFolders = words("new");
        tree.setVerdicts(FolderTree::judge(tree.items(), FolderFilter(options), {QStringLiteral("top")}));
        tree.rollUp();
        QCOMPARE(drawn(tree, RowsView::All), QStringLiteral("docs =\n`a =\nsrc !\n+lib !\n`z =\ntop >"));
        QCOMPARE(drawn(tree, RowsView::Differences), QStringLiteral("src !\n`lib !"));
    }

    void veryDeepTreesAreShown()
    {
        QByteArray listing;
        for (int depth = 1; depth <= 100; ++depth)
            listing += "|=" + QByteArray("d/").repeated(depth);
        FolderTree tree(madeItems(listing.constData()));
        tree.setAllExpanded(true);
        QCOMPARE(drawn(tree, RowsView::All).count(u'\n'), 99);
    }
};

VELMORA_TEST(FolderRowsTest)
#include "folder_rows_test.moc"
