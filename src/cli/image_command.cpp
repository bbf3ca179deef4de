#include "cli/choices.h"
#include "cli/command.h"
#include "cli/part_program.h"

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

int runImage(const Arguments &arguments, const Streams &streams)
{
    const QStringList passed = passedOn(
        arguments,
        {QStringLiteral("format"), QStringLiteral("output"), QStringLiteral("tolerance"), QStringLiteral("frame")},
        {QStringLiteral("ignore-antialiasing")});
    return runPart(QStringLiteral("velmora-cli-image"), QStringLiteral("decodes pictures"), passed, streams);
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
