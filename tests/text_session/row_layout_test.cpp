#include "support/test_main.h"
#include "text/view/row_layout.h"

#include <random>

using namespace velmora;

namespace {

/// One row for each character: '=', '+', '-' or '~'.
QList<AlignedRow> rowsOf(const QString &picture)
{
    QList<AlignedRow> rows;
    qint32 left = 0;
    qint32 right = 0;
    for (const QChar sign : picture) {
        if (sign == u'+')
            rows.append({Added, -1, ++right});
        else if (sign == u'-')
            rows.append({Removed, ++left, -1});
        else
            rows.append({sign == u'~' ? Modified : Equal, ++left, ++right});
    }
    return rows;
}

RowLayout layoutOf(const QString &picture, RowFilter filter = RowFilter::All)
{
    RowLayout layout;
    layout.setRowHeight(10);
    layout.setFilter(filter);
    layout.setRows(rowsOf(picture));
    return layout;
}

QString shownRows(const RowLayout &layout)
{
    QStringList rows;
    for (qsizetype index = 0; index < layout.count(); ++index)
        rows.append((layout.hidesRowsBefore(index) ? QStringLiteral("|") : QString()) +
                    QString::number(layout.rowAt(index)));
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
    void filtersRows()
    {
        const auto picture = QStringLiteral("==~+==-=");
        QCOMPARE(shownRows(layoutOf(picture)), QStringLiteral("0 1 2 3 4 5 6 7"));
        QCOMPARE(shownRows(layoutOf(picture, RowFilter::Differences)), QStringLiteral("2 3 |6"));
        QCOMPARE(shownRows(layoutOf(picture, RowFilter::Identical)), QStringLiteral("0 1 |4 5 |7"));
        QCOMPARE(shownRows(layoutOf(QStringLiteral("=="), RowFilter::Differences)), QString());
    }

    void findsTheShownRowNearestToAHiddenOne()
    {
        const RowLayout layout = layoutOf(QStringLiteral("==~+==-="), RowFilter::Differences);
        QCOMPARE(layout.indexOf(0), 0);
        QCOMPARE(layout.indexOf(3), 1);
        QCOMPARE(layout.indexOf(4), 2);
        QCOMPARE(layout.indexOf(7), 2);
        QVERIFY(layout.isShown(6));
        QVERIFY(!layout.isShown(7));
        QCOMPARE(layoutOf(QStringLiteral("=="), RowFilter::Differences).indexOf(1), -1);
        QCOMPARE(layoutOf(QString()).indexOf(0), -1);
    }

    void blocksAreRunsOfDifferencesWhateverIsShown()
    {
        for (const RowFilter filter : {RowFilter::All, RowFilter::Differences, RowFilter::Identical})
            QCOMPARE(blocks(layoutOf(QStringLiteral("~+==-=+"), filter)), QStringLiteral("0+2 4+1 6+1"));
        const RowLayout layout = layoutOf(QStringLiteral("=~+-=="));
        QCOMPARE(layout.blockCount(), 1);
        QCOMPARE(layout.blockOf(0), -1);
        QCOMPARE(layout.blockOf(1), 0);
        QCOMPARE(layout.blockOf(3), 0);
        QCOMPARE(layout.blockOf(4), -1);
    }

    void scrollsByWholeRows()
    {
        const RowLayout layout = layoutOf(QString(100, u'='));
        QCOMPARE(layout.rowsPerPage(45), 4);
        QCOMPARE(layout.rowsPerPage(3), 1);
        QCOMPARE(layout.maximumTop(45), 96);
        QCOMPARE(layout.inSight(96, 45), (RowRange{96, 4}));
        QCOMPARE(layout.inSight(10, 45), (RowRange{10, 5})); // the last one is cut off
        QCOMPARE(layout.yOf(12, 10), 20);
        QCOMPARE(layout.yOf(8, 10), -20);
    }

    void hitsRowsInsideAndOutsideTheView()
    {
        const RowLayout layout = layoutOf(QString(100, u'='));
        QCOMPARE(layout.indexAtY(0, 10), 10);
        QCOMPARE(layout.indexAtY(9, 10), 10);
        QCOMPARE(layout.indexAtY(10, 10), 11);
        QCOMPARE(layout.indexAtY(-1, 10), 9);
        QCOMPARE(layout.indexAtY(-11, 10), 8);
        QCOMPARE(layout.indexAtY(-5000, 10), 0);
        QCOMPARE(layout.indexAtY(5000, 10), 99);
        QCOMPARE(layoutOf(QString()).indexAtY(5, 0), -1);
    }

    void bringsRowsIntoSightByTheLeastScroll()
    {
        const RowLayout layout = layoutOf(QString(100, u'='));
        QCOMPARE(layout.topToShow(50, 48, 45), 48);
        QCOMPARE(layout.topToShow(51, 48, 45), 48);
        QCOMPARE(layout.topToShow(52, 48, 45), 49);
        QCOMPARE(layout.topToShow(40, 48, 45), 40);
        QCOMPARE(layout.topToShow(99, 0, 45), 96);
    }

    void revealsADifferenceWithItsSurroundings()
    {
        const RowLayout layout = layoutOf(QString(100, u'='));
        QCOMPARE(layout.topToReveal({42, 3}, 40, 100), 40); // in sight with a row on either side
        QCOMPARE(layout.topToReveal({40, 3}, 40, 100), 37); // at the very top: show what is before it
        QCOMPARE(layout.topToReveal({48, 2}, 40, 100), 45); // at the very bottom
        QCOMPARE(layout.topToReveal({0, 2}, 0, 100), 0);
        QCOMPARE(layout.topToReveal({97, 3}, 90, 100), 90);
        QCOMPARE(layout.topToReveal({60, 30}, 0, 100), 57); // longer than the view: its beginning
    }

    void tellsTheKindsAmongARangeOfRows()
    {
        const auto picture = QStringLiteral("=++=-~~=");
        const RowLayout all = layoutOf(picture);
        QVERIFY(!all.holds(Added, {0, 1}));
        QVERIFY(all.holds(Added, {0, 2}));
        QVERIFY(all.holds(Added, {2, 1}));
        QVERIFY(!all.holds(Added, {3, 5}));
        QVERIFY(all.holds(Removed, {4, 1}));
        QVERIFY(all.holds(Modified, {6, 9}));
        const RowLayout filtered = layoutOf(picture, RowFilter::Differences);
        QVERIFY(filtered.holds(Added, {0, 1}));
        QVERIFY(filtered.holds(Removed, {2, 1}));
        QVERIFY(!filtered.holds(Removed, {0, 2}));
    }

    void agreesWithAPlainSearchOnRandomRows()
    {
        std::mt19937 random(20);
        for (int round = 0; round < 200; ++round) {
            QString picture;
            for (unsigned size = random() % 30; size > 0; --size)
                picture.append(QStringLiteral("===+-~").at(qsizetype(random() % 6)));
            const RowLayout layout = layoutOf(picture, RowFilter(random() % 3));
            for (qsizetype row = 0; row < picture.size(); ++row) {
                const bool wanted = layout.filter() == RowFilter::All ||
                                    (picture.at(row) == u'=') == (layout.filter() == RowFilter::Identical);
                QCOMPARE(layout.isShown(row), wanted);
            }
            for (qsizetype first = 0; first < layout.count(); ++first) {
                const RowRange range{first, qsizetype(random() % 4 + 1)};
                bool found = false;
                for (qsizetype index = first; index < std::min(range.end(), layout.count()); ++index)
                    found = found || picture.at(layout.rowAt(index)) == u'~';
                QCOMPARE(layout.holds(Modified, range), found);
            }
        }
    }
};

VELMORA_TEST(RowLayoutTest)
#include "row_layout_test.moc"
