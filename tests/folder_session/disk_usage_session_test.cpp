#include "folder/usage/disk_usage_widget.h"
#include "folder/usage/usage_map.h"
#include "folder/usage/usage_view.h"
#include "folder_engine/test_tree.h"
#include "session/list/tree_view.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTabWidget>

#include <algorithm>
#include <numeric>

using namespace velmora;
using namespace velmora::test;

namespace {

struct Fixture {
    TestTree disk;
    ScriptedDialogs dialogs;
    RecordingHost host;
    DiskUsageWidget session{host};
    TreeView &tree = *session.findChild<TreeView *>(word("usageTree"));
    UsageMap &map = *session.findChild<UsageMap *>(word("usageMap"));

    Fixture()
    {
        disk.file(word("left/big/a,b"), QByteArray(600, 'x'));
        disk.file(word("left/big/c"), QByteArray(200, 'x'));
        disk.file(word("left/small"), QByteArray(200, 'x'));
        session.setPaths({disk.left(), {}, {}});
        session.resize(1200, 700);
        session.show();
    }

    void scan()
    {
        press("scanButton");
        wait();
    }
    void wait() { QTRY_VERIFY_WITH_TIMEOUT(!session.isReading(), 20000); }
    void press(const char *button) { session.findChild<QPushButton *>(QLatin1String(button))->click(); }

    [[nodiscard]] QString rows() const
    {
        QStringList lines;
        for (int row = 0; row < tree.model()->rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < UsageRows::OnDisk; ++column)
                texts.append(tree.model()->index(row, column).data().toString());
            lines.append(texts.join(u';'));
        }
        return lines.join(u'|');
    }

    /// The node of a path below the scanned folder.
    [[nodiscard]] qint32 node(const QString &name) const
    {
        for (int row = 0; row < tree.model()->rowCount(); ++row) {
            if (tree.model()->index(row, 0).data() == name)
                return static_cast<const TreeModel *>(tree.model())->nodeAt(row);
        }
        return -1;
    }
};

} // namespace

class DiskUsageSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsSharesAndExportsThemUnquoted()
    {
        Fixture f;
        f.scan();
        QCOMPARE(f.rows(), word("left;1000 bytes;100.0;3;1|big;800 bytes;80.0;2;0|small;200 bytes;20.0;;"));
        const QString csv = f.disk.path(word("disk.csv"));
        f.dialogs.answerPath(csv);
        f.press("exportCsvButton");
        QCOMPARE(f.dialogs.asked().last().start, word("disk_usage.csv"));
        f.wait();
        const QString left = QDir::toNativeSeparators(f.disk.left());
        const QString slash = QDir::toNativeSeparators(word("/"));
        QCOMPARE(QString::fromUtf8(contentsOf(csv)), QStringLiteral("name,size,percent,files,folders,path\n"
                                                                    "left,1000 bytes,100.0,3,1,%1\n"
                                                                    " big,800 bytes,80.0,2,0,%1%2big\n"
                                                                    "  a,b,600 bytes,60.0,,,%1%2big%2a,b\n"
                                                                    "  c,200 bytes,20.0,,,%1%2big%2c\n"
                                                                    " small,200 bytes,20.0,,,%1%2small\n")
                                                         .arg(left, slash));
    }

    void treeMapAndLargestFilesGoTogether()
    {
        Fixture f;
        f.scan();
        const auto press = [&f](QWidget &where, int key) {
            QTest::keyClick(&where, Qt::Key(key));
            return f.tree.currentIndex().siblingAtColumn(0).data().toString();
        };
        QCOMPARE(press(f.map, Qt::Key_Down), word("big"));
        QCOMPARE(press(f.map, Qt::Key_Down), word("a,b"));
        QCOMPARE(press(f.map, Qt::Key_Right), word("c"));
        QCOMPARE(press(f.map, Qt::Key_Left), word("a,b"));
        QCOMPARE(press(f.map, Qt::Key_Up), word("big"));
        QCOMPARE(press(f.map, Qt::Key_Return), word("big"));
        QCOMPARE(f.map.shownFolder(), f.node(word("big")));
        QCOMPARE(press(f.tree, Qt::Key_End), word("small"));
        QCOMPARE(f.map.currentNode(), f.node(word("small")));
        QCOMPARE(f.map.shownFolder(), 0); // or it could not be seen
        QTest::mouseClick(&f.map, Qt::LeftButton, {}, f.map.rectOf(f.node(word("c"))).center());
        QCOMPARE(f.tree.currentNode(), f.node(word("c")));
        f.session.findChild<QTabWidget *>(word("usageSide"))->setCurrentIndex(1);
        auto &largest = *f.session.findChild<TreeView *>(word("largestFiles"));
        largest.setFocus();
        QTest::keyClick(&largest, Qt::Key_Home);
        QTest::keyClick(&largest, Qt::Key_Down);
        QTest::keyClick(&largest, Qt::Key_Up);
        QCOMPARE(f.tree.currentNode(), f.node(word("a,b")));
        f.session.findChild<QLineEdit *>(word("usageFilter"))->setText(word("SMALL"));
        QCOMPARE(f.rows(), word("left;1000 bytes;100.0;3;1|small;200 bytes;20.0;;"));
    }

    void aSecondScanTellsWhatHasGrown()
    {
        Fixture f;
        f.scan();
        QVERIFY(f.tree.isColumnHidden(UsageRows::Growth));
        f.disk.file(word("left/small"), QByteArray(500, 'x'));
        f.scan();
        QVERIFY(!f.tree.isColumnHidden(UsageRows::Growth));
        QCOMPARE(f.tree.model()->index(0, UsageRows::Growth).data().toString(), word("+300 bytes"));
        QCOMPARE(f.tree.model()->index(1, UsageRows::Growth).data().toString(), QString());
    }

    void aSnapshotTellsWhatHasGrown()
    {
        Fixture f;
        const QString path = f.disk.path(word("before.kvsnapshot"));
        QVERIFY(makeFile(path, "{\"entries\": [{\"path\": \"big/a,b\", \"size\": 500}, {\"path\": \"big/gone\", "
                               "\"size\": 50}, {\"path\": \"small\", \"size\": 200}]}"));
        f.scan();
        f.dialogs.answerPath(path);
        f.press("growthSinceButton");
        f.wait();
        const auto grown = [&f](int row) { return f.tree.model()->index(row, UsageRows::Growth).data().toString(); };
        QCOMPARE(grown(0), word("+250 bytes")); // 100 and 200 more, and 50 less
        QCOMPARE(grown(1), word("+250 bytes"));
        QCOMPARE(grown(2), QString());
        f.dialogs.answerPath(f.disk.path(word("left/small")));
        f.press("growthSinceButton");
        f.wait();
        QCOMPARE(grown(0), word("+250 bytes")); // what is no snapshot changes nothing
        const auto answered = [&f](const char *json) {
            QVERIFY(makeFile(f.disk.path(word("earlier.json")), json));
            f.dialogs.answerPath(f.disk.path(word("earlier.json")));
            f.press("growthSinceButton");
            f.wait();
        };
        answered(R"({"depth":1,"files":true,"hidden":false,"nodes":[{"name":"d","depth":0,"folder":true,"size":5}]})");
        QCOMPARE(grown(0), word("+250 bytes")); // measured otherwise
        answered(R"({"depth":0,"files":true,"hidden":false,"nodes":[{"name":"d","depth":0,"folder":true,"size":5}]})");
        QVERIFY(grown(0) != word("+250 bytes"));
    }

    void deletesToTheRecycleBinAndScansAgain()
    {
        Fixture f;
        f.scan();
        f.tree.goToNode(0);
        QTest::keyClick(&f.tree, Qt::Key_Delete);
        QVERIFY(!f.session.isReading()); // the whole folder is not taken
        f.tree.goToNode(f.node(word("big")));
        f.disk.file(word("left/big/.hidden"), "goes along");
        QTest::keyClick(&f.tree, Qt::Key_Delete);
        QTRY_VERIFY(f.session.findChild<QDialog *>());
        f.session.findChild<QDialog *>()->accept();
        QTRY_COMPARE_WITH_TIMEOUT(f.rows(), word("left;200 bytes;100.0;1;0|small;200 bytes;100.0;;"), 20000);
        QVERIFY(!QFileInfo::exists(f.disk.path(word("left/big"))));
    }

    void aPersonStaysWhereTheyAreOverAnotherScan()
    {
        Fixture f;
        f.disk.file(word("left/big/b"), QByteArray(500, 'x'));
        f.scan();
        f.tree.goToNode(f.node(word("big")));
        QTest::keyClick(&f.tree, Qt::Key_Right);
        const auto currentAfter = [&f](const QString &gone) {
            QFile::remove(f.disk.path(gone));
            f.scan();
            return f.tree.currentIndex().siblingAtColumn(0).data().toString();
        };
        f.tree.goToNode(f.node(word("b")));
        QCOMPARE(currentAfter(word("left/big/b")), word("c")); // what followed
        QCOMPARE(currentAfter(word("left/big/a,b")), word("c"));
        QCOMPARE(f.node(word("small")), f.node(word("c")) + 1); // its folder is still open
        QCOMPARE(currentAfter(word("left/big/c")), word("big"));
    }

    void badInputAndCancellingAreSaid()
    {
        Fixture f;
        f.session.setPaths({f.disk.path(word("none")), {}, {}});
        f.scan();
        QVERIFY(f.rows().isEmpty());
        f.session.setPaths({f.disk.left(), {}, {}});
        f.session.findChild<QCheckBox *>(word("showFilesBox"))->setChecked(false);
        f.press("scanButton");
        f.session.onCancel();
        f.wait();
        QVERIFY(f.rows().startsWith(word("left;")));
        f.scan();
        QCOMPARE(f.rows(), word("left;1000 bytes;100.0;3;1|big;800 bytes;80.0;2;0"));
    }

    void tilesCoverWhatTheyStandFor()
    {
        QRandomGenerator random(9);
        for (int round = 0; round < 50; ++round) {
            std::vector<qint64> sizes(std::size_t(1 + random.bounded(40)));
            for (qint64 &size : sizes)
                size = 1 + random.bounded(1000);
            std::sort(sizes.rbegin(), sizes.rend());
            UsageTree::Node root;
            root.size = std::accumulate(sizes.begin(), sizes.end(), qint64(0));
            UsageTree whole(word("/r"));
            whole.append(root, u"r");
            for (const qint64 size : sizes) {
                UsageTree::Node file;
                file.size = size;
                file.parent = 0;
                whole.append(file, u"f");
            }
            whole.complete();
            const QRectF room(0, 0, 600, 400);
            const std::vector<UsageTile> tiles = usageMapLayout(whole, 0, room, 16);
            const qreal scale = 598.0 * (398 - 16) / qreal(root.size);
            for (std::size_t i = 1; i < tiles.size(); ++i) {
                const QRectF &rect = tiles[i].rect;
                QVERIFY(room.contains(rect));
                const qreal area = qreal(whole.node(tiles[i].node).size) * scale;
                QVERIFY(std::abs(rect.width() * rect.height() - area) < 0.01 * area + 1);
                for (std::size_t k = i + 1; k < tiles.size(); ++k)
                    QVERIFY(!rect.adjusted(0.01, 0.01, -0.01, -0.01)
                                 .intersects(tiles[k].rect.adjusted(0.01, 0.01, -0.01, -0.01)));
            }
        }
    }
};

VELMORA_TEST(DiskUsageSessionTest)
#include "disk_usage_session_test.moc"
