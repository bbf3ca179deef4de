#include "cli/choices.h"
#include "cli/command.h"
#include "cli/part_program.h"

#include <array>

namespace velmora::cli {

namespace {

constexpr const char *mp3Details =
    "Compare the tags of two pieces of music, what they say of their sound, and the sound itself byte for byte:\n"
    "MP3 with ID3v1, ID3v2 and APE, FLAC, Ogg (Vorbis, Opus, FLAC, Speex), MP4 (M4A), WAV and AIFF, told by their "
    "contents.\n"
    "The exit status is 0 only for the same bytes.\n";

constexpr std::array formats{
    Choice{"summary", "what the files are to each other, and the numbers of fields (the default)"},
    Choice{"list", "one line for each field: = same, < left only, > right only, ! changed"},
    Choice{"json", "every field with both values"},
};

constexpr std::array mp3Options{
    OptionSpec{"old-text", "ENCODING",
               "read texts in tags that do not tell their encoding in this one (GBK, Shift-JIS, windows-1251, ...); "
               "Latin-1 without this"},
};

constexpr std::array examples{
    Example{"See whether two files hold the same sound, whatever their tags say:",
            "velmora-cli mp3 song.mp3 backup/song.mp3"},
    Example{"Read tags that were written on a Chinese computer:",
            "velmora-cli mp3 --old-text GBK --format json left.mp3 right.mp3"},
};

int runMp3(const Arguments &arguments, const Streams &streams)
{
    const QStringList passed =
        passedOn(arguments, {QStringLiteral("format"), QStringLiteral("output"), QStringLiteral("old-text")});
    return runPart(QStringLiteral("velmora-cli-mp3"), QStringLiteral("reads tags"), passed, streams);
}

} // namespace

Command mp3Command()
{
    return {"mp3",
            "[OPTION]... LEFT RIGHT",
            "compare the tags and the sound of two pieces of music",
            mp3Details,
            formats,
            mp3Options,
            examples,
            runMp3};
}

} // namespace velmora::cli
