#include "system/engine/program_run.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>

namespace velmora {

namespace {

constexpr int lookEvery = 50; ///< milliseconds between two looks at the cancel flag
constexpr int dyingTime = 5000;
constexpr qsizetype mostErrors = 16 * 1024;

void takeOutput(QProcess &process, ProgramRun &run)
{
    run.output += process.readAllStandardOutput();
    const QByteArray errors = process.readAllStandardError();
    run.errors += errors.left(std::max<qsizetype>(0, mostErrors - run.errors.size()));
}

} // namespace

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

ProgramRun runProgram(const ProgramCall &call, const CancelFlag &cancel, Progress &progress)
{
    ProgramRun run;
    QElapsedTimer time;
    time.start();
    QProcess process;
    process.setProgram(call.program);
    process.setArguments(call.arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    // Programs look for libraries in the current folder, too, which may be anybody's.
    process.setWorkingDirectory(QFileInfo(call.program).absolutePath());
    process.start(QIODevice::ReadOnly);
    if (!process.waitForStarted(int(call.limit.count()))) {
        run.end = ProgramEnd::CannotStart;
        run.reason = process.errorString();
        return run;
    }
    while (process.state() != QProcess::NotRunning) {
        if (cancel.isCancelled())
            run.end = ProgramEnd::Stopped;
        else if (time.hasExpired(call.limit.count()))
            run.end = ProgramEnd::TimedOut;
        else if (run.output.size() > call.mostOutput)
            run.end = ProgramEnd::TooMuchOutput;
        if (run.end != ProgramEnd::Finished) {
            process.kill();
            process.waitForFinished(dyingTime);
            break;
        }
        progress.report(0, time.elapsed(), call.limit.count());
        process.waitForFinished(lookEvery);
        takeOutput(process, run);
    }
    takeOutput(process, run);
    run.exitCode = process.exitCode();
    return run;
}

} // namespace velmora
