#include "filetypes/registry/engine/registry_file.h"

#include "core/text_file.h"
#include "core/text_transcode.h"

#include <QtEndian>

namespace velmora {

namespace {

RegistryReading takeReading(RegReading &&read)
{
    RegistryReading reading;
    reading.tree = std::move(read.tree);
    reading.badLines = read.badLines;
    reading.firstBadLine = read.firstBadLine;
    if (!read.hasHeader)
        reading.fault = RegistryFault::NotRegistry;
    return reading;
}

/// The text of UTF-16 bytes behind their mark.
QString utf16Text(const QByteArray &bytes, bool isBigEndian)
{
    const qsizetype count = (bytes.size() - 2) / 2;
    QString text(count, Qt::Uninitialized);
    auto *out = reinterpret_cast<char16_t *>(text.data());
    const char *in = bytes.constData() + 2;
    if (isBigEndian)
        qFromBigEndian<char16_t>(in, count, out);
    else
        qFromLittleEndian<char16_t>(in, count, out);
    return text;
}

} // namespace

RegistryReading readRegistry(const QByteArray &bytes, const TextEncoding &encoding, const CancelFlag &cancel)
{
    const bool isLittle = bytes.startsWith("\xff\xfe");
    if (isLittle || bytes.startsWith("\xfe\xff"))
        return takeReading(readRegText(utf16Text(bytes, !isLittle), "UTF-8", cancel));
    const TextEncoding found = decodeText(bytes, encoding, cancel).encoding;
    const QByteArray mark = found.markBytes();
    const QByteArray body = !mark.isEmpty() && bytes.startsWith(mark) ? bytes.mid(mark.size()) : bytes;
    const Utf8Output utf8 = transcodeToUtf8({body.constData(), std::size_t(body.size())}, found.charset(), cancel);
    return takeReading(readRegText(QString::fromUtf8(utf8.bytes), found.charset(), cancel));
}

RegistryReading loadRegistry(const QString &path, const TextEncoding &encoding, const CancelFlag &cancel)
{
    const FileContents file = readFile(path, cancel);
    if (!file.ok()) {
        RegistryReading reading;
        reading.fault = RegistryFault::CannotOpen;
        reading.detail = file.error;
        return reading;
    }
    return readRegistry(file.bytes, encoding, cancel);
}

} // namespace velmora
