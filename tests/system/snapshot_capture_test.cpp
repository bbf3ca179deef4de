#include "core/child_process.h"
#include "core/runner.h"
#include "support/files.h"
#include "support/test_main.h"
#include "system/engine/snapshot_capture.h"
#include "system_fixture.h"

#include <QElapsedTimer>
#ifdef Q_OS_WIN
#include <windows.h>
#endif

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr auto shortLimit = std::chrono::milliseconds(300);

SnapshotCapture captureNow(std::chrono::milliseconds limit = std::chrono::milliseconds(120000))
{
    Progress progress;
    return captureServices({qEnvironmentVariable("PATH"), limit}, {}, progress);
}

QStringList lines(const Snapshot &snapshot)
{
    QStringList result;
    for (auto item = snapshot.begin(); item != snapshot.end(); ++item)
        result.append(item.key() + QLatin1String(" -> ") + item->value);
    return result;
}

} // namespace

class SnapshotCaptureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesEveryVariable()
    {
        qputenv("VELMORA_TEST_EMPTY", "");
        qputenv("VELMORA_TEST_TEXT", word("a=b;ä").toLocal8Bit());
        const Snapshot snapshot = captureEnvironment();
        QCOMPARE(snapshot.value(word("VELMORA_TEST_TEXT")).value, word("a=b;ä"));
#ifndef Q_OS_WIN // where an empty variable is none
        QVERIFY(snapshot.contains(word("VELMORA_TEST_EMPTY")));
#endif
        qunsetenv("VELMORA_TEST_TEXT");
        QVERIFY(!captureEnvironment().contains(word("VELMORA_TEST_TEXT")));
    }

    void readsTheServiceList()
    {
        struct {
            QByteArray output;
            const char *services;
            CaptureFault fault = CaptureFault::None;
        } const cases[] = {
            {json("[{'Name':'b','State':'Running','StartMode':'Auto','DisplayName':'B'},"
                  "{'Name':'a','State':'Stopped','StartMode':'Manual','DisplayName':'A'}]"),
             "a -> Stopped / Manual|b -> Running / Auto"},
            {json("{'Name':'a','State':'Running','StartMode':'Auto','DisplayName':'A'}"), "a -> Running / Auto"},
            {"[]", ""},
            {"\xEF\xBB\xBF\r\n[{\"Name\":\"a\"}]\r\n", "a ->  / "}, // mark and line ends
            {json("[{'Name':'a','State':4,'StartMode':null},{'Name':null},{'State':'x'}]"), "a -> 4 / "},
            {"[{\"Name\":\"\xC3\xA4\"}]", "ä ->  / "},
            {"", "", CaptureFault::NotJson},
            {"Get-CimInstance : The term is not recognised", "", CaptureFault::NotJson},
            {json("[{'Name':'a'"), "", CaptureFault::NotJson}, // cut short
            {json("['a','b']"), "", CaptureFault::NotJson},    // names alone
        };
        for (const auto &[output, services, fault] : cases) {
            const SnapshotCapture capture = parseServiceList(output);
            QCOMPARE(capture.fault, fault);
            QCOMPARE(lines(capture.snapshot), words(services));
        }
    }

    void understandsOtherCodePages()
    {
        // No UTF-8: the name is read as the console's code page has it, and the rest is not lost.
        const SnapshotCapture capture =
            parseServiceList("[{\"Name\":\"a\",\"State\":\"R\",\"DisplayName\":\"\x84\xF6\"}]");
        QVERIFY(capture.ok());
        QCOMPARE(lines(capture.snapshot), words("a -> R / "));
        QVERIFY(!capture.snapshot.first().displayName.isEmpty());
    }

    void asksPowerShell()
    {
        FakePowerShell shell;
        shell.listens();
        QByteArray many = "[";
        for (int i = 0; i < 20000; ++i)
            many += (i ? "," : "") + json("{'Name':'service") + QByteArray::number(i) +
                    json("','State':'Running','StartMode':'Auto','DisplayName':'A service with a long name'}");
        shell.says(many + "]");
        const SnapshotCapture capture = captureNow();
        QVERIFY(capture.ok());
        QCOMPARE(capture.snapshot.size(), 20000);
        QCOMPARE(shell.call(),
                 (QStringList{word("-NoProfile"), word("-Command"),
                              QStringLiteral("Get-CimInstance Win32_Service | Select-Object Name, State, StartMode, "
                                             "DisplayName | ConvertTo-Json -Compress")}));
    }

    void tellsWhyThereIsNoList()
    {
        FakePowerShell shell;
        SnapshotCapture capture = captureNow();
        QCOMPARE(capture.fault, CaptureFault::NotJson);
        QCOMPARE(capture.detail, word("Get-CimInstance: access denied"));

        FakePowerShell::hangs();
        capture = captureNow(shortLimit);
        QCOMPARE(capture.fault, CaptureFault::TimedOut);

        FakePowerShell::goes();
        QCOMPARE(captureNow().fault, CaptureFault::NoProgram);
    }

    void stopsWhenAsked()
    {
        FakePowerShell shell;
        FakePowerShell::hangs();
        Runner runner;
        std::optional<CaptureFault> fault;
        runner.start([](const CancelFlag &cancel, Progress &progress) { return captureServices({}, cancel, progress); },
                     [&fault](RunOutcome<SnapshotCapture> &&outcome) { fault = outcome.value->fault; },
                     [&runner](const ProgressState &state) {
                         QCOMPARE(state.total, 120000);
                         runner.cancel(); // it runs now
                     });
        QTRY_VERIFY_WITH_TIMEOUT(fault, 20000);
        QCOMPARE(*fault, CaptureFault::Stopped);
    }

    void killsWhatWritesTooMuch()
    {
        FakePowerShell shell;
        shell.says(QByteArray(1'000'000, 'x'));
        Progress progress;
        const QString program = findProgram(word("powershell.exe"), qEnvironmentVariable("PATH"));
        const ChildRun run = runChild({program, {}, std::chrono::milliseconds(60000), 1000}, {}, progress);
        // It may have ended by itself before anybody looked; what it wrote is there then.
        QVERIFY(run.end == ChildEnd::TooMuchOutput || run.output.size() == 1'000'000);
        QCOMPARE(runChild({program + word("-none"), {}, shortLimit}, {}, progress).end, ChildEnd::CannotStart);
    }

    void handsAChildItsInputAndVariables()
    {
        const FakePowerShell shell;
        Progress progress;
        ChildCall call{
            findProgram(word("powershell.exe"), qEnvironmentVariable("PATH")), {}, std::chrono::milliseconds(60000)};
        call.variables = {{word("VELMORA_FAKE_ECHO"), word("1")}};
        call.input = QByteArray(300'000, 'y'); // more than a pipe holds
        const ChildRun run = runChild(call, {}, progress);
        QCOMPARE(run.end, ChildEnd::Finished);
        QCOMPARE(run.exitCode, 3);
        QVERIFY(run.output == call.input);
    }

#ifndef Q_OS_WIN
    void killsWhatAChildHasStarted()
    {
        Progress progress;
        const ChildRun run =
            runChild({word("/bin/sh"), {word("-c"), word("sleep 300 & echo $!; wait")}, shortLimit}, {}, progress);
        QCOMPARE(run.end, ChildEnd::TimedOut);
        QFile state(word("/proc/%1/stat").arg(run.output.toInt()));
        // Gone, or dead and not yet collected.
        QTRY_VERIFY(!state.open(QIODevice::ReadOnly) || state.readAll().contains(") Z ") || (state.close(), false));
    }
#endif

#ifdef Q_OS_LINUX
    void aChildGetsNoMoreMemoryThanItMayHave()
    {
        // A line has to be kept whole until it ends.
        ChildCall call{word("/bin/sh"),
                       {word("-c"), word("head -c 100000000 /dev/zero | tail -n 1 | wc -c")},
                       std::chrono::milliseconds(60000)};
        Progress progress;
        QCOMPARE(runChild(call, {}, progress).output.trimmed(), QByteArray("100000000"));
        call.mostMemory = qint64(32) << 20;
        QCOMPARE(runChild(call, {}, progress).output.trimmed(), QByteArray("0"));
    }
#endif

    void looksForProgramsOnTheSearchPathOnly()
    {
        TestFiles files;
        const QString name = word("powershell.exe");
        const QString program = files.write(word("bin/powershell.exe"), "x");
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        files.write(word("empty/other"), "x");
        QVERIFY(QDir().mkpath(files.path(word("folder/powershell.exe"))));
        const auto search = [&](const QStringList &folders) {
            return findProgram(name, folders.join(QDir::listSeparator()));
        };
        const QString bin = files.path(word("bin"));
        QCOMPARE(search({files.path(word("none")), files.path(word("empty")), files.path(word("folder")),
                         QDir::toNativeSeparators(bin)}),
                 program);
        QCOMPARE(search({u'"' + bin + u'"'}), program);
        QCOMPARE(search({}), QString());
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(bin));
        const QString found = search({QString(), word("."), word("../bin")});
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(found, QString());
    }

    void namesStartupItemsBySource()
    {
        TestFiles files;
        files.write(word("user/Notes.lnk"), "x");
        files.write(word("user/both.bat"), "x");
        files.write(word("user/folder/inside.bat"), "x");
        files.write(word("common/both.bat"), "x");
        StartupSources sources{word("Software\\VelmoraNone"), word("Software\\VelmoraNone"), files.path(word("user")),
                               files.path(word("common"))};
        const QString hidden = files.write(word("user/.hidden"), "x");
        QStringList expected = {word("CommonStartup\\both.bat -> ") + files.path(word("common/both.bat")),
                                word("Startup\\Notes.lnk -> ") + files.path(word("user/Notes.lnk")),
                                word("Startup\\both.bat -> ") + files.path(word("user/both.bat"))};
#ifdef Q_OS_WIN
        QVERIFY(SetFileAttributesW(hidden.toStdWString().c_str(), FILE_ATTRIBUTE_HIDDEN));
        const QString desktop = files.write(word("user/desktop.ini"), "x");
        QVERIFY(SetFileAttributesW(desktop.toStdWString().c_str(), FILE_ATTRIBUTE_SYSTEM));
        const QString key = word("Software\\VelmoraStartupTest");
        HKEY handle = nullptr;
        QCOMPARE(RegCreateKeyExW(HKEY_CURRENT_USER, key.toStdWString().c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                 KEY_SET_VALUE, nullptr, &handle, nullptr),
                 ERROR_SUCCESS);
        const auto set = [handle](const wchar_t *name, DWORD type, const void *data, std::size_t size) {
            RegSetValueExW(handle, name, 0, type, static_cast<const BYTE *>(data), DWORD(size));
        };
        const std::wstring longText(10000, L'x');
        const DWORD number = 4'000'000'000U;
        set(nullptr, REG_SZ, L"unnamed", 16);
        set(L"a/b\\c", REG_EXPAND_SZ, L"%X%\\p", 12);
        set(L"long", REG_SZ, longText.c_str(), (longText.size() + 1) * sizeof(wchar_t));
        set(L"list", REG_MULTI_SZ, L"one\0two\0", 18);
        set(L"number", REG_DWORD, &number, sizeof number);
        set(L"bytes", REG_BINARY, "\x01\xAB", 2);
        RegCloseKey(handle);
        sources.currentUserKey = key;
        expected += {word("HKCU\\Run\\ -> unnamed"),
                     word("HKCU\\Run\\a/b\\c -> %X%\\p"),
                     word("HKCU\\Run\\bytes -> 01 ab"),
                     word("HKCU\\Run\\list -> one\ntwo"),
                     word("HKCU\\Run\\long -> ") + QString(10000, u'x'),
                     word("HKCU\\Run\\number -> 4000000000")};
        expected.sort();
#endif
        QCOMPARE(lines(captureStartup(sources)), expected);
        sources.userFolder = files.path(word("none"));
        sources.commonFolder.clear();
        sources.currentUserKey = sources.localMachineKey;
        QVERIFY(captureStartup(sources).isEmpty());
    }
};

VELMORA_TEST(SnapshotCaptureTest)
#include "snapshot_capture_test.moc"
