#include "core/child_process.h"

#include "core/child_setup.h"
#include "platform/process_tree.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>

#include <algorithm>

namespace velmora {

namespace {

constexpr int lookEvery = 50; ///< milliseconds between two looks at the cancel flag
constexpr int dyingTime = 5000;
constexpr qsizetype mostErrors = 16 * 1024;

void takeOutput(QProcess &process, ChildRun &run)
{
    run.output += process.readAllStandardOutput();
    const QByteArray errors = process.readAllStandardError();
    run.errors += errors.left(std::max<qsizetype>(0, mostErrors - run.errors.size()));
}

/// Why it should not go on; `Finished` when it may.
ChildEnd reasonToKill(const ChildCall &call, const ChildRun &run, const QElapsedTimer &time, const CancelFlag &cancel)
{
    if (cancel.isCancelled())
        return ChildEnd::Stopped;
    if (time.hasExpired(call.limit.count()))
        return ChildEnd::TimedOut;
    return run.output.size() > call.mostOutput ? ChildEnd::TooMuchOutput : ChildEnd::Finished;
}

} // namespace

void setUpChild(QProcess &process, const ChildCall &call)
{
    process.setProgram(call.program);
    process.setArguments(call.arguments);
    // Programs look for libraries in the current folder, too, which may be anybody's.
    process.setWorkingDirectory(call.folder.isEmpty() ? QFileInfo(call.program).absolutePath() : call.folder);
    if (!call.variables.isEmpty() || !call.without.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : call.without)
            environment.remove(name);
        for (auto variable = call.variables.begin(); variable != call.variables.end(); ++variable)
            environment.insert(variable.key(), variable.value());
        process.setProcessEnvironment(environment);
    }
}

QString findProgram(const QString &name, const QString &searchPath)
{
    for (QString folder : searchPath.split(QDir::listSeparator(), Qt::SkipEmptyParts)) {
        folder.remove(u'"'); // Windows lets folders stand in quotes
        if (!QDir::isAbsolutePath(folder))
            continue;
        const QFileInfo file(QDir(folder), name);
        if (file.isFile() && file.isExecutable())
            return file.absoluteFilePath();
    }
    return {};
}

ChildRun runChild(const ChildCall &call, const CancelFlag &cancel, Progress &progress)
{
    ChildRun run;
    QElapsedTimer time;
    time.start();
    QProcess process;
    setUpChild(process, call);
    if (call.input.isEmpty())
        process.setStandardInputFile(QProcess::nullDevice());
    ProcessTree tree(process, call.mostMemory);
    process.start(call.input.isEmpty() ? QIODevice::ReadOnly : QIODevice::ReadWrite);
    if (!process.waitForStarted(int(call.limit.count()))) {
        run.end = ChildEnd::CannotStart;
        run.reason = process.errorString();
        return run;
    }
    tree.takeStarted();
    if (!call.input.isEmpty()) {
        process.write(call.input);
        process.closeWriteChannel();
    }
    while (process.state() != QProcess::NotRunning) {
        run.end = reasonToKill(call, run, time, cancel);
        if (run.end != ChildEnd::Finished) {
            tree.kill();
            process.waitForFinished(dyingTime);
            break;
        }
        progress.report(0, time.elapsed(), call.limit.count());
        process.waitForFinished(lookEvery);
        takeOutput(process, run);
    }
    takeOutput(process, run);
    if (run.end == ChildEnd::Finished && process.exitStatus() == QProcess::CrashExit)
        run.end = ChildEnd::Crashed;
    run.exitCode = process.exitCode();
    return run;
}

} // namespace velmora
