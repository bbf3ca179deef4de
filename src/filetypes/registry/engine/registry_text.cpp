#include "filetypes/registry/engine/registry_text.h"

#include <QMap>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace velmora {

namespace {

QString utf16Of(const QByteArray &data)
{
    QString text(data.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<char16_t>(data.constData(), text.size(), reinterpret_cast<char16_t *>(text.data()));
    return text;
}

/// Texts, each with a zero behind it, and one more at the end; nothing for data of another shape.
std::optional<QStringList> textList(const QByteArray &data)
{
    QString text = data.size() % 2 == 0 ? utf16Of(data) : QString();
    if (!text.endsWith(QChar(u'\0')))
        return data.isEmpty() ? std::optional(QStringList()) : std::nullopt;
    text.chop(1);
    if (text.endsWith(QChar(u'\0')))
        text.chop(1);
    return text.isEmpty() ? QStringList() : text.split(QChar(u'\0'));
}

QString hexDump(const QByteArray &data)
{
    constexpr qsizetype perLine = 16;
    QString text;
    for (qsizetype at = 0; at < data.size(); at += perLine) {
        const QByteArray row = data.mid(at, perLine);
        if (at > 0)
            text += u'\n';
        text += QString::fromLatin1(row.toHex(' ')).leftJustified(3 * perLine + 1);
        for (const char byte : row)
            text += byte >= 0x20 && byte < 0x7f ? QLatin1Char(byte) : QLatin1Char('.');
    }
    return text;
}

QString numberText(quint64 number, int digits)
{
    return QStringLiteral("0x%1 (%2)").arg(number, digits, 16, QLatin1Char('0')).arg(number);
}

} // namespace

std::optional<QString> wholeText(const QByteArray &data)
{
    if (data.size() % 2 != 0 || data.isEmpty())
        return std::nullopt;
    QString text = utf16Of(data);
    if (text.indexOf(QChar(u'\0')) != text.size() - 1)
        return std::nullopt;
    text.chop(1);
    return text;
}

quint32 dwordOf(const QByteArray &data)
{
    return qFromLittleEndian<quint32>(data.constData());
}

QString valueText(const RegistryValue &value)
{
    switch (value.type) {
    case RegistryType::String:
    case RegistryType::ExpandString:
    case RegistryType::Link:
        if (const std::optional<QString> text = wholeText(value.data))
            return *text;
        break;
    case RegistryType::MultiString:
        if (const std::optional<QStringList> list = textList(value.data))
            return list->join(u'\n');
        break;
    case RegistryType::Dword:
        if (value.data.size() == 4)
            return numberText(dwordOf(value.data), 8);
        break;
    case RegistryType::DwordBigEndian:
        if (value.data.size() == 4)
            return numberText(qFromBigEndian<quint32>(value.data.constData()), 8);
        break;
    case RegistryType::Qword:
        if (value.data.size() == 8)
            return numberText(qFromLittleEndian<quint64>(value.data.constData()), 16);
        break;
    default:
        break;
    }
    return hexDump(value.data);
}

QStringList listEntries(const RegistryValue &value)
{
    if (value.type == RegistryType::MultiString)
        return textList(value.data).value_or(QStringList());
    const bool isText = value.type == RegistryType::String || value.type == RegistryType::ExpandString;
    const QString text = isText ? wholeText(value.data).value_or(QString()) : QString();
    const QStringList entries = text.split(u';', Qt::SkipEmptyParts);
    // One folder with a drive or a variable in front tells a search path from a sentence with semicolons.
    const bool isPath = entries.size() > 1 && std::any_of(entries.begin(), entries.end(), [](const QString &entry) {
                            return entry.contains(u'\\') || entry.startsWith(u'%');
                        });
    return isPath ? entries : QStringList();
}

std::optional<EntryChanges> entryChanges(const RegistryValue &left, const RegistryValue &right)
{
    const QStringList before = listEntries(left);
    const QStringList after = listEntries(right);
    if (before.isEmpty() || after.isEmpty())
        return std::nullopt;
    QMap<QString, qsizetype> surplus;
    for (const QString &entry : before)
        --surplus[entry.toCaseFolded()];
    for (const QString &entry : after)
        ++surplus[entry.toCaseFolded()];
    EntryChanges changes;
    for (const qsizetype count : std::as_const(surplus))
        (count > 0 ? changes.added : changes.removed) += std::abs(count);
    return changes;
}

} // namespace velmora
