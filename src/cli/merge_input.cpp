#include "cli/merge_input.h"

#include "cli/text_input.h"
#include "core/crew.h"
#include "core/text_file.h"
#include "core/text_scan.h"
#include "platform/memory_hint.h"

#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <limits>

namespace velmora::cli {

namespace {

/// Reading a shorter file takes less time than starting a thread for it.
constexpr qint64 worthAThread = 256 * 1024;

/// Texts of which the first use of memory is a good part of the time that their merge takes. The merge itself needs
/// about as much as the texts; asking for a third of it is fastest, as what is given is cleared first, used or not.
constexpr qint64 worthPreparing = 256 * 1024;
constexpr qint64 tooLargeToPrepare = 16 * 1024 * 1024;

using Errors = std::array<QString, 3>;

bool isTooLarge(const MergeInput &input)
{
    return input.raw.size() > TextLines::maximumSize || input.lines.count() >= std::numeric_limits<qint32>::max();
}

void readOne(MergeInput &input, QString &error, QIODevice &standardInput)
{
    FileContents contents = readGivenPath(input.path, standardInput);
    error = contents.error;
    if (!contents.ok())
        return;
    input.raw = std::move(contents.bytes);
    if (input.raw.size() <= TextLines::maximumSize) {
        ByteCounts counts;
        input.lines = TextLines::splitCounting(input.raw, 0, counts, {});
        input.hasZeros = counts.zeros > 0;
    }
    if (isTooLarge(input))
        error = QStringLiteral("File too large");
}

void readAll(MergeInputs &inputs, QIODevice &standardInput, const std::function<void(const TextLines &)> &baseRead)
{
    qint64 largest = 0;
    qint64 together = 0;
    for (const MergeInput &input : inputs.texts) {
        const qint64 size = QFileInfo(input.path).size();
        largest = std::max(largest, size);
        together += size;
    }
    if (together >= worthPreparing && together <= tooLargeToPrepare)
        expectUse(size_t(4 * together / 3));
    Errors errors;
    // The calling thread takes the base, which stands first, and what the other one has not come to when that is done.
    const int size = largest < worthAThread ? 1 : std::min(crewSize(), 2);
    std::atomic<size_t> next = 1;
    runCrew(
        size,
        [&](int worker) {
            if (worker == 0) {
                readOne(inputs.texts[0], errors[0], standardInput);
                if (errors[0].isEmpty())
                    baseRead(inputs.base());
            }
            for (size_t text = next++; text < inputs.texts.size(); text = next++)
                readOne(inputs.texts[text], errors[text], standardInput);
        },
        [] {});
    for (size_t text = 0; text < errors.size() && inputs.error.isEmpty(); ++text) {
        if (!errors[text].isEmpty())
            inputs.error = QStringLiteral("%1: %2").arg(inputs.texts[text].path, errors[text]);
    }
}

/// Whether the bytes may be those of an encoding in which a line feed is more than one of them.
bool maybeWide(const MergeInput &input)
{
    return input.hasZeros || input.raw.startsWith("\xFF\xFE") || input.raw.startsWith("\xFE\xFF");
}

bool isWide(const TextEncoding &encoding)
{
    return encoding.charset().startsWith("UTF-16") || encoding.charset().startsWith("UTF-32");
}

/// The encoding that left or right has changed that of the base to; that of the left text when both have.
const TextEncoding &mergedEncoding(const std::array<DecodedText, 3> &texts)
{
    const bool leftChanged = texts[1].encoding != texts[0].encoding;
    return leftChanged ? texts[1].encoding : texts[2].encoding;
}

void decodeAll(MergeInputs &inputs)
{
    std::array<DecodedText, 3> decoded;
    for (size_t text = 0; text < decoded.size(); ++text) {
        MergeInput &input = inputs.texts[text];
        decoded[text] = decodeText(input.raw, {});
        const bool broken = decoded[text].tooLarge || decoded[text].undecodable > 0;
        if (broken && inputs.error.isEmpty())
            inputs.error = QStringLiteral("%1: no text that could be decoded as %2")
                               .arg(input.path, decoded[text].encoding.name());
        input.lines = decoded[text].lines;
    }
    inputs.encoding = mergedEncoding(decoded);
}

/// True when one of the texts has to be decoded to be cut into lines. Tells of what is no text at all.
bool needsDecoding(MergeInputs &inputs)
{
    bool wide = false;
    for (const MergeInput &input : inputs.texts) {
        if (!maybeWide(input))
            continue;
        const DecodedText text = decodeText(input.raw, {});
        if (isWide(text.encoding))
            wide = true;
        else if (text.binary && inputs.error.isEmpty())
            inputs.error = QStringLiteral("%1: no text but binary data; --text merges it all the same").arg(input.path);
    }
    return wide;
}

} // namespace

MergeInputs readMergeInputs(const std::array<QString, 3> &paths, bool forceText, QIODevice &standardInput,
                            const std::function<void(const TextLines &)> &baseRead)
{
    MergeInputs inputs;
    for (size_t text = 0; text < paths.size(); ++text)
        inputs.texts[text].path = paths[text];
    readAll(inputs, standardInput, baseRead);
    if (inputs.error.isEmpty() && !forceText && needsDecoding(inputs) && inputs.error.isEmpty())
        decodeAll(inputs);
    return inputs;
}

} // namespace velmora::cli
