#include "edit_fixture.h"
#include "support/test_main.h"
#include "text/line_pairs.h"

#include <QAction>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

using namespace velmora;
using namespace velmora::test;

namespace {

TextLines randomLines(QRandomGenerator &random)
{
    QByteArray text;
    for (int k = random.bounded(8); k > 0; --k)
        text += QByteArray(1, "abc "[random.bounded(4)]) + '\n';
    return TextLines::split(text);
}

} // namespace

class LinePairsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Every line stands in one row, in its order, and the lines of a pair stand in the same.
    void keepsPairsInOneRow()
    {
        QRandomGenerator random(13);
        for (int round = 0; round < 3000; ++round) {
            const TextLines left = randomLines(random);
            const TextLines right = randomLines(random);
            TextSessionOptions options;
            options.alignAlgorithm = random.bounded(4);
            LinePairs pairs;
            for (int k = random.bounded(4); k > 0; --k)
                pairs.add({random.bounded(1, 9), random.bounded(1, 9)});
            QCOMPARE(LinePairs::fromJson(pairs.toJson()), pairs);
            Progress nobody;
            const QList<AlignedRow> rows = compareAligned(left, right, options, pairs, {}, nobody).rows;
            LinePair last;
            for (const AlignedRow &row : rows) {
                if (row.leftLine >= 1)
                    QCOMPARE(row.leftLine, ++last.left);
                if (row.rightLine >= 1)
                    QCOMPARE(row.rightLine, ++last.right);
                for (const LinePair &pair : pairs.list()) {
                    const bool exists = pair.left <= left.count() && pair.right <= right.count();
                    QVERIFY(!exists || (row.leftLine == pair.left) == (row.rightLine == pair.right));
                }
            }
            QCOMPARE(last, (LinePair{qint32(left.count()), qint32(right.count())}));
        }
    }

    void followsEdits()
    {
        const auto after = [](LineChange change) {
            LinePairs pairs;
            pairs.add({2, 7});
            pairs.add({5, 9});
            pairs.takeEdit(Side::Left, change);
            return QString::fromUtf8(QJsonDocument(pairs.toJson()).toJson(QJsonDocument::Compact));
        };
        QCOMPARE(after({0, 0, 3, {}}), word("[[5,7],[8,9]]"));
        QCOMPARE(after({1, 1, 1, {}}), word("[[2,7],[5,9]]"));
        QCOMPARE(after({1, 2, 0, {}}), word("[[3,9]]"));
        QCOMPARE(after({2, 1, 4, {}}), word("[[2,7],[8,9]]"));
    }

    void linesAreAlignedByKeysAndKeptWithTheSession()
    {
        EditFixture f("a\nx\nb\n", "a\nb\ny\n");
        const QStringList before = f.rows();
        f.put(Side::Left, {1, 0}); // "x"
        f.child<QAction>("alignLinesAction")->trigger();
        QVERIFY(f.status().startsWith(word("Left line 2 is chosen")));
        f.put(Side::Right, {f.scene().document()->rowOfLine(Side::Right, 3), 0}); // "y"
        f.child<QAction>("alignLinesAction")->trigger();
        QTRY_COMPARE(f.picture(), word("=a|a,+-|b,~x|y,-b|-"));
        const QJsonObject kept = f.session.options();

        SessionFixture again;
        again.session.setOptions(kept);
        again.compare(f.left, f.right);
        QCOMPARE(again.session.view().document()->rows(), f.session.view().document()->rows());

        f.put(Side::Left, {0, 0});
        QTest::keyClick(&f.pane(Side::Left), Qt::Key_Return); // the pair moves down with its line
        QTRY_VERIFY(f.rows().contains(word("~x|y")));
        QCOMPARE(f.session.options().value(word("alignedLines")).toArray().at(0).toArray().at(0).toInt(), 3);
        f.session.edit(EditCommand::UndoLeft);
        f.put(Side::Left, {f.scene().document()->rowOfLine(Side::Left, 2), 0});
        f.child<QAction>("releaseLinesAction")->trigger();
        QTRY_COMPARE(f.rows(), before);
        QVERIFY(!f.session.options().contains(word("alignedLines")));
    }
};

VELMORA_TEST(LinePairsTest)
#include "line_pairs_test.moc"
