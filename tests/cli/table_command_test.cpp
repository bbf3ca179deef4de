#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonDocument>

using namespace velmora;
using namespace velmora::test;

class TableCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.emplace(); // the old one goes first
        CliFiles::write("l.csv", "id,name\r\n1,\"a\r\nb\"\r\n2,<c>\r\n2,d\r\n");
        CliFiles::write("r.csv", "id,name\n2,e\n1,\"a\nb\"\n3,\"f,\"\"g\"\n");
        CliFiles::write("l.TSV", "a,b\tc\n");
    }

    void writesEachFormat()
    {
        const CliResult summary = runCli("table l.csv r.csv --key id");
        QCOMPARE(summary.output, "Same: 1  |  Modified: 1  |  Left only: 0  |  Right only: 1  |  Total rows: 3\n");
        QCOMPARE(summary.errors, "velmora-cli: warning: l.csv: a later row has the same key as each of 1 rows that are "
                                 "left out, the first in row 3\n");
        QCOMPARE(summary.status, 1);
        QCOMPARE(
            runCli("table l.csv r.csv --key 1 --format csv").output,
            "change,side,row,id,name\nmodified,left,4,2,d\nmodified,right,2,2,e\nright only,right,4,3,\"f,\"\"g\"\n");
        QByteArray expected =
            "{'left': {'path': 'l.csv', 'encoding': 'UTF-8', 'rows': 4, 'replaced': 1},"
            "'right': {'path': 'r.csv', 'encoding': 'UTF-8', 'rows': 4, 'replaced': 0}, 'columns': ['id', 'name'],"
            "'counts': {'same': 1, 'modified': 1, 'leftOnly': 0, 'rightOnly': 1}, 'rows': ["
            "{'status': 0, 'leftRow': 2, 'rightRow': 3, 'cells': ["
            "{'status': 0, 'left': '1', 'right': '1'}, {'status': 0, 'left': 'a\\nb', 'right': 'a\\nb'}]},"
            "{'status': 1, 'leftRow': 4, 'rightRow': 2, 'cells': ["
            "{'status': 0, 'left': '2', 'right': '2'}, {'status': 1, 'left': 'd', 'right': 'e'}]},"
            "{'status': 3, 'leftRow': -1, 'rightRow': 4, 'cells': ["
            "{'status': 2, 'left': '', 'right': '3'}, {'status': 2, 'left': '', 'right': 'f,\\u0022g'}]}]}";
        expected.replace('\'', '"');
        QCOMPARE(QJsonDocument::fromJson(runCli("table l.csv r.csv --key id --format json").output),
                 QJsonDocument::fromJson(expected));
        const QByteArray page = runCli("table l.csv r.csv --format html").output;
        QVERIFY(page.contains("<td class=\"c\"><del>&lt;c&gt;</del> <ins>f,&quot;g</ins></td>"));
    }

    void goesByItsOptions()
    {
        QCOMPARE(runCli("table l.csv l.csv").status, 0);
        CliFiles::write("long.csv", "id\n1,2\n");
        QCOMPARE(runCli("table long.csv long.csv").errors,
                 "velmora-cli: warning: fields behind the last column that has a name are not compared\n");
        CliFiles::write("points.csv", "id;n\n1;2\n");
        QCOMPARE(runCli("table points.csv points.csv").errors,
                 "velmora-cli: warning: fields seem to be separated otherwise: --delimiter \";\"\n");
        QVERIFY(runCli("table long.csv points.csv --format html --ignore-case 1").output.contains("--ignore-case 1"));
        CliFiles::write("named.csv", "id,title\n");
        QCOMPARE(runCli("table l.csv named.csv").errors, "velmora-cli: warning: the columns are named differently\n");
        CliFiles::write("turned.csv", "name,id\nd,2\n\"a\nb\",1\n");
        QCOMPARE(runCli("table l.csv turned.csv --by-name --key id").status, 0);
        const char *one = "Same: 1  |  Modified: 0  |  Left only: 0  |  Right only: 0  |  Total rows: 1\n";
        QCOMPARE(runCli("table --no-header --key 2 l.TSV -", "x\tc\n").output,
                 QByteArray(one).replace("Same: 1  |  Modified: 0", "Same: 0  |  Modified: 1"));
        QCOMPARE(runCli("table --no-header --delimiter , l.TSV -", "a,\"b\tc\"").output, one);
        QCOMPARE(runCli("table --no-header --key 1 --key 2 l.TSV l.TSV").output, one);
        CliFiles::write("loose.csv", "id,name,price,day\n1,A  B,\"1,000.5\",2024-03-05\n");
        CliFiles::write("strict.csv", "id,name,price,day\n2,a b,1000,5/3/24\n");
        QCOMPARE(runCli("table loose.csv strict.csv --leave-out id --ignore-case 2 --ignore-space name "
                        "--tolerance price=0.1% --dates-dmy day")
                     .status,
                 0);
        QCOMPARE(runCli("table loose.csv strict.csv --leave-out id --ignore-case 2 --ignore-space name "
                        "--tolerance price=0.4 --dates-dmy day")
                     .status,
                 1);
    }

    void refusesWhatMakesNoSense()
    {
        const std::pair<const char *, const char *> cases[] = {
            {"table l.csv", "two paths are needed, 1 given"},
            {"table l.csv r.csv --key size", "no column \"size\""},
            {"table l.csv r.csv --key 3", "no column \"3\""},
            {"table l.csv r.csv --ignore-case 3", "no column \"3\""},
            {"table l.csv r.csv --tolerance size=1", "no column \"size\""},
            {"table l.csv r.csv --tolerance id=-1", "--tolerance: \"id=-1\" is not COLUMN=NUMBER or COLUMN=NUMBER%"},
            {"table l.csv r.csv --delimiter ,,", "--delimiter: \",,\" is not one character that can separate fields"},
            {"table l.csv r.csv --delimiter \"", "--delimiter: \"\"\" is not one character that can separate fields"},
            {"table l.csv r.csv --encoding-left X", "unknown encoding \"X\""},
        };
        for (const auto &[arguments, message] : cases) {
            const CliResult result = runCli(arguments);
            QCOMPARE(result.status, 2);
            QCOMPARE(result.errors, QByteArray("velmora-cli: ") + message + '\n');
        }
        QCOMPARE(runCli("table l.csv none").status, 2);
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(TableCommandTest)
#include "table_command_test.moc"
