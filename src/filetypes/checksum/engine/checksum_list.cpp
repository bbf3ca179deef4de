#include "filetypes/checksum/engine/checksum_list.h"

#include "platform/file_access.h"

#include <QDir>

#include <string_view>

namespace velmora {

namespace {

// What cksum and the programs of BSD call them.
constexpr std::array<std::string_view, checksumAlgorithms.size()> tags{"MD5", "SHA1", "SHA256", "CRC32"};

std::optional<ChecksumAlgorithm> algorithmOfTag(std::string_view tag)
{
    for (const ChecksumAlgorithm algorithm : checksumAlgorithms) {
        if (tags[std::size_t(algorithm)] == tag)
            return algorithm;
    }
    return std::nullopt;
}

/// Nothing unless all of `digits` are hexadecimal and as many as a digest of `algorithm` has.
std::optional<QByteArray> digestOf(std::string_view digits, ChecksumAlgorithm algorithm)
{
    if (qsizetype(digits.size()) != 2 * digestSize(algorithm) ||
        digits.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos)
        return std::nullopt;
    return QByteArray::fromHex(QByteArray(digits.data(), qsizetype(digits.size())));
}

std::optional<ChecksumEntry> entryOf(std::string_view name, std::string_view digits, ChecksumAlgorithm algorithm)
{
    const std::optional<QByteArray> digest = digestOf(digits, algorithm);
    if (!digest || name.empty())
        return std::nullopt;
    return ChecksumEntry{nameFromNative(name), algorithm, *digest};
}

std::optional<ChecksumEntry> gnuEntry(std::string_view line)
{
    const std::size_t end = line.find(' ');
    if (end == std::string_view::npos || end + 2 >= line.size() || (line[end + 1] != ' ' && line[end + 1] != '*'))
        return std::nullopt;
    for (const ChecksumAlgorithm algorithm : checksumAlgorithms) {
        if (!canHold(ChecksumForm::Gnu, algorithm))
            continue;
        if (std::optional<ChecksumEntry> entry = entryOf(line.substr(end + 2), line.substr(0, end), algorithm))
            return entry;
    }
    return std::nullopt;
}

std::optional<ChecksumEntry> bsdEntry(std::string_view line)
{
    const std::size_t open = line.find(" (");
    const std::size_t close = line.rfind(") = ");
    if (open == std::string_view::npos || close == std::string_view::npos || close < open + 2)
        return std::nullopt;
    const std::optional<ChecksumAlgorithm> algorithm = algorithmOfTag(line.substr(0, open));
    if (!algorithm)
        return std::nullopt;
    return entryOf(line.substr(open + 2, close - open - 2), line.substr(close + 4), *algorithm);
}

std::optional<ChecksumEntry> sfvEntry(std::string_view line)
{
    const std::size_t gap = line.find_last_of(" \t");
    if (gap == std::string_view::npos)
        return std::nullopt;
    const std::size_t nameEnd = line.find_last_not_of(" \t", gap);
    if (nameEnd == std::string_view::npos)
        return std::nullopt;
    std::optional<ChecksumEntry> entry =
        entryOf(line.substr(0, nameEnd + 1), line.substr(gap + 1), ChecksumAlgorithm::Crc32);
    if (entry)
        entry->name.replace(u'\\', u'/');
    return entry;
}

QString unescaped(const QString &name)
{
    QString plain;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i] != u'\\' || i + 1 == name.size()) {
            plain += name[i];
            continue;
        }
        const QChar next = name[++i];
        plain += next == u'n' ? QChar(u'\n') : next == u'r' ? QChar(u'\r') : next;
    }
    return plain;
}

std::optional<ChecksumEntry> parsedLine(std::string_view line)
{
    const bool escapes = line.front() == '\\';
    const std::string_view rest = line.substr(escapes ? 1 : 0);
    std::optional<ChecksumEntry> entry = gnuEntry(rest);
    if (!entry)
        entry = bsdEntry(rest);
    if (entry && escapes)
        entry->name = unescaped(entry->name);
    return entry ? entry : sfvEntry(line);
}

std::string_view trimmedEnd(std::string_view line)
{
    return line.substr(0, line.find_last_not_of("\r\n") + 1); // npos + 1 is 0
}

} // namespace

ChecksumList parseChecksumList(QByteArrayView bytes)
{
    ChecksumList list;
    std::string_view rest(bytes.data(), std::size_t(bytes.size()));
    if (rest.starts_with("\xEF\xBB\xBF"))
        rest.remove_prefix(3);
    for (qsizetype number = 1; !rest.empty(); ++number) {
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        const std::string_view line = trimmedEnd(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (line.empty() || line.front() == ';' || line.front() == '#')
            continue;
        if (std::optional<ChecksumEntry> entry = parsedLine(line))
            list.entries.append(std::move(*entry));
        else if (list.badLines++ == 0)
            list.firstBadLine = number;
    }
    return list;
}

bool canHold(ChecksumForm form, ChecksumAlgorithm algorithm)
{
    return form == ChecksumForm::Bsd || (form == ChecksumForm::Sfv) == (algorithm == ChecksumAlgorithm::Crc32);
}

QByteArray checksumLine(ChecksumForm form, const ChecksumEntry &entry)
{
    QByteArray name = QByteArray::fromStdString(nativeName(entry.name));
    const bool escapes =
        form != ChecksumForm::Sfv && (name.contains('\n') || name.contains('\r') || name.contains('\\'));
    if (escapes)
        name.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r");
    const QByteArray start = escapes ? "\\" : "";
    const QByteArray digits = entry.digest.toHex();
    switch (form) {
    case ChecksumForm::Gnu:
        return start + digits + "  " + name + '\n';
    case ChecksumForm::Bsd:
        return start + tags[std::size_t(entry.algorithm)].data() + " (" + name + ") = " + digits + '\n';
    case ChecksumForm::Sfv:
        break;
    }
    return name + ' ' + digits.toUpper() + '\n';
}

std::optional<QString> pathWithin(const QString &name)
{
    const QString path = QDir::cleanPath(QDir::fromNativeSeparators(name));
    if (name.isEmpty() || name.contains(QChar(u'\0')) || QDir::isAbsolutePath(path) || path.startsWith(u'/') ||
        path == QLatin1String(".") || path == QLatin1String("..") || path.startsWith(QLatin1String("../")))
        return std::nullopt;
    return path;
}

} // namespace velmora
