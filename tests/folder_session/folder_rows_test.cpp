#include "folder/engine/folder_rows.h"
#include "folder_engine/made_trees.h"
#include "support/diff_items.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// The rows as a drawing: lines, then the name and a sign for the state.
QStringList drawn(const FolderTree &tree, const std::vector<FolderRow> &rows)
{
    QStringList lines;
    for (const FolderRow &row : rows) {
        QString line;
        const int depth = tree.node(row.node).depth;
        for (int level = 1; level <= depth; ++level) {
            const bool goesOn = (row.lines >> level) & 1;
            line += level == depth ? (goesOn ? QStringLiteral("+") : QStringLiteral("`"))
                                   : (goesOn ? QStringLiteral("|") : QStringLiteral(" "));
        }
        line += tree.bareName(row.node).toString();
        line += u' ' + QStringLiteral("?.=<>!-").at(int(tree.state(row.node)));
        lines.append(line);
    }
    return lines;
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
        QCOMPARE(drawn(tree, visibleRows(tree, RowsView::All)).join(u'\n'),
                 QStringLiteral("docs =\n`a =\nsrc !\n+lib !\n|+b !\n|`c =\n+new <\n|`d <\n`z =\ntop >"));
    }

    void differencesKeepTheFoldersThatLeadToThem()
    {
        const FolderTree tree = smallTree();
        QCOMPARE(drawn(tree, visibleRows(tree, RowsView::Differences)).join(u'\n'),
                 QStringLiteral("src !\n+lib !\n|`b !\n`new <\n `d <\ntop >"));
        QCOMPARE(drawn(tree, visibleRows(tree, RowsView::Same)).join(u'\n'),
                 QStringLiteral("docs =\n`a =\nsrc !\n+lib !\n|`c =\n`z ="));
    }

    void closedAndHiddenFoldersShowNothingInside()
    {
        FolderTree tree = smallTree();
        tree.setExpanded(tree.find(QStringLiteral("src/lib")), false);
        FolderSessionOptions options;
        options.excludeFolders = words("new");
        tree.setVerdicts(FolderTree::judge(tree.items(), FolderFilter(options), {QStringLiteral("top")}));
        tree.rollUp();
        QCOMPARE(drawn(tree, visibleRows(tree, RowsView::All)).join(u'\n'),
                 QStringLiteral("docs =\n`a =\nsrc !\n+lib !\n`z =\ntop >"));
        QCOMPARE(drawn(tree, visibleRows(tree, RowsView::Differences)).join(u'\n'), QStringLiteral("src !\n`lib !"));
    }

    void linesAgreeWithThePlainForm()
    {
        QRandomGenerator random(21);
        for (int round = 0; round < 200; ++round) {
            FolderTree tree(randomResult(random, 60));
            for (qint32 i = 0; i < tree.size(); ++i)
                tree.setExpanded(i, random.bounded(3) > 0);
            const std::vector<FolderRow> rows = visibleRows(tree, RowsView::All);
            for (std::size_t i = 0; i < rows.size(); ++i) {
                // Down from row i: is there another row at this depth before the folder around ends?
                for (int depth = 0; depth <= tree.node(rows[i].node).depth; ++depth) {
                    bool goesOn = false;
                    for (std::size_t k = i + 1; k < rows.size() && tree.node(rows[k].node).depth >= depth; ++k)
                        goesOn = goesOn || tree.node(rows[k].node).depth == depth;
                    QCOMPARE(bool((rows[i].lines >> depth) & 1), goesOn);
                }
            }
        }
    }

    void veryDeepTreesAreShown()
    {
        QByteArray listing;
        for (int depth = 1; depth <= 100; ++depth)
            listing += "|=" + QByteArray("d/").repeated(depth);
        FolderTree tree(madeItems(listing.constData()));
        tree.setAllExpanded(true);
        QCOMPARE(visibleRows(tree, RowsView::All).size(), 100u);
    }
};

VELMORA_TEST(FolderRowsTest)
#include "folder_rows_test.moc"
