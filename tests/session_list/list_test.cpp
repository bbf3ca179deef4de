#include "session/list/list_view.h"
#include "support/files.h"
#include "support/test_main.h"

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
};

VELMORA_TEST(ListTest)
#include "list_test.moc"
