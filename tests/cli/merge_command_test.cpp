#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

using namespace velmora::test;

namespace {

QByteArray utf16(const char *text)
{
    const QString units = QString::fromUtf8(text);
    return QByteArray("\xFF\xFE") +
           QByteArray(reinterpret_cast<const char *>(units.utf16()), qsizetype(units.size()) * 2);
}

void writeTexts(const QByteArray &base, const QByteArray &left, const QByteArray &right)
{
    CliFiles::write("base", base);
    CliFiles::write("left", left);
    CliFiles::write("right", right);
}

} // namespace

class MergeCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void results()
    {
        struct Case {
            const char *base;
            const char *left;
            const char *right;
            const char *options;
            const char *result;
            int status;
        };
        const std::array cases{
            Case{"a\nb\nc\n", "A\nb\nc\n", "a\nb\nC\n", "", "A\nb\nC\n", 0},
            // Bytes that are no UTF-8, mixed line ends, no end of the last line.
            Case{"a\xE9\nb\r\nc", "a\xE9\nb\r\nc", "a\xE9\nb\r\nc\nd", "", "a\xE9\nb\r\nc\nd", 0},
            Case{"a\nb\nc\n", "a\nX\ns\nc\n", "a\nY\ns\nc\n", "",
                 "a\n<<<<<<< left\nX\n=======\nY\n>>>>>>> right\ns\nc\n", 1},
            Case{"a\nb\nc\n", "a\nX\ns\nc\n", "a\nY\ns\nc\n", "--style diff3",
                 "a\n<<<<<<< left\nX\ns\n||||||| base\nb\n=======\nY\ns\n>>>>>>> right\nc\n", 1},
            Case{"a\nb\nc\n", "a\nX\ns\nc\n", "a\nY\ns\nc\n",
                 "--style zdiff3 --label-left mine --label-right theirs --label-base= --marker-size 9",
                 "a\n<<<<<<<<< mine\nX\n|||||||||\nb\n=========\nY\n>>>>>>>>> theirs\ns\nc\n", 1},
            // Two conflicts with little between them are one where there is no base to be shown.
            Case{"a\nb\nc\n", "1\nb\n2\n", "3\nb\n4\n", "", "<<<<<<< left\n1\nb\n2\n=======\n3\nb\n4\n>>>>>>> right\n",
                 1},
            Case{"a\nb\nc\n", "1\nb\n2\n", "3\nb\n4\n", "--style=zdiff3 --label-base=B",
                 "<<<<<<< left\n1\n||||||| B\na\n=======\n3\n>>>>>>> right\nb\n"
                 "<<<<<<< left\n2\n||||||| B\nc\n=======\n4\n>>>>>>> right\n",
                 2},
            // Markers stand on lines of their own, which end as the others do.
            Case{"a\r\nb", "a\r\nX", "a\r\nY", "", "a\r\n<<<<<<< left\r\nX\r\n=======\r\nY\r\n>>>>>>> right\r\n", 1},
            Case{"a\nb\nc\n", "A\nb\nc\n", "a\nB\nc\n", "--line-by-line", "A\nB\nc\n", 0},
            Case{"a\nb\nc\n", "A\nb\nc\n", "a\nB\nc\n", "", "<<<<<<< left\nA\nb\n=======\na\nB\n>>>>>>> right\nc\n", 1},
        };
        const CliFiles files;
        for (const Case &one : cases) {
            writeTexts(one.base, one.left, one.right);
            const CliResult run = runCli(QByteArray("merge base left right ") + one.options);
            QCOMPARE(run.errors, QByteArray());
            QCOMPARE(run.output, QByteArray(one.result));
            QCOMPARE(run.status, one.status);
        }
    }

    /// As a merge driver: the result replaces one of the texts.
    void writesOverAnInput()
    {
        const CliFiles files;
        writeTexts("a\n.\nb\n", "A\n.\nb\n", "a\n.\nB\n");
        QCOMPARE(runCli("merge --output left base left right").status, 0);
        QCOMPARE(CliFiles::read("left"), QByteArray("A\n.\nB\n"));
    }

    void wideTextsAreDecoded()
    {
        const CliFiles files;
        writeTexts(utf16("α\n.\nβ\n"), utf16("α 1\n.\nβ\n"), utf16("α\n.\nβ 2\n"));
        const CliResult run = runCli("merge base left right");
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.output, utf16("α 1\n.\nβ 2\n"));
        // Saved by the right as another encoding, which the merge then has.
        CliFiles::write("right", "α\n.\nβ 2\n");
        QCOMPARE(runCli("merge base left right").output, QByteArray("α 1\n.\nβ 2\n"));
    }

    void statuses()
    {
        const CliFiles files;
        QByteArray base;
        QByteArray left;
        QByteArray right;
        for (int block = 0; block < 200; ++block) {
            const QByteArray number = QByteArray::number(block);
            base += number + "\nx\n";
            left += number + "\nleft\n";
            right += number + "\nright\n";
        }
        writeTexts(base, left, right);
        QCOMPARE(runCli("merge --style diff3 base left right").status, 127);
        CliFiles::write("binary", QByteArray("a\0b\n", 4));
        for (const char *wrong :
             {"base left", "base left missing", "base left binary", "- left -", "--marker-size 0 base left right",
              "--wrong base left right", "--output missing/file base left right"}) {
            const CliResult run = runCli(QByteArray("merge ") + wrong);
            QCOMPARE(run.status, 255);
            QCOMPARE(run.errors.count('\n'), 1);
            QCOMPARE(run.output, QByteArray());
        }
        QCOMPARE(runCli("merge --text base base binary").output, QByteArray("a\0b\n", 4));
        QCOMPARE(runCli("merge base - base", left).output, left);
    }

    void json()
    {
        const CliFiles files;
        writeTexts("a\nb\nc\nd\n", "a\nX\nc\nnew\nd\n", "a\nY\nc\nd\n");
        const CliResult run = runCli("merge --format json base left right");
        QCOMPARE(run.status, 1);
        const QJsonObject object = QJsonDocument::fromJson(run.output).object();
        QCOMPARE(object[QLatin1String("conflicts")].toInt(), 1);
        QByteArray chunks;
        for (const QJsonValue &chunk : object[QLatin1String("chunks")].toArray()) {
            chunks += chunk[QLatin1String("kind")].toString().toLatin1();
            for (const char *text : {"base", "left", "right"}) {
                const QJsonValue range = chunk[QLatin1String(text)];
                chunks += ' ' + QByteArray::number(range[QLatin1String("line")].toInt()) + '+' +
                          QByteArray::number(range[QLatin1String("lines")].toInt());
            }
            chunks += '\n';
        }
        QCOMPARE(chunks, QByteArray("unchanged 1+1 1+1 1+1\nconflict 2+1 2+1 2+1\nunchanged 3+1 3+1 3+1\n"
                                    "left 4+0 4+1 4+0\nunchanged 4+1 5+1 4+1\n"));
    }
};

VELMORA_TEST(MergeCommandTest)

#include "merge_command_test.moc"
