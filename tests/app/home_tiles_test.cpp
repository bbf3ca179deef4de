#include "app/home_page.h"
#include "app/home_tile.h"
#include "app/home_tile_flow_widget.h"
#include "app/locale.h"
#include "app/session_kinds.h"
#include "app/session_search.h"
#include "support/test_main.h"

#include <QMimeData>
#include <QSignalSpy>

using namespace velmora;

class HomeTilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void flows_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("tiles");
        QTest::addColumn<int>("fixed");
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QSize>("extent");
        const auto row = [](const char *name, int width, int tiles, int fixed, int columns, int rows, QSize extent) {
            QTest::newRow(name) << width << tiles << fixed << columns << rows << extent;
        };
        row("25 tiles in 640", 640, 25, 0, 6, 5, QSize(578, 524));
        row("width not known", 0, 25, 0, 6, 5, QSize(578, 524));
        row("one more pixel, one more column", 686, 7, 0, 7, 1, QSize(676, 100));
        row("one pixel less", 685, 7, 0, 6, 2, QSize(578, 206));
        row("never more than twelve", 10000, 25, 0, 12, 3, QSize(1166, 312));
        row("never less than one", 20, 3, 0, 1, 3, QSize(88, 312));
        row("fixed", 10000, 25, 4, 4, 7, QSize(382, 736));
        row("fixed beyond the tiles", 10, 3, 9, 3, 1, QSize(284, 100));
        row("no tiles", 640, 0, 0, 6, 0, QSize(0, 0));
    }

    void flows()
    {
        QFETCH(int, width);
        QFETCH(int, tiles);
        QFETCH(int, fixed);
        TileFlow flow;
        flow.width = width;
        flow.fixedColumns = fixed;
        QTEST(flow.columns(tiles), "columns");
        QTEST(flow.rows(tiles), "rows");
        QTEST(flow.extent(tiles), "extent");
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
        auto *narrow = new QPushButton(QStringLiteral("i"));
        auto *wide = new QPushButton(QStringLiteral("a rather long caption"));
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
        home.resize(1000, 700);
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        QStringList ids;
        QStringList expected;
        const auto tiles = home.findChildren<HomeTile *>();
        for (const HomeTile *tile : tiles) {
            QCOMPARE(tile->objectName(), QStringLiteral("homeTile"));
            ids.append(tile->property("homeIconId").toString());
            QVERIFY2(tile->isVisible() && tile->width() >= tile->minimumSizeHint().width(), qPrintable(ids.last()));
        }
        for (const SessionKindRow &kind : sessionKinds())
            expected.append(QLatin1String("new_") + kind.id);
        ids.sort();
        expected.sort();
        QCOMPARE(ids, expected);
    }

    void theHomePageGrowsNarrowAgain()
    {
        HomePage home;
        home.resize(1300, 700);
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        const auto *flow = home.findChild<HomeTileFlowWidget *>(QStringLiteral("homeTileFlow"));
        const int wideHeight = flow->height();
        home.resize(700, 700);
        QTRY_VERIFY(flow->height() > wideHeight);
        QVERIFY(flow->width() <= 700);
    }

    // Showing the scroll bar made the tiles higher, which hid the bar again, and so on without end.
    void theHomePageSettlesAtEverySize()
    {
        HomePage home;
        home.show();
        QVERIFY(QTest::qWaitForWindowExposed(&home));
        const auto *flow = home.findChild<HomeTileFlowWidget *>(QStringLiteral("homeTileFlow"));
        for (int width = 480; width <= 1300; width += 20) {
            for (int height = 300; height <= 900; height += 40) {
                home.resize(width, height);
                QCoreApplication::sendPostedEvents();
                QCOMPARE(flow->parentWidget()->height(), flow->height());
            }
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
        QCOMPARE(walk(0, {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left}),
                 QStringLiteral("1 2 1 0 0"));
        QCOMPARE(walk(0, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}),
                 QStringLiteral("2 5 5 4 1 1"));
        QCOMPARE(walk(3, {Qt::Key_Up, Qt::Key_End, Qt::Key_Right, Qt::Key_Home}), QStringLiteral("0 5 5 0"));
        QCOMPARE(walk(-1, {Qt::Key_Down}), QStringLiteral("0"));
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
        auto *filter = home.findChild<QLineEdit *>(QStringLiteral("homeFilter"));
        const auto reached = [&home] {
            QStringList names;
            for (const TileButton *tile : home.findChildren<TileButton *>()) {
                if (tile->isEnabled() && !tile->isHidden())
                    names.append(tile->text() + (tile->isPreferred() ? QStringLiteral("*") : QString()));
            }
            names.sort();
            return names.join(u'|');
        };
        SessionRecord record;
        record.type = QStringLiteral("table");
        record.name = QStringLiteral("June <-> July");
        record.paths.left = QStringLiteral("/accounts/june.csv");
        QList<SessionHistory::Entry> history(12, {7, record});
        for (int i = 0; i < 12; ++i)
            history[i].record.paths.right = QString::number(i);
        home.setHistory(history);
        QCOMPARE(home.findChildren<TileButton *>(QStringLiteral("recentSession")).size(), 3);

        // Typed anywhere on the page, words in any order.
        HomeTile *tile = home.findChildren<HomeTile *>().constLast();
        tile->setFocus();
        QTest::keyClicks(tile, QStringLiteral("h"));
        QCOMPARE(filter->text(), QStringLiteral("h"));
        filter->setText(QStringLiteral("compare IMA"));
        QCOMPARE(reached(), QStringLiteral("Image compare*"));
        QVERIFY(!tile->isEnabled());
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen, QStringList{QStringLiteral("image")});
        QVERIFY(filter->text().isEmpty()); // found

        // All of the history is looked through.
        filter->setText(QStringLiteral("june accounts"));
        QCOMPARE(home.findChildren<TileButton *>(QStringLiteral("recentSession")).size(), 9);
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen.constLast(), QStringLiteral("7"));
        filter->setText(QStringLiteral("nothing of the kind"));
        QCOMPARE(reached(), QString());
        QVERIFY(home.findChild<QLabel *>(QStringLiteral("recentNothing"))->isVisible());
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen.size(), 2);

        QTest::keyClick(filter, Qt::Key_Escape);
        QVERIFY(filter->text().isEmpty());
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(chosen.size(), 2);
        QTest::keyClick(filter, Qt::Key_Down);
        QVERIFY(home.findChild<QWidget *>(QStringLiteral("homePrimaryRow"))->findChild<HomeTile *>()->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("recentSession"));
    }

    void findsKindsInBothLanguages()
    {
        const SessionKindRow &kind = sessionKind(QLatin1String("text"));
        QVERIFY(kindMatches(kind, QString()));
        QVERIFY(kindMatches(kind, QStringLiteral(" DIFF  text ")));
        QVERIFY(!kindMatches(kind, QStringLiteral("text image")));
        setCurrentLocale(QStringLiteral("zh_CN"));
        installTranslator();
        QVERIFY(kindMatches(kind, QStringLiteral("文本")));
        QVERIFY(kindMatches(kind, QStringLiteral("比较 text")));
        setCurrentLocale({});
        installTranslator();
    }

    void aFileTileRefusesFolders()
    {
        HomePage home;
        int dropped = 0;
        connect(&home, &HomePage::pathsDropped, this, [&dropped] { ++dropped; });
        QMimeData folder;
        folder.setUrls({QUrl::fromLocalFile(QDir::rootPath())});
        const auto tiles = home.findChildren<HomeTile *>();
        int refusing = 0;
        for (HomeTile *tile : tiles) {
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, &folder, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tile, &enter);
            QVERIFY(enter.isAccepted()); // or the tile could not say why
            QDragMoveEvent move({6, 6}, Qt::CopyAction, &folder, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tile, &move);
            QCOMPARE(move.isAccepted(), !tile->row().filesOnly);
            QDropEvent drop({6, 6}, Qt::CopyAction, &folder, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tile, &drop);
            QCOMPARE(drop.isAccepted(), !tile->row().filesOnly);
            refusing += tile->row().filesOnly;
        }
        QVERIFY(refusing > 0);
        QCOMPARE(dropped, tiles.size() - refusing);
    }

    void aTileTakesDroppedFiles()
    {
        HomePage home;
        QStringList dropped;
        connect(&home, &HomePage::pathsDropped, this,
                [&](const SessionKindRow &kind, const QStringList &paths) { dropped = QStringList{kind.id} + paths; });
        HomeTile *tile = home.findChildren<HomeTile *>().constFirst();
        QMimeData text;
        text.setText(QStringLiteral("no file"));
        QDragEnterEvent refused({5, 5}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        refused.ignore();
        QApplication::sendEvent(tile, &refused);
        QVERIFY(!refused.isAccepted());

        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(QStringLiteral("/a")), QUrl(QStringLiteral("https://host/x")),
                       QUrl::fromLocalFile(QStringLiteral("/b"))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(tile, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tile, &drop);
        QCOMPARE(dropped, (QStringList{tile->row().id, QStringLiteral("/a"), QStringLiteral("/b")}));
    }
};

VELMORA_TEST(HomeTilesTest)
#include "home_tiles_test.moc"
