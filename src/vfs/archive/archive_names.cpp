#include "vfs/archive/archive_names.h"

#include "core/preferred_charsets.h"
#include "core/text_detect.h"
#include "core/text_transcode.h"
#include "core/utf8_text.h"
#include "platform/file_access.h"

#include <QByteArrayView>

#include <algorithm>

namespace velmora {

namespace {

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

/// Zips of MS-DOS and of Windows have names in the code page of the console, which statistics take for one of the
/// window system: its letters stand where that has signs which hardly any name holds.
bool looksLikeCodePage437(const QByteArray &sample, const QByteArray &guess)
{
    const bool isWestern = guess == "ISO-8859-1" || guess == "ISO-8859-15" || guess == "WINDOWS-1252" ||
                           guess == "WINDOWS-1250" || guess == "ISO-8859-2" || guess == "WINDOWS-1257";
    return isWestern && std::all_of(sample.begin(), sample.end(), [](char byte) {
               const auto value = static_cast<unsigned char>(byte);
               return value < 0xA6U || value == 0xE1U; // the last is a sharp s
           });
}

/// So many bytes tell the encoding.
constexpr qsizetype sampleSize = 32 * 1024;

} // namespace

ArchiveNames::ArchiveNames(const std::vector<ArchiveEntry> &entries, bool isZip)
{
    QByteArray sample;
    for (const ArchiveEntry &entry : entries) {
        if (QByteArrayView(entry.name).isValidUtf8())
            continue;
        sample += entry.name + '\n';
        if (sample.size() > sampleSize)
            break;
    }
    if (sample.isEmpty())
        return;
    m_charset = encodingByStatistics(viewOf(sample), preferredCharsets()).charset();
    if (isZip && looksLikeCodePage437(sample, m_charset) && canTranscode("IBM437"))
        m_charset = "IBM437";
}

QString ArchiveNames::text(const QByteArray &name) const
{
    if (QByteArrayView(name).isValidUtf8())
        return textOfUtf8(viewOf(name));
    if (m_charset.isEmpty())
        return nameFromNative(viewOf(name));
    const Utf8Output decoded = transcodeToUtf8(viewOf(name), m_charset, {});
    if (decoded.bytes.isEmpty() || decoded.undecodable > 0)
        return nameFromNative(viewOf(name));
    return textOfUtf8(viewOf(decoded.bytes));
}

ArchiveNameParts partsOfName(const QString &name)
{
    constexpr qsizetype mostUnits = 1024;
    if (name.startsWith(u'/') || (name.size() > 1 && name.at(1) == u':' && name.at(0).isLetter()))
        return {{}, ArchiveNameFault::LeadsOut};
    ArchiveNameParts result;
    for (const QStringView part : QStringView(name).tokenize(u'/')) {
        if (part.isEmpty() || part == u".")
            continue;
        if (part == u"..")
            return {{}, ArchiveNameFault::LeadsOut};
        if (part.size() > mostUnits || part.contains(QChar(u'\0')))
            return {{}, ArchiveNameFault::Unfit};
        result.parts.append(part.toString());
    }
    return result;
}

} // namespace velmora
