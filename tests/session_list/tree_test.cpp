#include "session/list/tree_view.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Nodes that are called by their numbers, some of them hidden.
struct Numbers final : FixedRowTree {
    explicit Numbers(std::vector<quint16> depths) : FixedRowTree(std::move(depths)) {}
    [[nodiscard]] QStringList headings() const override { return {word("Name"), word("Negative")}; }
    [[nodiscard]] QString text(qint32 node, int column) const override
    {
        ++asked;
        return QString::number(column == 0 ? node : -node);
    }
    [[nodiscard]] bool isShown(qint32 node) const override { return !hidden.contains(node); }
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override
    {
        return column == 0 ? one < other : other < one;
    }
    QSet<qint32> hidden;
    static inline qint64 asked = 0;
};

std::unique_ptr<Numbers> randomNumbers(QRandomGenerator &random, int size)
{
    std::vector<quint16> depths{0};
    while (int(depths.size()) < size)
        depths.push_back(quint16(random.bounded(depths.back() + 2)));
    return std::make_unique<Numbers>(depths);
}

/// What is visible, straight from what the words mean: without a word that is looked for, or with one.
std::vector<qint32> plainRows(const Numbers &tree, const TreeModel &model, const QString &sought)
{
    std::vector<qint32> rows;
    const auto holds = [&](qint32 node) { return QString::number(node).contains(sought); };
    for (qint32 node = 0; node < tree.count(); ++node) {
        bool shown = holds(node);
        for (qint32 other = node + 1; other < tree.end(node); ++other)
            shown = shown || holds(other);
        bool open = true;
        for (qint32 around = node; around >= 0; around = tree.parent(around)) {
            open = open && tree.isShown(around) && (around == node || model.isExpanded(around));
            shown = shown || holds(around);
        }
        if (shown && open)
            rows.push_back(node);
    }
    return rows;
}

std::vector<qint32> rowsOf(const TreeModel &model)
{
    std::vector<qint32> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows.push_back(model.nodeAt(row));
    return rows;
}

} // namespace

class TreeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rowsAndLinesAgreeWithThePlainForm()
    {
        QRandomGenerator random(21);
        for (int round = 0; round < 200; ++round) {
            std::unique_ptr<Numbers> made = randomNumbers(random, 60);
            Numbers &tree = *made;
            TreeModel model(std::move(made));
            for (qint32 node = 0; node < tree.count(); ++node) {
                tree.setExpanded(node, random.bounded(3) > 0);
                if (random.bounded(8) == 0)
                    tree.hidden.insert(node);
            }
            model.update();
            QCOMPARE(rowsOf(model), plainRows(tree, model, {}));
            const QString sought = QString::number(random.bounded(10));
            model.setFilter(sought);
            QCOMPARE(rowsOf(model), plainRows(tree, model, sought));
            if (model.rowCount() > 0) {
                model.setExpanded(random.bounded(model.rowCount()), round % 2 == 0);
                QCOMPARE(rowsOf(model), plainRows(tree, model, sought));
            }
            for (int row = 0; row < model.rowCount(); ++row) {
                QCOMPARE(model.rowOf(model.nodeAt(row)), row);
                // Down from this row: is there another at this depth before what is around ends?
                for (int depth = 0; depth <= tree.depth(model.nodeAt(row)); ++depth) {
                    bool goesOn = false;
                    for (int k = row + 1; k < model.rowCount() && tree.depth(model.nodeAt(k)) >= depth; ++k)
                        goesOn = goesOn || tree.depth(model.nodeAt(k)) == depth;
                    QCOMPARE(bool((model.row(row).lines >> depth) & 1), goesOn);
                }
            }
        }
    }

    void sortsSiblingsAndKeepsThePlace()
    {
        TreeModel model(std::make_unique<Numbers>(std::vector<quint16>{0, 1, 1, 2, 0, 1}));
        TreeView view(model);
        model.setAllExpanded(-1, true);
        view.goToNode(3);
        view.sortByColumn(1, Qt::AscendingOrder);
        QCOMPARE(rowsOf(model), (std::vector<qint32>{4, 5, 0, 2, 3, 1}));
        QCOMPARE(view.currentNode(), 3);
        QCOMPARE(view.selectedNodes(), QList<qint32>{3});
        model.setTree(std::make_unique<Numbers>(std::vector<quint16>{0, 0}));
        QCOMPARE(rowsOf(model), (std::vector<qint32>{1, 0}));
        QCOMPARE(view.currentNode(), 1);
        QVERIFY(view.selectedNodes().isEmpty());
    }

    void keysWalkTheLevels()
    {
        TreeModel model(std::make_unique<Numbers>(std::vector<quint16>{0, 1, 2, 2, 0}));
        TreeView view(model);
        view.goToRow(0);
        const auto press = [&view](int key) {
            QTest::keyClick(&view, Qt::Key(key));
            return view.currentNode();
        };
        QCOMPARE(press(Qt::Key_Right), 0);
        QCOMPARE(press(Qt::Key_Right), 1);
        QCOMPARE(press(Qt::Key_Plus), 1);
        QCOMPARE(press(Qt::Key_Down), 2);
        QCOMPARE(press(Qt::Key_Left), 1);
        QCOMPARE(press(Qt::Key_Minus), 1);
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(press(Qt::Key_Left), 0);
        QTest::keyClick(&view, Qt::Key_Asterisk, Qt::ShiftModifier);
        QCOMPARE(model.rowCount(), 5);
        QCOMPARE(press(Qt::Key_Left), 0);
        QCOMPARE(model.rowCount(), 2);
    }

    void asksOfManyNodesOnlyWhatIsInSight()
    {
        constexpr qint32 many = 300'000;
        std::vector<quint16> depths(many, 1);
        depths[0] = 0;
        TreeModel model(std::make_unique<Numbers>(depths));
        TreeView view(model);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        Numbers::asked = 0;
        model.setExpanded(0, true);
        view.goToRow(many - 1);
        QVERIFY(!view.grab().isNull());
        QVERIFY(Numbers::asked > 0 && Numbers::asked < 5000);
        // Looked through in turns; what is typed on meanwhile replaces what was sought.
        QSignalSpy filtered(&model, &TreeModel::filtered);
        model.setFilter(word("2999"));
        const qsizetype endedAtOnce = filtered.size(); // on a fast machine in its first turn
        model.setFilter(word("299999"));
        QTRY_COMPARE(filtered.size(), endedAtOnce + 1);
        QCOMPARE(rowsOf(model), (std::vector<qint32>{0, many - 1}));
        model.setFilter({});
        QCOMPARE(model.rowCount(), many);
    }
};

VELMORA_TEST(TreeTest)
#include "tree_test.moc"
