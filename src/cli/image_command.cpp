#include "cli/choices.h"
#include "cli/command.h"
#include "core/child_process.h"
#include "platform/program_path.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>

#include <array>

namespace velmora::cli {

namespace {

constexpr const char *imageDetails =
    "Compare two pictures pixel by pixel, laid on each other at their upper left corners. What is decoded are PNG,\n"
    "JPEG, BMP, GIF and, where their plug-ins are installed, TIFF and WebP.\n";

constexpr std::array formats{
    Choice{"summary", "one line with the numbers of differing pixels (the default)"},
    Choice{"json", "the numbers, what the files say, and where something differs"},
    Choice{"png", "the map of differences as a picture: red differs, green and light red are on one side only"},
};

constexpr std::array imageOptions{
    OptionSpec{"tolerance", "NUMBER", "how far red, green and blue may deviate, 0 to 255; 0 without this"},
    OptionSpec{"ignore-antialiasing", nullptr, "pixels that look like the smoothed edge of a shape do not count"},
    OptionSpec{"frame", "NUMBER", "compare this frame of animations, or page; 1 without this"},
};

constexpr std::array examples{
    Example{"See whether two screenshots differ, and keep what does:",
            "velmora-cli image --tolerance 3 --format png --output map.png before.png after.png"},
};

/// The program that decodes pictures lies beside this one, or where packages put what nobody starts by hand.
QString imageProgram()
{
    const QFileInfo own(programPath());
    const QString suffix = own.suffix().isEmpty() ? QString() : u'.' + own.suffix();
    for (const char *folder : {".", "../libexec/velmora"}) {
        const QFileInfo program(own.dir().filePath(QLatin1String(folder)) + QStringLiteral("/velmora-cli-image") +
                                suffix);
        if (program.isExecutable())
            return QDir::cleanPath(program.absoluteFilePath());
    }
    return {};
}

/// The arguments as that program takes them.
QStringList passedOn(const Arguments &arguments)
{
    QStringList passed;
    for (const char *name : {"format", "output", "tolerance", "frame"}) {
        if (const std::optional<QString> value = arguments.value(name))
            passed << QStringLiteral("--%1=%2").arg(QLatin1String(name), *value);
    }
    if (arguments.has("ignore-antialiasing"))
        passed << QStringLiteral("--ignore-antialiasing");
    return passed << QStringLiteral("--") << arguments.paths();
}

int runImage(const Arguments &arguments, const Streams &streams)
{
    const QString program = imageProgram();
    if (program.isEmpty())
        return fail(streams, QStringLiteral("the part that decodes pictures, velmora-cli-image, is not installed"));
    ChildCall call{program, passedOn(arguments), std::chrono::hours(24)};
    call.folder = QDir::currentPath();
    call.mostOutput = qint64(1) << 31;
    Progress progress;
    const ChildRun run = runChild(call, {}, progress);
    streams.errors.write(run.errors);
    if (run.end != ChildEnd::Finished)
        return fail(streams,
                    run.reason.isEmpty() ? QStringLiteral("decoding the pictures ended unexpectedly") : run.reason);
    if (streams.output.write(run.output) != run.output.size())
        return fail(streams, streams.output.errorString());
    return run.exitCode;
}

} // namespace

Command imageCommand()
{
    return {"image",
            "[OPTION]... LEFT RIGHT",
            "compare two pictures pixel by pixel",
            imageDetails,
            formats,
            imageOptions,
            examples,
            runImage};
}

} // namespace velmora::cli
