#include "support/test_main.h"

#include "core/workers.h"
#include "platform/process_end.h"
#include "platform/thread_end.h"

#ifdef Q_OS_WIN
#include "support/private_registry_win.h"
#endif

#include <QStandardPaths>
#include <QTemporaryDir>

#ifdef VELMORA_TEST_WIDGETS
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

#include <cstdio>
#include <vector>

namespace velmora::test {

namespace {

std::vector<std::function<std::unique_ptr<QObject>()>> &tests()
{
    static std::vector<std::function<std::unique_ptr<QObject>()>> list;
    return list;
}

} // namespace

bool registerTest(std::function<std::unique_ptr<QObject>()> make)
{
    tests().push_back(std::move(make));
    return true;
}

} // namespace velmora::test

/// Runs every registered class, or those named by arguments "class=NAME"; the other arguments go to Qt Test.
int main(int argc, char *argv[])
{
    velmora::orderEndOfThreads();
    // Settings, caches and the home of the tested program: nothing of the person who runs the tests is read or written.
    QTemporaryDir home;
    if (!home.isValid())
        return 2;
    for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, home.path().toLocal8Bit());
    qputenv("LANG", "C.UTF-8");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
    // A test that is not started from a console would tell its results to a debugger only.
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    const velmora::test::PrivateRegistry registry;
    if (!registry.isValid())
        return 2;
#endif
    QStandardPaths::setTestModeEnabled(true);

    TestApplication application(argc, argv);

    QStringList wanted;
    QStringList passedOn;
    for (const QString &argument : TestApplication::arguments()) {
        if (argument.startsWith(QLatin1String("class=")))
            wanted.append(argument.mid(6));
        else
            passedOn.append(argument);
    }

    int failures = 0;
    int ran = 0;
    for (const auto &make : velmora::test::tests()) {
        const std::unique_ptr<QObject> test = make();
        if (!wanted.isEmpty() &&
            !wanted.contains(QString::fromLatin1(test->metaObject()->className()).section(u':', -1)))
            continue;
        ++ran;
        failures += QTest::qExec(test.get(), passedOn);
        if (!velmora::joinWorkers(velmora::workersPatience)) {
            std::fputs("a worker did not end when it was told to\n", stderr);
            velmora::endProcessNow(1);
        }
    }
    if (ran == 0) {
        std::fputs("no test class of that name\n", stderr);
        return 2;
    }
    return failures == 0 ? 0 : 1;
}
