#include "text/text_saver.h"

#include "core/safe_file.h"
#include "core/text_encode.h"
#include "core/text_file.h"

namespace velmora {

namespace {

/// False when `encoding` would write what it reads in other bytes: some encodings know several forms of one
/// character, and decoding keeps no record of which one it was.
bool keepsBytes(const TextEncoding &encoding, const QByteArray &onDisk)
{
    if (encoding.charset().startsWith("UTF-"))
        return true;
    const DecodedText decoded = decodeText(onDisk, encoding);
    return decoded.undecodable > 0 || encodeText(decoded.lines.bytes(), encoding).bytes == onDisk;
}

} // namespace

TextSaveResult saveText(const TextLines &text, const TextEncoding &encoding, const QString &path)
{
    using End = TextSaveResult::End;
    const QByteArray onDisk = readFile(path).bytes;
    TextEncoding written = encoding.isAutomatic() ? TextEncoding::ofCharset("UTF-8", false) : encoding;
    // A file keeps its mark, or its lack of one, also when it was read by an encoding that says otherwise.
    if (!onDisk.isEmpty() && !written.markBytes().isEmpty())
        written = TextEncoding::ofCharset(written.charset(), onDisk.startsWith(written.markBytes()));
    const EncodedText encoded = encodeText(text.bytes(), written);
    if (!encoded.ok())
        return {End::NotEncodable, encoded.failedCharacter, encoded.failedLine, {}};
    if (!keepsBytes(written, onDisk))
        return {End::NotFaithful, {}, -1, {}};
    const SaveResult saved = saveFile(path, encoded.bytes);
    return {saved.ok() ? End::Saved : End::NotWritten, {}, -1, saved.error};
}

} // namespace velmora
