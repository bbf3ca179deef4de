#include "session/document/text_saver.h"

#include "core/safe_file.h"
#include "core/text_encode.h"
#include "core/text_file.h"

#include <QIODevice>

namespace velmora {

namespace {

using End = TextSaveResult::End;
using Target = TextSaveRequest::Target;

constexpr qsizetype writeStep = 1024 * 1024;

/// False when `encoding` would write what it reads in other bytes: some encodings know several forms of one
/// character, and decoding keeps no record of which one it was.
bool keepsBytes(const TextEncoding &encoding, const QByteArray &onDisk)
{
    if (!encoding.markBytes().isEmpty()) // the forms of Unicode that have one spelling of each character
        return true;
    const DecodedText decoded = decodeText(onDisk, encoding);
    return decoded.undecodable > 0 || encodeText(decoded.lines.bytes(), encoding).bytes == onDisk;
}

/// The encoding that the text was read by, as the file at its place has it.
TextEncoding encodingOf(const TextSaveRequest &request, const QByteArray &onDisk)
{
    const TextEncoding read =
        request.encoding.isAutomatic() ? TextEncoding::ofCharset("UTF-8", false) : request.encoding;
    // A file keeps its mark, or its lack of one, also when it was read by an encoding that says otherwise.
    const QByteArray mark = read.markBytes();
    if (onDisk.isEmpty() || mark.isEmpty())
        return read;
    return TextEncoding::ofCharset(read.charset(), onDisk.startsWith(mark));
}

SaveResult writeBytes(const QString &path, const QByteArray &bytes, Progress &progress)
{
    return saveFile(path, [&](QIODevice &device) {
        for (qsizetype at = 0; at < bytes.size(); at += writeStep) {
            progress.report(0, at, bytes.size());
            const qsizetype piece = std::min(writeStep, bytes.size() - at);
            if (device.write(bytes.constData() + at, piece) != piece)
                return false;
        }
        return true;
    });
}

TextSaveResult notWritten(const QString &error)
{
    TextSaveResult result;
    result.end = End::NotWritten;
    result.error = error;
    return result;
}

} // namespace

TextSaveResult saveText(const TextSaveRequest &request, Progress &progress)
{
    progress.report(0, 0, 0);
    TextSaveResult result;
    result.stamp = FileStamp::of(request.path);
    if (request.target == Target::AsRead && result.stamp != request.stamp) {
        result.end = End::ChangedMeanwhile;
        return result;
    }

    FileContents onDisk;
    if (request.target != Target::Other && result.stamp.isFile())
        onDisk = readFile(request.path);
    if (!onDisk.ok())
        return notWritten(onDisk.error);
    const TextEncoding encoding = request.converted.value_or(encodingOf(request, onDisk.bytes));

    result.written = request.text->toLines();
    const EncodedText encoded = encodeText(result.written.bytes(), encoding);
    if (!encoded.ok()) {
        result.end = End::NotEncodable;
        result.character = encoded.failedCharacter;
        result.line = encoded.failedLine;
        return result;
    }
    if (!request.converted && !keepsBytes(encoding, onDisk.bytes)) {
        result.end = End::NotFaithful;
        return result;
    }
    // Encoding a long text takes its time.
    if (request.target == Target::AsRead && FileStamp::of(request.path) != request.stamp) {
        result.end = End::ChangedMeanwhile;
        return result;
    }
    const SaveResult saved = writeBytes(request.path, encoded.bytes, progress);
    if (!saved.ok())
        return notWritten(saved.error);
    result.stamp = FileStamp::of(request.path);
    return result;
}

} // namespace velmora
