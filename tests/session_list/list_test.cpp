#include "session/list/list_view.h"
#include "session/list/row_ground.h"
#include "session/theme.h"
#include "support/files.h"
#include "support/test_main.h"

#include <algorithm>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Rows that are made when they are asked for, with a column of their own.
struct ComputedRows final : RowSource {
    using RowSource::RowSource;
    [[nodiscard]] qsizetype count() const override { return 100'000; }
    [[nodiscard]] KeyedRow row(qsizetype number) const override
    {
        ++asked;
        return {QString::number(number), PairStatus(number % 4), word("l"), word("r")};
    }
    [[nodiscard]] QStringList headings() const override
    {
        return RowSource::headings() + QStringList(word("Negative"));
    }
    [[nodiscard]] QString text(qsizetype number, int column) const override
    {
        return column > Right ? QString::number(-number) : RowSource::text(number, column);
    }
    static inline qsizetype asked = 0;
};

/// The colour that most of a picture has, and how well what stands out most from it is read there.
std::pair<QRgb, double> groundOf(const QImage &picture)
{
    QHash<QRgb, int> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++colours[picture.pixel(x, y)];
    }
    const QList<QRgb> found = colours.keys();
    const QRgb ground = *std::max_element(found.begin(), found.end(),
                                          [&](QRgb one, QRgb other) { return colours[one] < colours[other]; });
    double best = 1;
    for (const QRgb colour : found)
        best = std::max(best, contrast(colour, ground));
    return {ground, best};
}

} // namespace

class ListTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksForNoMoreRowsThanAreInSight()
    {
        ListModel model(std::make_unique<ComputedRows>(word("Number")));
        ListView view(model);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        ComputedRows::asked = 0;
        view.goToRow(99'999);
        QVERIFY(!view.grab().isNull());
        QVERIFY(ComputedRows::asked > 0 && ComputedRows::asked < 5000);
    }

    void filtersAndStepsThroughRowsOfAnySource()
    {
        ListModel model(std::make_unique<ComputedRows>(word("Number")));
        QCOMPARE(model.counts(), (PairCounts{25'000, 25'000, 25'000, 25'000}));
        QCOMPARE(model.nextDifference(5, false), 3);
        QCOMPARE(model.nextDifference(-1, false), 99'999);
        QCOMPARE(model.nextDifference(99'999, true), -1);
        model.setFilter(word("-99997 CHANGED"));
        QCOMPARE(model.text({0}), word("Changed\t99997\tl\tr\t-99997\n"));
        model.setFilter({});
        model.setView(RowsView::Same);
        QCOMPARE(model.rowCount(), 25'000);
        QCOMPARE(model.find(word("5")), -1);
        QCOMPARE(model.nextDifference(-1, true), -1);
    }

    void selectedRowsKeepTheirColoursAndAreRead()
    {
        for (const bool dark : {false, true}) {
            applyTheme(dark);
            ListModel model(std::make_unique<ComputedRows>(word("Number")));
            ListView view(model);
            view.resize(700, 300);
            view.show();
            QVERIFY(QTest::qWaitForWindowExposed(&view));
            QSet<QRgb> grounds;
            for (const bool selected : {false, true}) {
                view.clearSelection();
                view.setCurrentIndex({});
                for (int row = 0; selected && row < 4; ++row)
                    view.selectionModel()->select(model.index(row, 0),
                                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
                const QImage picture = view.viewport()->grab().toImage();
                for (int row = 0; row < 4; ++row) {
                    const QRect cell = view.visualRect(model.index(row, 0)).adjusted(0, 0, 0, -2);
                    const auto [ground, best] = groundOf(picture.copy(cell));
                    grounds.insert(ground);
                    QVERIFY2(best >= 4.5, qPrintable(QStringLiteral("%1 %2").arg(row).arg(best)));
                }
            }
            QCOMPARE(grounds.size(), 8);
        }
        applyTheme(false);
    }
};

VELMORA_TEST(ListTest)
#include "list_test.moc"
