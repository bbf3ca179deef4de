#include "cli/text_input.h"

#include "cli/command.h"
#include "core/text_pair.h"

#include <QFile>
#include <QFileInfo>

#include <exception>
#include <limits>
#include <thread>

namespace velmora::cli {

namespace {

/// Reading a shorter file takes less time than starting a thread for it.
constexpr qint64 worthAThread = 256 * 1024;

constexpr const char *standardInputName = "-";
constexpr const char *noFile = "/dev/null";
constexpr const char *tooLargeText = "File too large";

FileContents readToEnd(QIODevice &device)
{
    constexpr qsizetype piece = 1024 * 1024;
    FileContents contents;
    for (;;) {
        const qsizetype filled = contents.bytes.size();
        contents.bytes.resize(filled + piece);
        const qint64 got = device.read(contents.bytes.data() + filled, piece);
        contents.bytes.resize(filled + std::max<qint64>(got, 0));
        if (got < 0)
            contents.error = device.errorString();
        if (got <= 0)
            return contents;
    }
}

/// Reads to the end of what says no length.
FileContents readPipe(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {{}, file.errorString()};
    return readToEnd(file);
}

void decode(TextInput &input, FileContents &&contents)
{
    input.error = contents.error;
    if (!contents.ok())
        return;
    input.raw = std::move(contents.bytes);
    input.text = decodeText(input.raw, input.encoding);
    if (input.text.tooLarge || input.text.lines.count() >= std::numeric_limits<qint32>::max())
        input.error = QLatin1String(tooLargeText);
}

bool isStandardInput(const TextInput &input)
{
    return input.path == QLatin1String(standardInputName);
}

/// Encodings that were guessed side by side are guessed again, together.
void settleEncodings(TextInput &left, TextInput &right)
{
    RawText leftText{left.raw, std::move(left.text)};
    RawText rightText{right.raw, std::move(right.text)};
    settleGuesses(leftText, rightText);
    left.text = std::move(leftText.text);
    right.text = std::move(rightText.text);
}

void readBoth(TextInput &left, TextInput &right, QIODevice &standardInput)
{
    if (isStandardInput(left) || isStandardInput(right)) {
        FileContents contents = readToEnd(standardInput);
        decode(left, isStandardInput(left) ? FileContents(contents) : readGivenPath(left.path));
        decode(right, isStandardInput(right) ? std::move(contents) : readGivenPath(right.path));
        return;
    }
    if (std::min(QFileInfo(left.path).size(), QFileInfo(right.path).size()) < worthAThread) {
        decode(left, readGivenPath(left.path));
        decode(right, readGivenPath(right.path));
        return;
    }
    std::exception_ptr failure;
    std::thread worker([&left, &failure] {
        try {
            decode(left, readGivenPath(left.path));
        } catch (...) {
            failure = std::current_exception();
        }
    });
    try {
        decode(right, readGivenPath(right.path));
    } catch (...) {
        worker.join();
        throw;
    }
    worker.join();
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace

FileContents readGivenPath(const QString &path)
{
    if (path == QLatin1String(noFile))
        return {};
    const QFileInfo info(path);
    if (info.exists() && !info.isFile() && !info.isDir())
        return readPipe(path);
    return readFile(path);
}

FileContents readGivenPath(const QString &path, QIODevice &standardInput)
{
    return path == QLatin1String(standardInputName) ? readToEnd(standardInput) : readGivenPath(path);
}

void readTextInputs(TextInput &left, TextInput &right, QIODevice &standardInput)
{
    readBoth(left, right, standardInput);
    settleEncodings(left, right);
}

void warnOfUndecodable(const Streams &streams, const TextInput &input)
{
    if (input.text.undecodable == 0)
        return;
    complain(streams, QStringLiteral("warning: %1: %2 places are no %3, the first in line %4")
                          .arg(input.path)
                          .arg(input.text.undecodable)
                          .arg(input.text.encoding.name())
                          .arg(input.text.firstUndecodableLine + 1));
}

} // namespace velmora::cli
