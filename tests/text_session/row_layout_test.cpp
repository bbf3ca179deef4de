#include "row_picture.h"
#include "support/test_main.h"
#include "text/view/row_layout.h"

#include <random>

using namespace velmora;
using velmora::test::rowsOf;

namespace {

RowLayout layoutOf(const QByteArray &picture, RowFilter filter = RowFilter::All, qsizetype context = 0)
{
    RowLayout layout;
    layout.setRowHeight(10);
    layout.setContext(context);
    layout.setFilter(filter);
    layout.setRows(rowsOf(picture));
    return layout;
}

QString shownRows(const RowLayout &layout)
{
    QStringList rows;
    for (qsizetype index = 0; index < layout.count(); ++index) {
        const RowRange stands = layout.rowsAt(index);
        const QString gap = layout.hidesRowsBefore(index) ? QStringLiteral("|") : QString();
        const QString number = QString::number(stands.first);
        rows.append(gap + (layout.isBand(index) ? QStringLiteral("[%1+%2]").arg(number).arg(stands.count) : number));
    }
    return rows.join(u' ');
}

QString blocks(const RowLayout &layout)
{
    QStringList list;
    for (qsizetype block = 0; block < layout.blockCount(); ++block)
        list.append(QStringLiteral("%1+%2").arg(layout.block(block).first).arg(layout.block(block).count));
    return list.join(u' ');
}

} // namespace

class RowLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hidesDifferencesAndFoldsEqualRows()
    {
        QCOMPARE(shownRows(layoutOf("==~+==-=", RowFilter::Identical)), QStringLiteral("0 1 |4 5 |7"));
        const auto shown = [](const char *picture, qsizetype context) {
            return shownRows(layoutOf(picture, RowFilter::Differences, context));
        };
        QCOMPARE(shown("====~====", 1), QStringLiteral("[0+3] 3 4 5 [6+3]"));
        QCOMPARE(shown("====~====", 3), QStringLiteral("0 1 2 3 4 5 6 7 8")); // a single row is not folded
        QCOMPARE(shown("~=====+", 0), QStringLiteral("0 [1+5] 6"));
        QCOMPARE(shown("~=====+", 1), QStringLiteral("0 1 [2+3] 5 6"));
        QCOMPARE(shown("~=====+", 2), QStringLiteral("0 1 2 3 4 5 6"));
        QCOMPARE(shown("~==-", 3), QStringLiteral("0 1 2 3")); // the contexts of two differences overlap
        QCOMPARE(shown("====", 3), QStringLiteral("[0+4]"));
        QCOMPARE(shown("", 3), QString());
    }

    void opensAndKeepsFoldedRows()
    {
        RowLayout layout = layoutOf("====~====~====", RowFilter::Differences, 1);
        QCOMPARE(shownRows(layout), QStringLiteral("[0+3] 3 4 5 [6+2] 8 9 10 [11+3]"));
        QVERIFY(!layout.openBand(1));
        QVERIFY(layout.openBand(4));
        QCOMPARE(shownRows(layout), QStringLiteral("[0+3] 3 4 5 6 7 8 9 10 [11+3]"));
        const std::vector<RowRange> opened = layout.opened();
        layout.setRows(rowsOf("====~=====~===="));
        QCOMPARE(shownRows(layout), QStringLiteral("[0+3] 3 4 5 [6+3] 9 10 11 [12+3]"));
        layout.setOpened(opened);
        QCOMPARE(shownRows(layout), QStringLiteral("[0+3] 3 4 5 6 7 8 9 10 11 [12+3]"));
        layout.setContext(3);
        QCOMPARE(shownRows(layout), QStringLiteral("0 1 2 3 4 5 6 7 8 9 10 11 12 13 14"));
        layout.setFilter(RowFilter::All);
        layout.setFilter(RowFilter::Differences);
        layout.setContext(1);
        QCOMPARE(layout.count(), 9); // another way to show the rows folds them again
    }

    void findsTheRowThatStandsForAHiddenOne()
    {
        const RowLayout folded = layoutOf("==~+==-=", RowFilter::Differences);
        QCOMPARE(shownRows(folded), QStringLiteral("[0+2] 2 3 [4+2] 6 7"));
        const RowLayout identical = layoutOf("==~+==-", RowFilter::Identical);
        QCOMPARE(identical.indexOf(2), 2);
        QCOMPARE(identical.indexOf(6), 3);
        QCOMPARE(layoutOf("~~", RowFilter::Identical).indexOf(1), -1);
        QCOMPARE(layoutOf({}).indexOf(0), -1);
    }

    void countsMinorDifferencesWhenAsked()
    {
        const QByteArray picture = "===~====";
        RowLayout layout = layoutOf(picture);
        std::vector<RowMark> marks(8, RowMark::None);
        marks[1] = marks[4] = RowMark::Minor;
        layout.setRows(rowsOf(picture), marks);
        QCOMPARE(blocks(layout), QStringLiteral("1+1 3+2"));
        layout.setFilter(RowFilter::Differences);
        QCOMPARE(shownRows(layout), QStringLiteral("0 1 2 3 4 [5+3]"));
        layout.setFilter(RowFilter::Identical);
        QCOMPARE(shownRows(layout), QStringLiteral("0 |2 |5 6 7"));
    }

    void blocksAreRunsOfDifferencesWhateverIsShown()
    {
        for (const RowFilter filter : {RowFilter::All, RowFilter::Differences, RowFilter::Identical})
            QCOMPARE(blocks(layoutOf("~+==-=+", filter)), QStringLiteral("0+2 4+1 6+1"));
        const RowLayout layout = layoutOf("=~+-==");
        QCOMPARE(layout.blockCount(), 1);
        QCOMPARE(layout.blockOf(0), -1);
        QCOMPARE(layout.blockOf(1), 0);
        QCOMPARE(layout.blockOf(3), 0);
        QCOMPARE(layout.blockOf(4), -1);
    }

    void revealsADifferenceWithItsSurroundings()
    {
        const RowLayout layout = layoutOf(QByteArray(100, '='));
        QCOMPARE(layout.topToReveal({42, 3}, {40, 0}, 100), (RowPlace{40, 0})); // in sight with a row on either side
        QCOMPARE(layout.topToReveal({40, 3}, {40, 0}, 100),
                 (RowPlace{37, 0})); // at the very top: show what is before it
        QCOMPARE(layout.topToReveal({48, 2}, {40, 0}, 100), (RowPlace{45, 0})); // at the very bottom
        QCOMPARE(layout.topToReveal({0, 2}, {0, 0}, 100), (RowPlace{0, 0}));
        QCOMPARE(layout.topToReveal({97, 3}, {90, 0}, 100), (RowPlace{90, 0}));
        QCOMPARE(layout.topToReveal({60, 30}, {0, 0}, 100), (RowPlace{57, 0})); // longer than the view: its beginning
    }

    void scrollsThroughWrappedRowsLineByLine()
    {
        // Rows of 1, 3, 2 and 30 lines, seen through a window of 4 and a half.
        const std::vector<qsizetype> lines = {1, 3, 2, 30};
        RowLayout layout = layoutOf("====");
        layout.setMeasure([&lines](qsizetype row) { return lines[std::size_t(row)]; });
        QCOMPARE(layout.moved({0, 0}, 1), (RowPlace{1, 0}));
        QCOMPARE(layout.moved({0, 0}, 5), (RowPlace{2, 1}));
        QCOMPARE(layout.moved({3, 7}, -9), (RowPlace{2, 0}));
        QCOMPARE(layout.moved({2, 0}, -100), (RowPlace{0, 0}));
        QCOMPARE(layout.moved({2, 0}, 100), (RowPlace{3, 29}));
        QCOMPARE(layout.maximumTop(45), (RowPlace{3, 26}));
        QCOMPARE(layout.inSight({1, 1}, 45), (RowRange{1, 3}));
        QCOMPARE(layout.inSight({3, 5}, 45), (RowRange{3, 1}));
        QCOMPARE(layout.yOf(1, {1, 2}), -20);
        QCOMPARE(layout.yOf(3, {1, 1}), 40);
        QCOMPARE(layout.yOf(0, {2, 1}), -50);
        QCOMPARE(layout.placeAtY(25, {1, 1}), (RowPlace{2, 0}));
        QCOMPARE(layout.placeAtY(-11, {1, 1}), (RowPlace{0, 0}));
        QCOMPARE(layout.topToShow({3, 10}, {1, 0}, 45), (RowPlace{3, 7}));
        QCOMPARE(layout.topToShow({3, 10}, {3, 8}, 45), (RowPlace{3, 8}));
        QCOMPARE(layout.topToShow({1, 1}, {3, 8}, 45), (RowPlace{1, 1}));
        QCOMPARE(layout.topToReveal({2, 1}, {0, 0}, 45), (RowPlace{1, 2}));
    }

    void rowsOfOneLineScrollAsRowsThatAreNotMeasured()
    {
        std::mt19937 random(5);
        const RowLayout plain = layoutOf(QByteArray(100, '='));
        RowLayout measured = plain;
        measured.setMeasure([](qsizetype) { return 1; });
        for (int round = 0; round < 500; ++round) {
            const RowPlace top{qsizetype(random() % 100), 0};
            const RowPlace place{qsizetype(random() % 100), 0};
            const int height = int(random() % 300);
            const int y = int(random() % 3000) - 1500;
            QCOMPARE(plain.maximumTop(height), measured.maximumTop(height));
            QCOMPARE(plain.moved(top, y), measured.moved(top, y));
            QCOMPARE(plain.inSight(top, height), measured.inSight(top, height));
            QCOMPARE(plain.yOf(place.index, top), measured.yOf(place.index, top));
            QCOMPARE(plain.indexAtY(y, top), measured.indexAtY(y, top));
            QCOMPARE(plain.topToShow(place, top, height), measured.topToShow(place, top, height));
        }
        QCOMPARE(plain.rowsPerPage(3), 1);
        QCOMPARE(plain.yOf(8, {10, 0}), -20);
        QCOMPARE(layoutOf({}).indexAtY(5, {0, 0}), -1);
    }

    void measuresNoMoreRowsThanAreSeen()
    {
        RowLayout layout = layoutOf(QByteArray(1'000'000, '='));
        int measured = 0;
        layout.setMeasure([&measured](qsizetype row) {
            ++measured;
            return row % 3 + 1;
        });
        const RowPlace top = layout.topToReveal({700'000, 5}, {20, 0}, 600);
        QCOMPARE(layout.maximumTop(600), (RowPlace{999'970, 0}));
        QVERIFY(layout.inSight(top, 600).contains(700'000));
        QVERIFY(layout.topToShow({500'000, 0}, top, 600).index == 500'000);
        QVERIFY(layout.yOf(3, top) < 0);
        QVERIFY2(measured < 1500, qPrintable(QString::number(measured)));
    }

    void agreesWithAPlainSearchOnRandomRows()
    {
        std::mt19937 random(20);
        for (int round = 0; round < 200; ++round) {
            QByteArray picture;
            for (unsigned size = random() % 30; size > 0; --size)
                picture += "===+-~"[random() % 6];
            const auto context = qsizetype(random() % 3);
            const RowLayout layout = layoutOf(picture, RowFilter(random() % 3), context);
            const auto isNearADifference = [&](qsizetype row) {
                const QByteArray near =
                    picture.mid(std::max<qsizetype>(row - context, 0), std::min(row, context) + context + 1);
                return near.count('=') < near.size();
            };
            qsizetype next = 0;
            for (qsizetype index = 0; index < layout.count(); ++index) {
                const RowRange stands = layout.rowsAt(index);
                if (layout.filter() == RowFilter::Differences)
                    QCOMPARE(stands.first, next); // shown or folded, no row is left out
                next = stands.end();
                for (qsizetype row = stands.first; row < stands.end(); ++row) {
                    QCOMPARE(layout.indexOf(row), index);
                    QCOMPARE(layout.isShown(row), stands.count == 1);
                    if (stands.count > 1)
                        QVERIFY(!isNearADifference(row));
                    if (layout.filter() == RowFilter::Identical)
                        QCOMPARE(picture.at(row), '=');
                }
            }
            if (layout.filter() != RowFilter::Identical)
                QCOMPARE(next, picture.size());
            for (qsizetype first = 0; first < layout.count(); ++first) {
                const RowRange range{first, qsizetype(random() % 4 + 1)};
                QByteArray signs;
                for (qsizetype index = first; index < std::min(range.end(), layout.count()); ++index)
                    signs += picture.at(layout.rowAt(index));
                QCOMPARE(layout.holds(Added, range), signs.contains('+'));
                QCOMPARE(layout.holds(Removed, range), signs.contains('-'));
                QCOMPARE(layout.holds(Modified, range), signs.contains('~'));
            }
        }
    }
};

VELMORA_TEST(RowLayoutTest)
#include "row_layout_test.moc"
