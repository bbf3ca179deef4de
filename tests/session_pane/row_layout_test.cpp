#include "session/pane/row_layout.h"
#include "support/test_main.h"

#include <random>

using namespace velmora;

namespace {

/// '=' equal, '~' modified, '+' added, '-' removed.
std::vector<TextRowState> statesOf(const QByteArray &picture)
{
    std::vector<TextRowState> states;
    for (const char sign : picture)
        states.push_back(TextRowState(QByteArray("=+-~").indexOf(sign)));
    return states;
}

RowLayout layoutOf(const QByteArray &picture, RowFilter filter = RowFilter::All, qsizetype context = 0)
{
    RowLayout layout;
    layout.setRowHeight(10);
    layout.setContext(context);
    layout.setFilter(filter);
    layout.setRows(statesOf(picture));
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
    void opensAndKeepsFoldedRows()
    {
        RowLayout layout = layoutOf("====~====~====", RowFilter::Differences, 1);
        QCOMPARE(shownRows(layout), QStringLiteral("[0+3] 3 4 5 [6+2] 8 9 10 [11+3]"));
        QVERIFY(!layout.openBand(1));
        QVERIFY(layout.openBand(4));
        QCOMPARE(shownRows(layout), QStringLiteral("[0+3] 3 4 5 6 7 8 9 10 [11+3]"));
        const std::vector<RowRange> opened = layout.opened();
        layout.setRows(statesOf("====~=====~===="));
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

    void countsMinorDifferencesWhenAsked()
    {
        const QByteArray picture = "===~====";
        RowLayout layout = layoutOf(picture);
        std::vector<TextRowState> states = statesOf(picture);
        states[1] = states[4] = TextRowState::Minor;
        layout.setRows(states);
        QCOMPARE(blocks(layout), QStringLiteral("1+1 3+2"));
        layout.setFilter(RowFilter::Differences);
        QCOMPARE(shownRows(layout), QStringLiteral("0 1 2 3 4 [5+3]"));
        layout.setFilter(RowFilter::Identical);
        QCOMPARE(shownRows(layout), QStringLiteral("0 |2 |5 6 7"));
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

    /// The plain form: the lines of all rows, one below the other.
    void scrollsAsAListOfLinesDoes()
    {
        std::mt19937 random(5);
        const auto below = [&random](qsizetype bound) { return qsizetype(random() % std::size_t(bound)); };
        for (int round = 0; round < 3000; ++round) {
            std::vector<qsizetype> sizes(std::size_t(1 + below(30)));
            RowLayout layout = layoutOf(QByteArray(qsizetype(sizes.size()), '='));
            QList<RowPlace> lines;
            for (std::size_t row = 0; row < sizes.size(); ++row) {
                sizes[row] = round % 2 ? 1 : 1 + below(6);
                for (qsizetype line = 0; line < sizes[row]; ++line)
                    lines.append({qsizetype(row), line});
            }
            if (round % 4 != 1)
                layout.setMeasure([&sizes](qsizetype row) { return sizes[std::size_t(row)]; });
            const qsizetype last = lines.size() - 1;
            const auto place = [&](qsizetype line) { return lines.at(std::clamp<qsizetype>(line, 0, last)); };
            const qsizetype top = below(lines.size());
            const qsizetype at = below(lines.size());
            const int height = 1 + int(below(400));
            const qsizetype page = layout.rowsPerPage(height);
            const qsizetype y = below(800) - 400;
            QCOMPARE(page, std::max(height / 10, 1));
            QCOMPARE(layout.maximumTop(height), place(last + 1 - page));
            QCOMPARE(layout.moved(place(top), y), place(top + y));
            QCOMPARE(layout.placeAtY(int(y), place(top)), place(top + (y + 4000) / 10 - 400));
            QCOMPARE(layout.yOf(place(at).index, place(top)), 10 * (lines.indexOf({place(at).index, 0}) - top));
            const qsizetype first = place(top).index;
            QCOMPARE(layout.inSight(place(top), height),
                     (RowRange{first, place(top + (height - 1) / 10).index - first + 1}));
            const qsizetype shown = std::clamp(top, std::max<qsizetype>(at + 1 - page, 0), at);
            QCOMPARE(layout.topToShow(place(at), place(top), height),
                     std::min(place(shown), layout.maximumTop(height)));
        }
        QCOMPARE(layoutOf({}).indexAtY(5, {0, 0}), -1);
        QCOMPARE(layoutOf({}).indexOf(0), -1);
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

    void showsFoldsAndHidesAsAPlainSearchDoes()
    {
        std::mt19937 random(20);
        for (int round = 0; round < 600; ++round) {
            QByteArray picture;
            for (unsigned size = random() % 30; size > 0; --size)
                picture += "====+-~"[random() % 7];
            const auto context = qsizetype(random() % 3);
            const RowLayout layout = layoutOf(picture, RowFilter(random() % 3), context);
            const auto isHidden = [&](qsizetype row) {
                if (layout.filter() == RowFilter::Identical)
                    return picture.at(row) != '=';
                const QByteArray near =
                    picture.mid(std::max<qsizetype>(row - context, 0), std::min(row, context) + context + 1);
                return layout.filter() == RowFilter::Differences && near.count('=') == near.size();
            };
            QStringList rows;
            QStringList runs;
            for (qsizetype row = 0, end = 0; row < picture.size(); row = end) {
                for (end = row + 1; end < picture.size() && isHidden(row) && isHidden(end);)
                    ++end;
                const bool isBand = layout.filter() == RowFilter::Differences && end - row > 1;
                const bool isShown = isBand || layout.filter() != RowFilter::Identical || !isHidden(row);
                const bool isGap = layout.filter() == RowFilter::Identical && !rows.isEmpty() && isHidden(row - 1);
                const QString number = QString::number(row);
                for (qsizetype at = row; at < end; ++at) {
                    QCOMPARE(layout.isShown(at), isShown && !isBand);
                    QCOMPARE(layout.indexOf(at), std::min<qsizetype>(rows.size(), layout.count() - 1));
                }
                if (isShown)
                    rows.append(isBand ? QStringLiteral("[%1+%2]").arg(number).arg(end - row)
                                       : (isGap ? u'|' + number : number));
            }
            QCOMPARE(shownRows(layout), rows.join(u' '));
            for (qsizetype row = 0, end = 0; row < picture.size(); row = end) {
                const bool differs = picture.at(row) != '=';
                for (end = row; end < picture.size() && (picture.at(end) != '=') == differs; ++end)
                    QCOMPARE(layout.blockOf(end), differs ? runs.size() : -1);
                if (differs)
                    runs.append(QStringLiteral("%1+%2").arg(row).arg(end - row));
            }
            QCOMPARE(blocks(layout), runs.join(u' '));
            for (qsizetype first = 0; first < layout.count(); ++first) {
                const RowRange range{first, qsizetype(random() % 4 + 1)};
                QByteArray signs;
                for (qsizetype index = first; index < std::min(range.end(), layout.count()); ++index)
                    signs += picture.at(layout.rowAt(index));
                using enum TextRowState;
                for (const auto &[state, sign] :
                     {std::pair(Added, '+'), std::pair(Removed, '-'), std::pair(Modified, '~')})
                    QCOMPARE(layout.holds(state, range), signs.contains(sign));
            }
        }
    }
};

VELMORA_TEST(RowLayoutTest)
#include "row_layout_test.moc"
