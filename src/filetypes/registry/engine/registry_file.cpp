#include "filetypes/registry/engine/registry_file.h"

#include "core/text_file.h"
#include "core/text_transcode.h"

#include <QtEndian>

#include <algorithm>

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

RegistryReading readExport(const QByteArray &bytes, bool isBigEndian, const CancelFlag &cancel)
{
    RegReading read = readRegText(utf16Text(bytes, isBigEndian), "UTF-8", cancel);
    const bool isWhole = read.endsEmpty && bytes.size() % 2 == 0;
    RegistryReading reading = takeReading(std::move(read));
    reading.mayBeCutOff = reading.ok() && !isWhole;
    return reading;
}

/// The letters beyond ASCII of the texts of a tree that was read as Latin-1: the bytes that stand for them.
QByteArray foreignBytes(const RegistryTree &tree)
{
    QByteArray bytes;
    for (const RegistryKey &key : tree.keys) {
        for (const RegistryValue &value : key.values) {
            const bool isText = value.type == RegistryType::ExpandString || value.type == RegistryType::MultiString ||
                                value.type == RegistryType::String;
            QByteArray text;
            for (qsizetype at = 0; isText && at < value.data.size(); at += 2)
                text.append(value.data[at] == 0 ? ' ' : value.data[at]);
            if (std::any_of(text.begin(), text.end(), [](char c) { return quint8(c) >= 0x80; }))
                bytes += text + '\n';
        }
    }
    return bytes;
}

/// Bytes without a mark of UTF-16.
RegistryReading readNational(const QByteArray &bytes, const TextEncoding &encoding, const CancelFlag &cancel)
{
    const DecodedText decoded = decodeText(bytes, encoding, cancel);
    const QByteArray mark = decoded.encoding.markBytes();
    const QByteArray body = !mark.isEmpty() && bytes.startsWith(mark) ? bytes.mid(mark.size()) : bytes;
    QByteArray charset = decoded.encoding.charset();
    const QString text =
        QString::fromUtf8(transcodeToUtf8({body.constData(), std::size_t(body.size())}, charset, cancel).bytes);
    const bool lettersTell = !decoded.lines.isAscii() || !encoding.isAutomatic();
    RegReading read = readRegText(text, lettersTell ? charset : QByteArray("ISO-8859-1"), cancel);
    if (!lettersTell) {
        const QByteArray foreign = read.isVersion4 ? foreignBytes(read.tree) : QByteArray();
        charset = foreign.isEmpty() ? QByteArray() : decodeText(foreign, encoding, cancel).encoding.charset();
        if (!charset.isEmpty())
            read = readRegText(text, charset, cancel);
    }
    const bool isNational = read.isVersion4 && charset != "UTF-8";
    RegistryReading reading = takeReading(std::move(read));
    reading.charset = isNational ? charset : QByteArray();
    return reading;
}

} // namespace

RegistryReading readRegistry(const QByteArray &bytes, const TextEncoding &encoding, const CancelFlag &cancel)
{
    const bool isLittle = bytes.startsWith("\xff\xfe");
    if (isLittle || bytes.startsWith("\xfe\xff"))
        return readExport(bytes, !isLittle, cancel);
    return readNational(bytes, encoding, cancel);
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
