#include "folder/sftp/engine/remote_listing.h"
#include "folder/sftp/engine/ssh_runs.h"
#include "sftp/local_host.h"
#include "support/files.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// Names that mean something to shells, patterns or options.
const QStringList oddNames =
    words("plain|a b|it's|\"q\"|a[1].txt|a1.txt|*|?|$HOME|`id`|$(id)|~|-rf|a\\b|a;b|#x|\u4e2d|{a,b}|&|!x|:c");

/// "sign path local/remote" for each row, separated by "|".
QString drawn(const RemoteComparison &found)
{
    QStringList rows;
    const auto size = [](std::optional<qint64> bytes) { return bytes ? QString::number(*bytes) : word("-"); };
    for (const RemoteRow &row : found.rows)
        rows.append(word("%1%2 %3/%4")
                        .arg(QLatin1Char("=!<>"[std::size_t(row.status)]))
                        .arg(row.path, size(row.sizes.left), size(row.sizes.right)));
    return rows.join(u'|');
}

} // namespace

class SshEngineTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<LocalHost> m_host;
    std::unique_ptr<QTemporaryDir> m_local;
    Progress m_silent;

    [[nodiscard]] RemoteComparing compared(const QString &folder)
    {
        return compareWithHost(m_host->target(folder), m_local->path(), {}, m_silent);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_host = std::make_unique<LocalHost>();
        qputenv("PATH", (m_host->searchPath() + u':' + qEnvironmentVariable("PATH")).toUtf8());
    }
    void init()
    {
        m_local = std::make_unique<QTemporaryDir>();
        const QByteArray test = QTest::currentTestFunction();
        if (!m_host->lack().isEmpty() && !test.startsWith("text"))
            QSKIP(qPrintable(m_host->lack()));
    }

    void textOfCommands()
    {
        QCOMPARE(listCommand(word("/srv/it's")),
                 word(R"(find '/srv/it'\''s' -type f -printf '%P\t%s\n' 2>/dev/null || )"
                      R"(find '/srv/it'\''s' -type f -exec stat -c '%n\t%s' {} \; 2>/dev/null)"));
        QCOMPARE(sshArguments({word("h"), 2022, word("u"), {}}, word("x")), words("-p|2022|u@h|x"));
        QCOMPARE(sshArguments({word("[::1]"), 22, word("u"), {}}, word("x")), words("-p|22|u@::1|x"));
        QCOMPARE(scpArguments({word("::1"), 22, word("u"), word("/a")}, word("b c"), word("/t")),
                 words("-P|22|u@[::1]:/a/b\\ c|/t"));
        for (const char *text : {"u@h:/a/b@c:d", "u@[fe80::1]:x", "u@h:"})
            QCOMPARE(RemotePlace::ofText(word(text)).text(), word(text));
        QCOMPARE(RemotePlace::ofText(word("/home/a@b")), RemotePlace());
    }

    void textOfPlacesThatAreRefused()
    {
        using Fault = RemotePlaceFault;
        const auto fault = [](const char *user, const char *host, const char *folder) {
            return faultOf({word(host), 22, word(user), word(folder)});
        };
        QCOMPARE(fault("DOM\\a.b+c", "files.example.com", "a; rm -rf 'b'"), Fault::None);
        QCOMPARE(fault("u", "fe80::1%eth0", ""), Fault::None);
        QCOMPARE(fault("u", "", ""), Fault::Missing);
        QCOMPARE(fault("", "h", ""), Fault::NoUser);
        for (const char *user : {"-oProxyCommand=x", "a b", "a;b", "$(x)`", "a\\", "a\nb"})
            QCOMPARE(fault(user, "h", ""), Fault::BadUser);
        for (const char *host : {"-h", "a b", "h;x", "h/x", "h\n", "a@b"})
            QCOMPARE(fault("u", host, ""), Fault::BadHost);
        QCOMPARE(fault("u", "h", "a\nb"), Fault::BadFolder);
    }

    void textOfListings_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<int>("unlisted");
        const auto add = [](const char *name, const char *output, const char *folder, const char *rows, int unlisted) {
            QTest::newRow(name) << QByteArray(output) << word(folder) << word(rows) << unlisted;
        };
        add("relative", "b\t2\na/c\t10\n", "/r", "a/c 10|b 2", 0);
        add("full", "/r/b\t2\n/r/a/c\t10\n", "/r/", "a/c 10|b 2", 0);
        add("full below the root", "/b\t2\n", "/", "b 2", 0);
        add("no escapes", "r/b\\t2\n./r/c\\t3\n", "r", "./r/c 3|b 2", 0);
        add("full in the home folder", "./b\t2\n./.c\t3\n", ".", ".c 3|b 2", 0);
        add("looks like the folder", "r/b\t2\n", "r", "r/b 2", 0);
        add("begins like the folder", "/rx/b\t2\n", "/r", "", 1);
        add("line feed", "x\t1\na\nb\nc\t2\nd\t3\n", "/r", "d 3|x 1", 1);
        add("tab", "a\tb\t1\n", "/r", "", 1);
        add("no sizes", "a\nb\t\nc\t-1\nd\t99999999999999999999\n", "/r", "", 1);
        add("leads out", "../a\t1\n/etc/x\t1\na/../../b\t1\n\t5\n", "/r", "", 4);
        add("cut", "a\t1\nb", "/r", "a 1", 1);
        add("no text", "\xff\t1\n", "/r", "\xed\xb3\xbf 1", 0);
    }

    void textOfListings()
    {
        QFETCH(QByteArray, output);
        QFETCH(QString, folder);
        const RemoteListing listing = parseRemoteListing(output, folder);
        QStringList rows;
        for (const ListedSize &file : listing.files)
            rows.append(file.path + u' ' + QString::number(file.size));
        if (qstrcmp(QTest::currentDataTag(), "no text") == 0)
            QCOMPARE(rows, QStringList(QString(QChar(0xDCFF)) + word(" 1")));
        else if (qstrcmp(QTest::currentDataTag(), "no escapes") == 0)
            QCOMPARE(rows, QStringList{word("b 2")});
        else
            QTEST(rows.join(u'|'), "rows");
        if (qstrcmp(QTest::currentDataTag(), "no escapes") != 0)
            QTEST(int(listing.unlisted), "unlisted");
    }

    void bothFormsOfListingGiveTheSame()
    {
        const QString folder = m_host->path("it's $HOME \"q\" `id`");
        QVERIFY(QDir().mkpath(folder + word("/sub")) && QDir(m_local->path()).mkpath(word("sub")));
        const QDir remote(folder);
        const QDir local(m_local->path());
        QVERIFY(makeFile(remote.filePath(word("sub/same")), "1234") &&
                makeFile(local.filePath(word("sub/same")), "4321"));
        QVERIFY(makeFile(remote.filePath(word("size")), "12") && makeFile(local.filePath(word("size")), "1"));
        QVERIFY(makeFile(remote.filePath(word(".there")), "") && makeFile(local.filePath(word("here")), "x"));
        QVERIFY(makeFile(remote.filePath(word("line\nfeed")), "") && makeFile(remote.filePath(word("tab\t1")), ""));
        QVERIFY(QFile::link(word("same"), local.filePath(word("link"))));
        const QString rows = word(">.there -/0|<here 1/-|!size 1/2|=sub/same 4/4");
        for (const QByteArray &find :
             {QByteArray(), QByteArray("case \"$*\" in *-printf*) exit 1;; esac\nexec /usr/bin/find \"$@\"")}) {
            m_host->setHostProgram("find", find);
            const RemoteComparing found = compared(folder);
            QVERIFY2(found.end.ok(), qPrintable(found.end.error));
            QCOMPARE(drawn(found.comparison), rows);
            QCOMPARE(found.comparison.unlisted, 2);
            QVERIFY(found.skew && std::abs(found.skew->seconds) <= found.skew->uncertainty + 1);
        }
        m_host->setHostProgram("find", {});
        const RemoteComparing missing = compared(folder + word("/missing"));
        QCOMPARE(missing.end.fault, SshFault::Failed);
        QCOMPARE(missing.end.exitCode, 1);
    }

    void filesOfAnyNameAreFetched()
    {
        const QString folder = m_host->path("odd");
        QVERIFY(QDir().mkpath(folder));
        for (const QString &name : oddNames)
            QVERIFY(makeFile(folder + u'/' + name, name.toUtf8()));
        QVERIFY(makeFile(m_local->filePath(word("plain")), "mine"));
        const FetchedFiles fetched = fetchFiles(m_host->target(folder), oddNames, m_local->path(), {}, m_silent);
        QVERIFY2(fetched.end.ok(), qPrintable(fetched.end.error));
        QCOMPARE(fetched.alreadyThere, words("plain"));
        QCOMPARE(contentsOf(m_local->filePath(word("plain"))), "mine");
        for (const QString &name : oddNames.mid(1))
            QCOMPARE(contentsOf(m_local->path() + u'/' + name), name.toUtf8());
        QCOMPARE(entriesOf(m_local->path()).size(), oddNames.size());

        // The same names by their contents, of which one differs and one has gone.
        QVERIFY(makeFile(folder + word("/it's"), "it'z") && QFile::remove(folder + word("/$HOME")));
        const ContentsComparing contents =
            compareContents(m_host->target(folder), m_local->path(), oddNames, {}, m_silent);
        QVERIFY2(contents.end.ok(), qPrintable(contents.end.error));
        QCOMPARE(contents.same.size(), oddNames.size() - 1);
        for (const QString &name : oddNames) {
            if (name != u"$HOME")
                QCOMPARE(contents.same.value(name), name != u"it's" && name != u"plain");
        }
    }

    void whatKeepsHostsApartIsTold()
    {
        QVERIFY(QDir().mkpath(m_host->path("empty")));
        const auto faults = [&](SshFault wanted) {
            QCOMPARE(compared(m_host->path("empty")).end.fault, wanted);
            const QString target = m_local->filePath(word("fetched"));
            QCOMPARE(fetchFile(m_host->target(m_host->path("empty")), word("x"), target, {}, m_silent).fault, wanted);
            QVERIFY(!QFileInfo::exists(target));
        };
        m_host->setKnown(LocalHost::Known::None);
        faults(SshFault::UnknownHost);
        QCOMPARE(contentsOf(m_host->path("known")), QByteArray()); // nothing is accepted silently
        m_host->setKnown(LocalHost::Known::Another);
        faults(SshFault::ChangedHost);
        m_host->setKnown(LocalHost::Known::ItsOwn);
        SshTarget target = m_host->target(m_host->path("empty"));
        target.place.user = word("nobody-of-this-name");
        QCOMPARE(compareWithHost(target, m_local->path(), {}, m_silent).end.fault, SshFault::NotLetIn);
        target.searchPath = m_local->path();
        QCOMPARE(compareWithHost(target, m_local->path(), {}, m_silent).end.fault, SshFault::NoProgram);
    }

    void aHostThatDoesNotAnswerIsLeft()
    {
        const QString marker = m_host->path("asked");
        m_host->setHostProgram("find", "touch '" + marker.toUtf8() + "'\nexec tail -f /dev/null");
        const CancelFlag cancel;
        Progress progress([&](const ProgressState &) {
            if (QFileInfo::exists(marker))
                cancel.cancel();
        });
        const RemoteComparing found =
            compareWithHost(m_host->target(m_host->path("x")), m_local->path(), cancel, progress);
        QCOMPARE(found.end.fault, SshFault::Cancelled);
        m_host->setHostProgram("find", {});
    }
};

VELMORA_TEST(SshEngineTest)
#include "ssh_engine_test.moc"
