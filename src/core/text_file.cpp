#include "core/text_file.h"

#include "core/preferred_charsets.h"
#include "core/text_detect.h"
#include "core/text_scan.h"
#include "core/text_transcode.h"
#include "platform/memory_hint.h"

#include <QFile>
#include <QFileInfo>

#include <system_error>

namespace velmora {

namespace {

/// Reading stops for a cancel request, and a file that turns out longer than it said grows the buffer, in this step.
constexpr qsizetype readStep = 8 * 1024 * 1024;

/// From here on the first use of the buffer's pages costs more than reading the file into them.
constexpr qsizetype largeFile = 4 * 1024 * 1024;

QString systemWords(std::errc error)
{
    return QString::fromStdString(std::make_error_code(error).message());
}

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

LineEndStyle styleOf(const ByteCounts &counts)
{
    const bool crLf = counts.crLfPairs > 0;
    const bool lf = counts.lineFeeds > counts.crLfPairs;
    const bool cr = counts.carriageReturns > counts.crLfPairs;
    if (int(crLf) + int(lf) + int(cr) > 1)
        return LineEndStyle::Mixed;
    return crLf ? LineEndStyle::CrLf : cr ? LineEndStyle::Cr : LineEndStyle::Lf;
}

bool isWide(const QByteArray &charset)
{
    return charset.startsWith("UTF-16") || charset.startsWith("UTF-32");
}

void detect(DecodedText &text, std::string_view bytes, const TextScan &scan)
{
    if (scan.counts.zeros > 0) {
        if (const auto encoding = encodingByZeros(bytes, scan.validUtf8)) {
            text.encoding = *encoding;
            return;
        }
    }
    text.encoding =
        scan.validUtf8 ? TextEncoding::ofCharset("UTF-8", false) : encodingByStatistics(bytes, preferredCharsets());
    text.encodingGuessed = text.encoding.charset() != "UTF-8";
}

/// True when the bytes of a text of `charset` are its UTF-8 form already.
bool isUtf8AsItStands(const QByteArray &charset, const TextScan &scan)
{
    return scan.validUtf8 && (charset == "UTF-8" || (scan.counts.ascii && charset == "US-ASCII"));
}

void readAll(QFile &file, const CancelFlag &cancel, FileContents &contents)
{
    if (file.size() > TextLines::maximumSize) {
        contents.error = systemWords(std::errc::file_too_large);
        return;
    }
    // One byte more than the file says, so that its end is seen without a second allocation.
    contents.bytes = QByteArray(file.size() + 1, Qt::Uninitialized);
    if (contents.bytes.size() >= largeFile)
        expectFullUse(contents.bytes.data(), size_t(contents.bytes.size()));
    qsizetype filled = 0;
    while (!cancel.isCancelled()) {
        if (filled == contents.bytes.size())
            contents.bytes.resize(filled + readStep);
        const qint64 wanted = std::min(readStep, contents.bytes.size() - filled);
        const qint64 got = file.read(contents.bytes.data() + filled, wanted);
        if (got < 0)
            contents.error = file.errorString();
        if (got <= 0)
            break;
        filled += got;
        if (filled > TextLines::maximumSize) { // the system did not tell its size
            contents = {{}, systemWords(std::errc::file_too_large)};
            return;
        }
    }
    contents.bytes.resize(filled);
}

} // namespace

QString lineEndStyleName(LineEndStyle style)
{
    switch (style) {
    case LineEndStyle::CrLf:
        return QStringLiteral("CRLF");
    case LineEndStyle::Cr:
        return QStringLiteral("CR");
    case LineEndStyle::Mixed:
        return QStringLiteral("Mixed");
    case LineEndStyle::Lf:
        break;
    }
    return QStringLiteral("LF");
}

DecodedText decodeText(const QByteArray &raw, const TextEncoding &encoding, const CancelFlag &cancel)
{
    DecodedText text;
    text.encoding = encoding;
    text.tooLarge = raw.size() > TextLines::maximumSize;
    if (text.tooLarge)
        return text;

    const std::string_view bytes = viewOf(raw);
    if (encoding.isAutomatic())
        text.encoding = encodingByMark(bytes).value_or(TextEncoding());
    const QByteArray mark = text.encoding.markBytes();
    const size_t begin = !mark.isEmpty() && bytes.starts_with(viewOf(mark)) ? size_t(mark.size()) : 0;

    const TextScan scan = scanText(bytes, begin, cancel);
    if (cancel.isCancelled())
        return text;
    if (text.encoding.isAutomatic())
        detect(text, bytes, scan);
    text.binary = scan.counts.zeros > 0 && !isWide(text.encoding.charset());

    if (isUtf8AsItStands(text.encoding.charset(), scan)) {
        text.lines = TextLines::split(raw, qsizetype(begin), scan.counts, cancel);
        text.lineEnds = styleOf(scan.counts);
        return text;
    }

    const Utf8Output output = transcodeToUtf8(bytes.substr(begin), text.encoding.charset(), cancel);
    text.tooLarge = output.bytes.size() > TextLines::maximumSize;
    if (text.tooLarge || cancel.isCancelled())
        return text;
    const TextScan decoded = scanText(viewOf(output.bytes), 0, cancel);
    if (cancel.isCancelled())
        return text;
    text.lines = TextLines::split(output.bytes, 0, decoded.counts, cancel);
    text.lineEnds = styleOf(decoded.counts);
    text.undecodable = output.undecodable;
    if (output.undecodable > 0)
        text.firstUndecodableLine = text.lines.lineAt(output.firstUndecodable);
    return text;
}

FileContents readFile(const QString &path, const CancelFlag &cancel)
{
    FileContents contents;
    if (path.isEmpty()) {
        contents.error = systemWords(std::errc::no_such_file_or_directory);
        return contents;
    }
    // Opening a pipe would wait for its other end, and opening a device can make it act.
    const QFileInfo info(path);
    if (info.isDir()) {
        contents.error = systemWords(std::errc::is_a_directory);
        return contents;
    }
    if (info.exists() && !info.isFile()) {
        contents.error = systemWords(std::errc::not_supported);
        return contents;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        contents.error = file.errorString();
        return contents;
    }

    readAll(file, cancel, contents);
    return contents;
}

} // namespace velmora
