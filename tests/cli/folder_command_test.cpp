#include "cli_fixture.h"
#include "support/test_main.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

class FolderCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.emplace(); // the old one goes first
        QVERIFY(QDir().mkpath(word("l/sub/deep")) && QDir().mkpath(word("r/sub")));
        CliFiles::write("l/both.txt", "left");
        CliFiles::write("r/both.txt", "rite");
        CliFiles::write("l/sub/equal", "12345");
        CliFiles::write("r/sub/equal", "12345");
        for (const char *name : {"r/both.txt", "r/sub/equal"}) {
            QFile later(word(name));
            QVERIFY(later.open(QIODevice::ReadWrite));
            QVERIFY(later.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime));
        }
        CliFiles::write("l/sub/deep/only.o", "1");
        CliFiles::write("r/neü.h", "12");
    }

    void writesEachFormat()
    {
        const CliResult summary = runCli("folder l r");
        QCOMPARE(summary.errors, QByteArray());
        QCOMPARE(summary.output, "Total: 6 items | Same: 1 | Different: 2 | Left only: 2 | Right only: 1\n");
        QCOMPARE(summary.status, 1);
        QCOMPARE(runCli("folder l r --format list").output,
                 "! both.txt\n> neü.h\n! sub/\n< sub/deep/\n< sub/deep/only.o\n= sub/equal\n");
        const CliResult html = runCli("folder l r --format=html --output report.html");
        QCOMPARE(html.status, 1);
        QCOMPARE(html.output, QByteArray());
        QVERIFY(CliFiles::read("report.html").contains("<td>📄 neü.h</td><td><span class=\"tag tag-rightonly\">"));
        const CliResult itself = runCli("folder l l");
        QCOMPARE(itself.status, 0);
        QCOMPARE(itself.output, "Total: 5 items | Same: 5 | Different: 0 | Left only: 0 | Right only: 0 | "
                                "Same size and time, not read: 3\n");
    }

    void writesEveryFieldAsJson()
    {
        const QJsonObject json = QJsonDocument::fromJson(runCli("folder l r --format json").output).object();
        QCOMPARE(json.value(word("left")).toString(), path("l"));
        QCOMPARE(json.value(word("unread")).toInt(-1), 0);
        QCOMPARE(json.value(word("problems")).toArray(), QJsonArray());
        const QJsonArray items = json.value(word("items")).toArray();
        QCOMPARE(items.size(), 6);
        QJsonObject item = items.at(4).toObject();
        QCOMPARE(QDateTime::fromString(item.take(word("leftTime")).toString(), Qt::ISODateWithMs),
                 QFileInfo(path("l/sub/deep/only.o")).lastModified());
        const QJsonObject expected{{word("name"), word("sub/deep/only.o")},
                                   {word("leftPath"), path("l/sub/deep/only.o")},
                                   {word("rightPath"), QString()},
                                   {word("status"), 1},
                                   {word("leftSize"), 1},
                                   {word("rightSize"), 0},
                                   {word("rightTime"), QJsonValue()},
                                   {word("isDir"), false},
                                   {word("isUnread"), false}};
        QCOMPARE(item, expected);
    }

    void obeysItsOptions()
    {
        const QList<std::pair<QByteArray, QByteArray>> cases{
            {"--level", "! both.txt\n> neü.h\n= sub/\n"},
            {"--structure", "= both.txt\n> neü.h\n= sub/\n< sub/deep/\n< sub/deep/only.o\n= sub/equal\n"},
            {"--structure --exclude *.none",
             "= both.txt\n> neü.h\n= sub/\n< sub/deep/\n< sub/deep/only.o\n= sub/equal\n"},
            {"--structure --level", "= both.txt\n> neü.h\n= sub/\n"},
            {"--level --tolerance 3600", "~ both.txt\n> neü.h\n= sub/\n"},
            {"--level --tolerance 3600 --read", "! both.txt\n> neü.h\n= sub/\n"},
            {"--level --tolerance 3600 --method crc", "! both.txt\n> neü.h\n= sub/\n"},
            {"--level --method binary --align b*=n*", "! both.txt\n= sub/\n"},
            {"--exclude *.O;BOTH.*", "> neü.h\n! sub/\n< sub/deep/\n= sub/equal\n"},
            {"--exclude-folders deep --exclude both* --exclude ne*", "= sub/\n= sub/equal\n"},
            {"--include *.h --include equal", "> neü.h\n! sub/\n< sub/deep/\n= sub/equal\n"},
            {"--include-folders nothing", "! both.txt\n> neü.h\n"},
        };
        for (const auto &[arguments, list] : cases) {
            const CliResult result = runCli("folder l r --format list " + arguments);
            QCOMPARE(result.errors, QByteArray());
            QCOMPARE(arguments + '\n' + result.output, arguments + '\n' + list);
            const bool same = !list.contains("! ") && !list.contains("< ") && !list.contains("> ");
            QCOMPARE(result.status, same ? 0 : 1);
        }
    }

#ifdef Q_OS_UNIX
    void tellsWhatItDidNotLookAt()
    {
        QVERIFY(QDir().mkpath(word("same")) && QFile::link(path("same"), path("same/round")));
        const CliResult cycle = runCli("folder same same");
        QCOMPARE(cycle.errors.count("warning: " + path("same/round").toUtf8()), 2);
        QCOMPARE(cycle.status, 0);
    }

    void namesThatBreakLinesAreMadeVisible()
    {
        const QByteArray name = "\xE9\"\n\xFF";
        const QByteArray before = path("r/neü.h").toUtf8();
        const QByteArray after = path("r/").toUtf8() + name;
        QCOMPARE(std::rename(before.constData(), after.constData()), 0);
        QVERIFY(runCli("folder l r --format list --level").output.contains("\n> [xE9]\"[LF][xFF]\n"));
        QVERIFY(runCli("folder l r --format json").output.contains("{\"name\":\"\\udce9\\\"\\u000a\\udcff\","));
        QCOMPARE(std::remove(after.constData()), 0);
    }
#endif

private:
    [[nodiscard]] static QString path(const char *name)
    {
        return QFileInfo(word(name)).absoluteFilePath();
    }

    std::optional<CliFiles> m_files;
};

VELMORA_TEST(FolderCommandTest)
#include "folder_command_test.moc"
