#include "cli/part_program.h"

#include "cli/own_streams.h"
#include "core/child_process.h"
#include "platform/program_path.h"
#include "platform/standard_streams.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <new>

namespace velmora::cli {

namespace {

QString pathOfPart(const QString &name)
{
    const QFileInfo own(programPath());
    const QString suffix = own.suffix().isEmpty() ? QString() : u'.' + own.suffix();
    for (const char *folder : {".", "../libexec/velmora"}) {
        const QFileInfo program(own.dir().filePath(QLatin1String(folder)) + u'/' + name + suffix);
        if (program.isExecutable())
            return QDir::cleanPath(program.absoluteFilePath());
    }
    return {};
}

/// What the program has said itself: the libraries that decode files add words of their own, one even about whole
/// files.
QByteArray ownWords(const QByteArray &errors)
{
    const QByteArray beginning = QByteArray(programName) + ": ";
    QByteArray own;
    for (const QByteArray &line : errors.split('\n')) {
        if (line.startsWith(beginning))
            own += line + '\n';
    }
    return own;
}

} // namespace

int runPart(const QString &name, const QString &purpose, const QStringList &arguments, const Streams &streams)
{
    const QString program = pathOfPart(name);
    if (program.isEmpty())
        return fail(streams, QStringLiteral("the part that %1, %2, is not installed").arg(purpose, name));
    ChildCall call{program, arguments, std::chrono::hours(24)};
    call.folder = QDir::currentPath();
    call.mostOutput = qint64(1) << 31;
    Progress progress;
    const ChildRun run = runChild(call, {}, progress);
    streams.errors.write(ownWords(run.errors));
    if (run.end != ChildEnd::Finished)
        return fail(streams, run.reason.isEmpty() ? QStringLiteral("the part that %1 ended unexpectedly").arg(purpose)
                                                  : run.reason);
    if (streams.output.write(run.output) != run.output.size())
        return fail(streams, streams.output.errorString());
    return run.exitCode;
}

QStringList passedOn(const Arguments &arguments, const QStringList &options, const QStringList &flags)
{
    QStringList passed;
    for (const QString &name : options) {
        if (const std::optional<QString> value = arguments.value(name.toLatin1().constData()))
            passed << QStringLiteral("--%1=%2").arg(name, *value);
    }
    for (const QString &name : flags) {
        if (arguments.has(name.toLatin1().constData()))
            passed << QStringLiteral("--") + name;
    }
    return passed << QStringLiteral("--") << arguments.paths();
}

int partMain(int argc, char *argv[], const Command &command,
             int (*work)(const Arguments &arguments, const Streams &streams))
{
    OwnStreams own;
    const QCoreApplication application(argc, argv); // plug-ins are found by it
    if (!own.areOpen())
        return Trouble;
    const Streams streams = own.streams();
    try {
        const std::vector<OptionSpec> options = allOptions(command);
        const Arguments arguments = Arguments::parse(programArguments(argc, argv), options);
        return arguments.error().isEmpty() ? work(arguments, streams) : fail(streams, arguments.error());
    } catch (const std::bad_alloc &) {
        return fail(streams, QStringLiteral("out of memory"));
    }
}

} // namespace velmora::cli
