#include "app/home/home_page.h"
#include "app/home/home_tile.h"
#include "app/home/home_tile_flow_widget.h"
#include "app/home/session_search.h"
#include "app/session_kinds.h"
#include "app/start/locale.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>

#include <algorithm>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

class HomeTilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void flows()
    {
        struct {
            const char *name;
            int width, tiles, fixed, columns, rows;
            QSize extent;
        } const cases[] = {
            {"25 tiles in 640", 640, 25, 0, 6, 5, QSize(578, 524)},
            {"width not known", 0, 25, 0, 6, 5, QSize(578, 524)},
            {"one more pixel, one more column", 686, 7, 0, 7, 1, QSize(676, 100)},
            {"one pixel less", 685, 7, 0, 6, 2, QSize(578, 206)},
            {"never more than twelve", 10000, 25, 0, 12, 3, QSize(1166, 312)},
            {"never less than one", 20, 3, 0, 1, 3, QSize(88, 312)},
            {"fixed", 10000, 25, 4, 4, 7, QSize(382, 736)},
            {"fixed beyond the tiles", 10, 3, 9, 3, 1, QSize(284, 100)},
            {"no tiles", 640, 0, 0, 6, 0, QSize(0, 0)},
        };
        for (const auto &[name, width, tiles, fixed, columns, rows, extent] : cases) {
            TileFlow flow;
            flow.width = width;
            flow.fixedColumns = fixed;
            QVERIFY2(flow.columns(tiles) == columns && flow.rows(tiles) == rows, name);
            QVERIFY2(flow.extent(tiles) == extent, name);
        }
    }

    void placesEachTileInItsRow()
    {
        TileFlow flow;
        flow.width = 640;
        QCOMPARE(flow.position(0, 25), QPoint(0, 0));
        QCOMPARE(flow.position(5, 25), QPoint(490, 0));
        QCOMPARE(flow.position(6, 25), QPoint(0, 106));
        QCOMPARE(flow.position(24, 25), QPoint(0, 424));
        flow.centred = true;
        QCOMPARE(flow.position(0, 25), QPoint(31, 0));
        QCOMPARE(flow.position(24, 25), QPoint(276, 424));
        flow.width = 50;
        QCOMPARE(flow.position(1, 25), QPoint(0, 106));
    }

    void theWidgetFollowsTheGeometry()
    {
        HomeTileFlowWidget flow;
        QCOMPARE(flow.sizeHint(), QSize(0, 0));
        for (int i = 0; i < 25; ++i)
            flow.addTile(new QPushButton(QString::number(i)));
        flow.setAvailableWidth(640);
        QCOMPARE(flow.size(), QSize(640, 524));
        QCOMPARE(flow.minimumSize(), QSize(578, 524));
        QCOMPARE(flow.sizeHint(), QSize(0, 524));
        QCOMPARE(flow.tiles().at(24)->geometry(), QRect(0, 424, 88, 96));
        flow.setAvailableWidth(200);
        QCOMPARE(flow.size(), QSize(200, 13 * 106 - 6));
        flow.setTileSize({50, 50});
        QCOMPARE(flow.tiles().at(3)->geometry(), QRect(0, 60, 50, 50));
    }

    void tilesFitTheirText()
    {
        HomeTileFlowWidget flow;
        auto *narrow = new QPushButton(word("i"));
        auto *wide = new QPushButton(word("a rather long caption"));
        flow.addTile(narrow);
        flow.addTile(wide);
        flow.fitTileSizeToText();
        const int text = wide->fontMetrics().horizontalAdvance(wide->text());
        QVERIFY(flow.tileSize().width() > text);
        QVERIFY(flow.tileSize().width() < text + 60);
        QCOMPARE(narrow->size(), flow.tileSize());
        QCOMPARE(wide->size(), flow.tileSize());
        QCOMPARE(flow.tileSize().height(), 2 * std::max(28, wide->sizeHint().height()));
    }

    void theHomePageHasATileForEveryKind()
    {
        HomePage home;
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        QSet<QString> missing;
        for (const SessionKindRow &kind : sessionKinds())
            missing.insert(QLatin1String("new_") + kind.id);
        const auto tiles = home.findChildren<HomeTile *>(word("homeTile"));
        for (const HomeTile *tile : tiles)
            QVERIFY(tile->isVisible() && missing.remove(tile->property("homeIconId").toString()));
        QVERIFY(missing.isEmpty());
    }

    // Showing the scroll bar made the tiles higher, which hid the bar again, and so on without end.
    void theHomePageSettlesAtEverySize()
    {
        HomePage home;
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        const auto *flow = home.findChild<HomeTileFlowWidget *>(word("homeTileFlow"));
        // Narrower than its texts, whatever the font, the page is scrolled.
        const int least = home.findChild<QScrollArea *>()->widget()->minimumSizeHint().width();
        for (int width = 1300; width >= std::max(480, least); width -= 20) {
            for (int height = 300; height <= 900; height += 40) {
                home.resize(width, height);
                QCoreApplication::sendPostedEvents();
                QCOMPARE(flow->parentWidget()->height(), flow->height());
                QVERIFY(flow->width() <= width);
            }
            // A last row with fewer tiles shares them out with those above: not rows of 9, 9 and 2.
            QMap<int, int> rows;
            for (const QAbstractButton *tile : flow->tiles())
                ++rows[tile->y()];
            QVERIFY(rows.first() - rows.last() < rows.size());
        }
    }

    void theTabKeyWalksThePageInReadingOrder()
    {
        HomePage home;
        home.resize(1100, 800);
        SessionRecord record;
        home.setHistory({{1, record}});
        record.type = word("text");
        home.setHistory({{1, {}}, {2, record}}); // made anew
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        QPoint last = home.focusWidget()->mapTo(&home, QPoint());
        const auto tiles = home.findChildren<TileButton *>();
        for (qsizetype i = 0; i < tiles.size(); ++i) {
            QTest::keyClick(home.focusWidget(), Qt::Key_Tab);
            QVERIFY(qobject_cast<TileButton *>(home.focusWidget()));
            const QPoint next = home.focusWidget()->mapTo(&home, QPoint());
            QVERIFY(next.y() > last.y() || (next.y() == last.y() && next.x() > last.x()));
            last = next;
        }
    }

    void aTileStartsItsKind()
    {
        HomePage home;
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        QStringList chosen;
        connect(&home, &HomePage::kindChosen, this, [&chosen](const SessionKindRow &kind) { chosen.append(kind.id); });
        const auto tiles = home.findChildren<HomeTile *>();
        QTest::mouseClick(tiles[0], Qt::LeftButton);
        QTest::keyClick(tiles[1], Qt::Key_Return);
        QTest::keyClick(tiles[2], Qt::Key_Space);
        QCOMPARE(chosen, (QStringList{tiles[0]->row().id, tiles[1]->row().id, tiles[2]->row().id}));
    }

    void keysWalkTheTilesByWhereTheyAre()
    {
        // Two cards over three tiles, and one below the right one.
        const QList<QRect> places = {{0, 0, 100, 40},  {110, 0, 100, 40}, {0, 50, 60, 40},
                                     {70, 50, 60, 40}, {140, 50, 60, 40}, {150, 100, 60, 40}};
        const auto walk = [&places](qsizetype from, std::initializer_list<int> keys) {
            QStringList way;
            for (const int key : keys)
                way.append(QString::number(from = placeAfterKey(places, from, key)));
            return way.join(u' ');
        };
        QCOMPARE(walk(0, {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left}), word("1 2 1 0 0"));
        QCOMPARE(walk(0, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}),
                 word("2 5 5 4 1 1"));
        QCOMPARE(walk(3, {Qt::Key_Up, Qt::Key_End, Qt::Key_Right, Qt::Key_Home}), word("0 5 5 0"));
        QCOMPARE(walk(-1, {Qt::Key_Down}), word("0"));
        QCOMPARE(placeAfterKey({}, -1, Qt::Key_Down), -1);
        QCOMPARE(placeAfterKey(places, 0, Qt::Key_A), -1);
    }

    void typingFindsKindsAndSessions()
    {
        HomePage home;
        home.resize(1000, 700);
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        QStringList chosen;
        connect(&home, &HomePage::kindChosen, this, [&chosen](const SessionKindRow &kind) { chosen.append(kind.id); });
        connect(&home, &HomePage::entryChosen, this, [&chosen](quint64 id) { chosen.append(QString::number(id)); });
        auto *filter = home.findChild<QLineEdit *>(word("homeFilter"));
        const auto reached = [&home] {
            QStringList names;
            for (const TileButton *tile : home.findChildren<TileButton *>()) {
                if (tile->isEnabled() && !tile->isHidden())
                    names.append(tile->text() + (tile->isPreferred() ? word("*") : QString()));
            }
            names.sort();
            return names.join(u'|');
        };
        SessionRecord record;
        record.type = word("table");
        record.name = word("June <-> July");
        record.paths.left = word("/accounts/june.csv");
        QList<SessionHistory::Entry> history(12, {7, record});
        for (int i = 0; i < 12; ++i)
            history[i].record.paths.right = QString::number(i);
        home.setHistory(history);
        QCOMPARE(home.findChildren<TileButton *>(word("recentSession")).size(), 3);

        // Typed anywhere on the page, words in any order.
        HomeTile *tile = home.findChildren<HomeTile *>().constLast();
        tile->setFocus();
        QTest::keyClicks(tile, word("h"));
        QCOMPARE(filter->text(), word("h"));
        filter->setText(word("compare IMA"));
        QCOMPARE(reached(), word("Image compare*"));
        QVERIFY(!tile->isEnabled());
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen, words("image"));
        QVERIFY(filter->text().isEmpty()); // found

        // All of the history is looked through.
        filter->setText(word("june accounts"));
        QCOMPARE(home.findChildren<TileButton *>(word("recentSession")).size(), 9);
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen.constLast(), word("7"));
        filter->setText(word("nothing of the kind"));
        QCOMPARE(reached(), QString());
        QVERIFY(home.findChild<QLabel *>(word("recentNothing"))->isVisible());
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen.size(), 2);

        QTest::keyClick(filter, Qt::Key_Escape);
        QVERIFY(filter->text().isEmpty());
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen.size(), 2);
        QTest::keyClick(filter, Qt::Key_Down);
        QVERIFY(home.findChild<QWidget *>(word("homePrimaryRow"))->findChild<HomeTile *>()->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
        QCOMPARE(QApplication::focusWidget()->objectName(), word("recentSession"));
    }

    void findsKindsInBothLanguages()
    {
        const SessionKindRow &kind = sessionKind(QLatin1String("text"));
        QVERIFY(kindMatches(kind, QString()));
        QVERIFY(kindMatches(kind, word(" DIFF  text ")));
        QVERIFY(!kindMatches(kind, word("text image")));
        HomePage home;
        const QImage english = home.grab().toImage();
        setCurrentLocale(word("zh_CN"));
        installTranslator();
        QCOMPARE(home.grab().toImage(), english); // what is there stays in one language
        QVERIFY(kindMatches(kind, word("文本")));
        QVERIFY(kindMatches(kind, word("比较 text")));
        setCurrentLocale({});
        installTranslator();
    }

    void tilesTakeWhatTheirKindCompares()
    {
        HomePage home;
        QStringList dropped;
        connect(&home, &HomePage::pathsDropped, this,
                [&](const SessionKindRow &kind, const QStringList &paths) { dropped = QStringList{kind.id} + paths; });
        // Which of entering, moving and dropping a tile accepts.
        const auto drop = [](HomeTile *tile, const QMimeData &data) {
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            enter.ignore();
            QApplication::sendEvent(tile, &enter);
            QDragMoveEvent move({6, 6}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tile, &move);
            QDropEvent drop({6, 6}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tile, &drop);
            return QList<bool>{enter.isAccepted(), move.isAccepted(), drop.isAccepted()};
        };
        const auto tiles = home.findChildren<HomeTile *>();
        QMimeData text;
        text.setText(word("no file"));
        QVERIFY(!drop(tiles[0], text).contains(true));
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(word("/a")), QUrl(word("https://host/x")), QUrl::fromLocalFile(word("/b"))});
        QVERIFY(!drop(tiles[0], files).contains(false));
        QCOMPARE(dropped, (QStringList{tiles[0]->row().id, word("/a"), word("/b")}));

        QMimeData folder;
        folder.setUrls({QUrl::fromLocalFile(QDir::rootPath())});
        for (HomeTile *tile : tiles) {
            dropped.clear();
            const bool taken = !tile->row().filesOnly;
            QCOMPARE(drop(tile, folder), (QList<bool>{true, taken, taken})); // entered, or it could not say why not
            QCOMPARE(!dropped.isEmpty(), taken);
        }
    }
};

VELMORA_TEST(HomeTilesTest)
#include "home_tiles_test.moc"
