#include "filetypes/registry/engine/reg_writer.h"

#include "filetypes/registry/engine/registry_text.h"

#include <QtEndian>

namespace velmora {

namespace {

constexpr QLatin1String lineEnd("\r\n");

QString quoted(const QString &text)
{
    QString out(u'"');
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\')
            out += u'\\';
        out += c;
    }
    return out + u'"';
}

/// The digits of `data` behind `start`, which is broken into lines as long as the editor makes them.
QString hexLines(const QString &start, const QByteArray &data)
{
    constexpr qsizetype longestLine = 77;
    static constexpr char digits[] = "0123456789abcdef";
    QString out = start;
    qsizetype length = start.size();
    for (qsizetype k = 0; k < data.size(); ++k) {
        if (k > 0) {
            out += u',';
            if (++length >= longestLine) {
                out += QLatin1String("\\\r\n  ");
                length = 2;
            }
        }
        const auto byte = quint8(data[k]);
        out += QLatin1Char(digits[byte >> 4]);
        out += QLatin1Char(digits[byte & 15]);
        length += 2;
    }
    return out;
}

/// Texts stand in quotation marks where they are read back the same.
bool canStandQuoted(const RegistryValue &value)
{
    const std::optional<QString> text = value.type == RegistryType::String ? wholeText(value.data) : std::nullopt;
    return text && !text->contains(u'\r') && !text->contains(u'\n');
}

QString line(const RegistryValue &value)
{
    const QString start = (value.name.isEmpty() ? QStringLiteral("@") : quoted(value.name)) + u'=';
    if (value.isDeletion)
        return start + u'-';
    if (canStandQuoted(value))
        return start + quoted(*wholeText(value.data));
    if (value.type == RegistryType::Dword && value.data.size() == 4)
        return start + QStringLiteral("dword:%1").arg(dwordOf(value.data), 8, 16, QLatin1Char('0'));
    const QString type = value.type == RegistryType::Binary
                             ? QString()
                             : QStringLiteral("(%1)").arg(QString::number(quint32(value.type), 16));
    return hexLines(start + QStringLiteral("hex") + type + u':', value.data);
}

/// Letter by letter: an encoder would replace what is no text, and names may be none.
QByteArray utf16File(const QString &text)
{
    QByteArray bytes(2 * (text.size() + 1), Qt::Uninitialized);
    qToLittleEndian<char16_t>(u'\xfeff', bytes.data());
    qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data() + 2);
    return bytes;
}

} // namespace

QByteArray registryFile(const RegistryTree &tree)
{
    QString text = QStringLiteral("Windows Registry Editor Version 5.00") + lineEnd + lineEnd;
    for (const RegistryKey &key : tree.keys) {
        if (key.isDeletion)
            text += QStringLiteral("[-") + key.path + u']' + lineEnd + (key.values.empty() ? lineEnd : QLatin1String());
        if (key.isDeletion && key.values.empty())
            continue;
        text += u'[' + key.path + u']' + lineEnd;
        for (const RegistryValue &value : key.values)
            text += line(value) + lineEnd;
        text += lineEnd;
    }
    return utf16File(text);
}

} // namespace velmora
