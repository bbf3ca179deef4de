#include "cli_fixture.h"
#include "support/test_main.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

namespace {

QString word(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class FolderCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files = std::make_unique<CliFiles>();
        QVERIFY(QDir().mkpath(path("l/sub/deep")) && QDir().mkpath(path("r/sub")) && QDir().mkpath(path("same")));
        write("l/both.txt", "left");
        write("r/both.txt", "rite");
        QFile both(path("r/both.txt"));
        QVERIFY(both.open(QIODevice::ReadWrite));
        QVERIFY(both.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime));
        write("l/sub/equal", "12345");
        write("r/sub/equal", "12345");
        write("l/sub/deep/only.o", "1");
        write("r/neü.h", "12");
    }

    void writesEachFormat()
    {
        const CliResult summary = compare({});
        QCOMPARE(summary.errors, QByteArray());
        QCOMPARE(summary.output, "Total: 6 items | Same: 1 | Different: 2 | Left only: 2 | Right only: 1\n");
        QCOMPARE(summary.status, 1);
        QCOMPARE(compare({"--format", "list"}).output,
                 "! both.txt\n> neü.h\n! sub/\n< sub/deep/\n< sub/deep/only.o\n= sub/equal\n");
        const CliResult html = compare({"--format=html", "--output", qPrintable(path("report.html"))});
        QCOMPARE(html.status, 1);
        QCOMPARE(html.output, QByteArray());
        QVERIFY(m_files->read(word("report.html")).contains("<td>📄 neü.h</td><td><span class=\"tag tag-rightonly\">"));
        QCOMPARE(runCli({word("folder"), path("l"), path("l")}).status, 0);
    }

    void writesEveryFieldAsJson()
    {
        const QJsonObject json = QJsonDocument::fromJson(compare({"--format", "json"}).output).object();
        QCOMPARE(json.value(word("left")).toString(), path("l"));
        QCOMPARE(json.value(word("problems")).toArray(), QJsonArray());
        const QJsonArray items = json.value(word("items")).toArray();
        QCOMPARE(items.size(), 6);
        const QJsonObject item = items.at(4).toObject();
        QCOMPARE(item.value(word("name")).toString(), word("sub/deep/only.o"));
        QCOMPARE(item.value(word("leftPath")).toString(), path("l/sub/deep/only.o"));
        QCOMPARE(item.value(word("rightPath")).toString(), QString());
        QCOMPARE(item.value(word("status")).toInt(), 1);
        QCOMPARE(item.value(word("leftSize")).toInt(), 1);
        QCOMPARE(item.value(word("rightSize")).toInt(), 0);
        QCOMPARE(QDateTime::fromString(item.value(word("leftTime")).toString(), Qt::ISODateWithMs),
                 QFileInfo(path("l/sub/deep/only.o")).lastModified());
        QVERIFY(item.value(word("rightTime")).isNull());
        QCOMPARE(item.value(word("isDir")), QJsonValue(false));
        QCOMPARE(item.size(), 9);
    }

    void obeysItsOptions_data()
    {
        QTest::addColumn<QByteArray>("arguments");
        QTest::addColumn<QByteArray>("list");
        const auto row = [](const char *arguments, const char *list) {
            QTest::newRow(arguments) << QByteArray(arguments) << QByteArray(list);
        };
        row("--level", "! both.txt\n> neü.h\n= sub/\n");
        row("--structure", "= both.txt\n> neü.h\n= sub/\n< sub/deep/\n< sub/deep/only.o\n= sub/equal\n");
        row("--structure --level", "= both.txt\n> neü.h\n= sub/\n");
        row("--level --tolerance 3600", "= both.txt\n> neü.h\n= sub/\n");
        row("--level --tolerance 3600 --method crc", "! both.txt\n> neü.h\n= sub/\n");
        row("--level --method binary --align b*=n*", "! both.txt\n= sub/\n");
        row("--exclude *.O;BOTH.*", "> neü.h\n! sub/\n< sub/deep/\n= sub/equal\n");
        row("--exclude-folders deep --exclude both* --exclude ne*", "= sub/\n= sub/equal\n");
        row("--include *.h --include equal", "> neü.h\n! sub/\n< sub/deep/\n= sub/equal\n");
        row("--include-folders nothing", "! both.txt\n> neü.h\n");
    }

    void obeysItsOptions()
    {
        QFETCH(QByteArray, arguments);
        QFETCH(QByteArray, list);
        const CliResult result = compare(arguments.split(' ') + QByteArrayList{"--format", "list"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, list);
        const bool same = !list.contains("! ") && !list.contains("< ") && !list.contains("> ");
        QCOMPARE(result.status, same ? 0 : 1);
    }

    void refusesWhatMakesNoSense_data()
    {
        QTest::addColumn<QByteArray>("arguments");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char *arguments, const char *error) {
            QTest::newRow(arguments) << QByteArray(arguments) << QByteArray("velmora-cli: ") + error + '\n';
        };
        row("l", "two paths are needed, 1 given");
        row("l r --method md5", "unknown method \"md5\"");
        row("l r --tolerance -1", "\"-1\" is no number of seconds");
        row("l r --align a*", "\"a*\" is no pair of masks, LEFT=RIGHT");
        row("l r --format patch", "unknown format \"patch\"");
        row("l /no/folder", "/no/folder: there is no such folder");
#ifdef Q_OS_UNIX
        row("/dev/null l", "/dev/null: is not a folder");
#endif
    }

    void refusesWhatMakesNoSense()
    {
        QFETCH(QByteArray, arguments);
        QStringList list{word("folder")};
        for (const QByteArray &argument : arguments.split(' '))
            list.append(argument.size() == 1 ? path(argument.constData()) : word(argument.constData()));
        const CliResult result = runCli(list);
        QTEST(result.errors, "error");
        QCOMPARE(result.status, 2);
        QVERIFY(result.output.isEmpty());
    }

#ifdef Q_OS_UNIX
    void tellsWhatItDidNotLookAt()
    {
        QVERIFY(QFile::link(path("same"), path("same/round")));
        const CliResult cycle = runCli({word("folder"), path("same"), path("same")});
        QCOMPARE(cycle.errors.count("warning: " + path("same/round").toUtf8()), 2);
        QCOMPARE(cycle.status, 0);
    }

    void writesNamesAsTheyAre()
    {
        const QByteArray name = "\xE9\"\n\xFF";
        const QByteArray before = path("r/neü.h").toUtf8();
        const QByteArray after = path("r/").toUtf8() + name;
        QCOMPARE(std::rename(before.constData(), after.constData()), 0);
        QVERIFY(compare({"--format", "list", "--level"}).output.contains("\n> " + name + '\n'));
        QVERIFY(compare({"--format", "json"}).output.contains("{\"name\":\"\\udce9\\\"\\u000a\\udcff\","));
        QCOMPARE(std::remove(after.constData()), 0);
    }
#endif

private:
    [[nodiscard]] QString path(const char *name) const
    {
        return m_files->path(word(name));
    }
    void write(const char *name, const char *bytes) const
    {
        m_files->write(word(name), bytes);
    }

    [[nodiscard]] CliResult compare(const QByteArrayList &arguments) const
    {
        QStringList list{word("folder")};
        for (const QByteArray &argument : arguments)
            list.append(QString::fromUtf8(argument));
        return runCli(list + QStringList{path("l"), path("r")});
    }

    std::unique_ptr<CliFiles> m_files;
};

VELMORA_TEST(FolderCommandTest)
#include "folder_command_test.moc"
