#include "filetypes/table/engine/cell_cursor.h"
#include "filetypes/table/engine/date_form.h"
#include "filetypes/table/engine/number_form.h"
#include "support/test_main.h"

#include <QRandomGenerator>
#include <QTest>

using namespace velmora;

namespace {

TableText cut(const QString &text, QChar delimiter = u',')
{
    return {TextLines::split(text.toUtf8()), delimiter};
}

ParsedTable fieldsOf(const TableText &table)
{
    ParsedTable rows;
    for (qint32 row = 0; row < table.rowCount(); ++row) {
        rows.append(QStringList());
        std::string buffer;
        for (FieldCursor cursor = table.fields(row); cursor.next();)
            rows.last().append(QString::fromStdString(std::string(fieldValue(cursor.field(), buffer))));
    }
    return rows;
}

TableDiffResult aligned(const QString &left, const QString &right, qint32 key, bool hasHeader, QChar delimiter = u',')
{
    Progress progress;
    return withCells(alignTables(cut(left, delimiter), cut(right, delimiter), {hasHeader, false, {key}}, {}, progress));
}

QString dump(const ParsedTable &table)
{
    QString text;
    for (const QStringList &row : table)
        text += u'[' + row.join(QStringLiteral("][")) + QStringLiteral("]/");
    return text;
}

/// Rows as "status left right: cell cell", a cell as its status and both texts.
QString dump(const TableDiffResult &result)
{
    QStringList lines{result.headers.join(u'|')};
    for (const TableRowDiff &row : result.rows) {
        QString line = QStringLiteral("%1 %2 %3:").arg(qint32(row.status)).arg(row.leftRow).arg(row.rightRow);
        for (const TableCellDiff &cell : row.cells)
            line += QStringLiteral(" %1%2/%3").arg(qint32(cell.status)).arg(cell.left, cell.right);
        lines.append(line);
    }
    lines.append(QStringLiteral("%1 %2 %3 %4")
                     .arg(result.sameCount)
                     .arg(result.modifiedCount)
                     .arg(result.leftOnlyCount)
                     .arg(result.rightOnlyCount));
    return lines.join(u'\n');
}

QString randomText(QRandomGenerator &random, const QStringList &pieces, int length)
{
    QString text;
    for (int k = random.bounded(length + 1); k > 0; --k)
        text += pieces[random.bounded(int(pieces.size()))];
    return text;
}

} // namespace

class TableEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("table");
        const auto row = [](const char *name, const char *text, const char *table) {
            QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(table);
        };
        row("nothing", "", "");
        row("last line unended", "a,b\nc", "[a][b]/[c]/");
        row("empty lines", "\n\na\n", "[]/[]/[a]/");
        row("trailing delimiter", "a,", "[a][]/");
        row("quotes and a delimiter", "\"x,\"\"y\"\"\"", "[x,\"y\"]/");
        row("quoted line break", "\"a\r\nb\",c\r\n", "[a\r\nb][c]/");
        row("quote within a field", "a\"b,c\"d,e", "[ab,cd][e]/");
        row("never closed", "a,\"b\nc,d\n", "[a][b\nc,d\n]/");
        row("returns dropped", "a\rb\r\r\nc\r", "[ab]/[c]/");
        row("nothing behind the last feed", "a\n\"\"\r", "[a]/");
        row("only a delimiter behind it", "a\n,", "[a]/[][]/");
    }

    void parses()
    {
        QFETCH(QString, text);
        QFETCH(QString, table);
        QCOMPARE(dump(parseDelimitedText(text, u',')), table);
        QCOMPARE(dump(fieldsOf(cut(text))), table);
    }

    void compares_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("hasHeader");
        QTest::addColumn<QString>("rows");
        const auto row = [](const char *name, const char *left, const char *right, int key, bool hasHeader,
                            const char *rows) { QTest::newRow(name) << left << right << key << hasHeader << rows; };
        row("both empty", "", "", -1, true, "\n0 0 0 0");
        row("one cell", "a,b\n1,2", "a,b\n1,3", -1, true, "a|b\n1 1 1: 01/1 12/3\n0 1 0 0");
        row("without header", "1,2,3", "1,2,3,4,5", -1, false,
            "Col1|Col2|Col3|Col4|Col5\n1 0 0: 01/1 02/2 03/3 1/4 1/5\n0 1 0 0");
        row("headers joined, cells by position", "a,b,a\n1,2,3", "b,c,c\n1,2,3", -1, true,
            "a|b|a|c\n0 1 1: 01/1 02/2 03/3 0/\n1 0 0 0");
        row("headers of the right side alone", "", "b,b\n1,2", 0, true, "b|b\n3 -1 1: 2/1 2/2\n0 0 0 1");
        row("right keys come last", "k,v\nb,1\na,2", "k,v\nx,9\na,2", 0, true,
            "k|v\n2 1 -1: 3b/ 31/\n0 2 2: 0a/a 02/2\n3 -1 1: 2/x 2/9\n1 0 1 1");
        row("the last of equal keys", "k,v\na,1\nb,2\na,3", "k,v\na,3", 0, true,
            "k|v\n0 3 1: 0a/a 03/3\n2 2 -1: 3b/ 32/\n1 0 1 0");
        row("short rows have an empty key", "k,v\n\n1,2", "k,v\n1", 1, true,
            "k|v\n1 1 1: 1/1 0/\n2 2 -1: 31/ 32/\n0 1 1 0");
        row("key out of range", "a\n1", "a\n1", 1, true, "a\n0 1 1: 01/1\n1 0 0 0");
        row("same cells but no anchor", "h,i\na,b", "h,i\na,b,", -1, true, "h|i\n1 1 1: 0a/a 0b/b\n0 1 0 0");
        row("quoting alone is no difference", "h,i\n\"a\",b\nc,\"d,e\"", "h,i\na,\"b\"\r\nc,\"d,e\"", -1, true,
            "h|i\n0 1 1: 0a/a 0b/b\n0 2 2: 0c/c 0d,e/d,e\n2 0 0 0");
        row("pairs before an anchor", "1\n2\nx", "3\nx\n4\n5", -1, false,
            "Col1\n1 0 0: 11/3\n2 1 -1: 32/\n0 2 1: 0x/x\n3 -1 2: 2/4\n3 -1 3: 2/5\n1 1 1 2");
    }

    void compares()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        QFETCH(int, key);
        QFETCH(bool, hasHeader);
        QFETCH(QString, rows);
        QCOMPARE(dump(compareTables(parseDelimitedText(left, u','), parseDelimitedText(right, u','), key, hasHeader)),
                 rows);
        QCOMPARE(dump(aligned(left, right, key, hasHeader)), rows);
    }

    /// The form that leaves fields where they are gives what the plain form gives.
    void bothFormsAgree()
    {
        QRandomGenerator random(20);
        const QStringList pieces{QStringLiteral("a"),     QStringLiteral("b"),     QStringLiteral("\n"),
                                 QStringLiteral("\n"),    QStringLiteral("\r\n"),  QString::fromUtf8("é"),
                                 QStringLiteral("\x1f"),  QStringLiteral("\""),    QStringLiteral("\"\""),
                                 QStringLiteral("\r"),    QStringLiteral("\"a\""), QStringLiteral("\"a,\""),
                                 QString::fromUtf8("，"), QStringLiteral(",")};
        for (int round = 0; round < 6000; ++round) {
            const QChar delimiter = round % 3 == 0 ? QChar(0xFF0C) : QChar(u',');
            // Fewer kinds make more rows equal, and now and then there are enough for matching by blocks.
            const QStringList some = round % 4 < 2 ? pieces : pieces.mid(0, 5) + pieces.mid(12);
            const int length = round % 300 == 0 ? 6000 : 24;
            const QString left = randomText(random, some, length);
            const QString right = randomText(random, some, length);
            const qint32 key = random.bounded(4) - 1;
            const bool hasHeader = random.bounded(2) == 0;
            QCOMPARE(fieldsOf(cut(left, delimiter)), parseDelimitedText(left, delimiter));
            QCOMPARE(dump(aligned(left, right, key, hasHeader, delimiter)),
                     dump(compareTables(parseDelimitedText(left, delimiter), parseDelimitedText(right, delimiter), key,
                                        hasHeader)));
        }
    }

    /// Columns that stand elsewhere, paired by name, give what the same columns at their place give.
    void pairsColumnsByName()
    {
        QRandomGenerator random(7);
        const QStringList values{QStringLiteral("a"), QStringLiteral("b"), QString(), QStringLiteral("\"c,\"")};
        for (int round = 0; round < 800; ++round) {
            const int first = round % 3;
            QString left = QStringLiteral("x,y,z\n");
            QString right = left;
            QString turned = (QStringLiteral("x,y,z,x,y").mid(2 * first, 5)) + u'\n';
            for (int row = random.bounded(8); row > 0; --row) {
                QStringList fields[2];
                for (QStringList &side : fields) {
                    for (int column = 0; column < 3; ++column)
                        side.append(values[random.bounded(int(values.size()))]);
                }
                left += fields[0].join(u',') + u'\n';
                right += fields[1].join(u',') + u'\n';
                turned += (fields[1] + fields[1]).mid(first, 3).join(u',') + u'\n';
            }
            const qint32 key = random.bounded(4) - 1;
            Progress progress;
            const TableAlignment byName = alignTables(cut(left), cut(turned), {true, true, {key}}, {}, progress);
            QCOMPARE(dump(withCells(byName)), dump(aligned(left, right, key, true)));
        }
    }

    void keepsColumnsThatOneSideHas()
    {
        Progress progress;
        const TableAlignment result =
            alignTables(cut(QStringLiteral("a,k,a\n1,2,3,4")), cut(QStringLiteral("c,a,k,k\n9,1,2,8")),
                        {true, true, {1}}, {}, progress);
        QCOMPARE(dump(withCells(result)), QStringLiteral("a|k|a|c|k\n1 1 1: 01/1 02/2 13/ 1/9 1/8\n0 1 0 0"));
    }

    void tellsWhatEqualKeysReplaced()
    {
        Progress progress;
        const TableAlignment result = alignTables(cut(QStringLiteral("k\na\nb\na\nb\na")), cut(QStringLiteral("k\na")),
                                                  {true, false, {0}}, {}, progress);
        QCOMPARE(result.replaced.left, (std::vector<ReplacedRow>{{1, 5}, {2, 4}, {3, 5}}));
        QVERIFY(result.replaced.right.empty());
    }

    void severalKeysDoNotRunTogether()
    {
        Progress progress;
        const TableAlignment result =
            alignTables(cut(QStringLiteral("a,b\n1,23\n12,3\n1,2")), cut(QStringLiteral("a,b\n12,3\n1,2\n,1")),
                        {true, false, {0, 1}}, {}, progress);
        QCOMPARE(
            dump(withCells(result)),
            QStringLiteral("a|b\n2 1 -1: 31/ 323/\n0 2 1: 012/12 03/3\n0 3 2: 01/1 02/2\n3 -1 3: 2/ 2/1\n2 0 1 1"));
    }

    void readsNumbersAndDates()
    {
        const std::pair<const char *, const char *> numbers[] = {
            {"12", "12"},
            {" +012.500 ", "125e-1"},
            {"-0.0", "0"},
            {"1,234", "1234"},
            {"1.234", "1234e-3"},
            {"0,125", "125e-3"},
            {"1.234,5", "12345e-1"},
            {"1,234,567.5", "12345675e-1"},
            {"1 234", "1234"},
            {"1'234'567", "1234567"},
            {"1,2345", "12345e-4"},
            {"1.5E3", "15e2"},
            {"\u22125", "-5"},
            {".5", "5e-1"},
            {"12345678901234567891", "12345678901234567891"},
            {"1,23,456", ""},
            {"1 2", ""},
            {"1e", ""},
            {"", ""},
            {"-", ""},
            {"1.2.3", ""},
            {"0x10", ""},
            {"nan", ""},
            {"1-2", ""},
        };
        for (const auto &[text, form] : numbers)
            QVERIFY2(numberForm(text).value_or("") == form, text);
        const std::pair<const char *, const char *> dates[] = {
            {"2024-03-05", "2024-03-05T00:00:00Z"},
            {"20240305", "2024-03-05T00:00:00Z"},
            {"5.3.24", "2024-03-05T00:00:00Z"},
            {"05/03/2024", "2024-03-05T00:00:00Z"},
            {"12/31/1999", "1999-12-31T00:00:00Z"},
            {"5 March 2024", "2024-03-05T00:00:00Z"},
            {"Mar 5, 2024", "2024-03-05T00:00:00Z"},
            {"05-mar-70", "1970-03-05T00:00:00Z"},
            {"2024年3月5日", "2024-03-05T00:00:00Z"},
            {"2024-03-05T23:30:15.250-01:00", "2024-03-06T00:30:15.25Z"},
            {"3/5/2024 12:05 am", "2024-05-03T00:05:00Z"},
            {"2024-02-30", ""},
            {"2024-03-05 24:00", ""},
            {"2024-03-05 12:00 x", ""},
            {"5/3", ""},
            {"2024-03/05", ""},
            {"", ""},
        };
        for (const auto &[text, form] : dates)
            QVERIFY2(dateForm(text, DateOrder::DayFirst).value_or("") == form, text);
        QCOMPARE(dateForm("05/03/2024", DateOrder::MonthFirst).value(), std::string("2024-05-03T00:00:00Z"));
    }

    void tellsWhatCountsAsSame()
    {
        const ColumnRule loose{.ignoresCase = true, .ignoresSpace = true};
        const ColumnRule tenth{.meaning = ColumnRule::Meaning::Number, .tolerance = 0.1};
        const ColumnRule percent{
            .meaning = ColumnRule::Meaning::Number, .bound = ColumnRule::Bound::Relative, .tolerance = 0.01};
        const ColumnRule whole{.meaning = ColumnRule::Meaning::Number};
        QVERIFY(countAsSame(" Ä  b", "ä\u00a0B\n", loose) && !countAsSame("a b", "ab", loose));
        QVERIFY(countAsSame("1.2", "1.3", tenth) && countAsSame("-1,2", "-1.3", tenth));
        QVERIFY(!countAsSame("1.2", "1.31", tenth) && !countAsSame("1.2", "1.3 m", tenth));
        QVERIFY(countAsSame("-200", "-202", percent) && !countAsSame("200", "203", percent));
        QVERIFY(!countAsSame("0", "0.001", percent) && !countAsSame("1", "-1", percent));
        QVERIFY(countAsSame("1e400", "10e399", tenth) && !countAsSame("1e400", "2e400", tenth));
        // More digits than a double has.
        QVERIFY(!countAsSame("12345678901234567891", "12345678901234567890", whole));
    }

    /// By any rules and keys, also for numbers that count as the same and are lined up as different ones (1.18 and
    /// 1.22), the form that leaves fields where they are gives what the plain form gives.
    void bothFormsAgreeOnRules()
    {
        QRandomGenerator random(5);
        const QStringList pieces{QStringLiteral("a"),          QStringLiteral("A "),       QStringLiteral("\n"),
                                 QStringLiteral("\n"),         QStringLiteral(","),        QStringLiteral(","),
                                 QStringLiteral("1"),          QStringLiteral("\"1,0\""),  QStringLiteral("1.05"),
                                 QStringLiteral("\n1.18\n"),   QStringLiteral("\n1.22\n"), QStringLiteral("5.3.24"),
                                 QStringLiteral("2024-03-05"), QStringLiteral("3/5/24"),   QStringLiteral("\x1f")};
        for (int round = 0; round < 4000; ++round) {
            const int length = round % 400 == 0 ? 5000 : 24;
            const QString left = randomText(random, pieces, length);
            const QString right = randomText(random, pieces, length);
            QList<ColumnRule> rules;
            for (int column = random.bounded(4); column > 0; --column)
                rules.append({.isLeftOut = random.bounded(4) == 0,
                              .ignoresCase = random.bounded(2) == 0,
                              .ignoresSpace = random.bounded(2) == 0,
                              .meaning = ColumnRule::Meaning(random.bounded(4)),
                              .bound = ColumnRule::Bound(random.bounded(2)),
                              .tolerance = random.bounded(3) * 0.05});
            QList<qint32> keys;
            for (int key = random.bounded(3); key > 0; --key)
                keys.append(random.bounded(4) - 1);
            const bool hasHeader = random.bounded(2) == 0;
            Progress progress;
            const TableDiffResult fast =
                withCells(alignTables(cut(left), cut(right), {hasHeader, false, keys, rules}, {}, progress));
            QCOMPARE(dump(fast), dump(compareTables(parseDelimitedText(left, u','), parseDelimitedText(right, u','),
                                                    keys, hasHeader, rules)));
        }
    }

    /// Rows that count as the same are paired with each other also where others stand between them.
    void alignsByRules()
    {
        Progress progress;
        const TableAlignment result =
            alignTables(cut(QStringLiteral("n,t\n1.0,a\n2.0,b\n3.0,c\n1.18,d")),
                        cut(QStringLiteral("n,t\n9,x\n1.01,A\n2.01,B\n3.2,C\n1.22,d")),
                        {.rules = {{.meaning = ColumnRule::Meaning::Number, .tolerance = 0.05}, {.ignoresCase = true}}},
                        {}, progress);
        QCOMPARE(dump(withCells(result)),
                 QStringLiteral("n|t\n3 -1 1: 2/9 2/x\n0 1 2: 01.0/1.01 0a/A\n0 2 3: 02.0/2.01 0b/B\n"
                                "1 3 4: 13.0/3.2 0c/C\n0 4 5: 01.18/1.22 0d/d\n3 1 0 1"));
    }
};

VELMORA_TEST(TableEngineTest)
#include "table_engine_test.moc"
