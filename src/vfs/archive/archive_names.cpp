#include "vfs/archive/archive_names.h"

#include "core/preferred_charsets.h"
#include "core/text_detect.h"
#include "core/text_transcode.h"
#include "core/utf8_text.h"
#include "platform/file_access.h"

#include <QByteArrayView>

namespace velmora {

namespace {

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
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
    if (isZip && m_charset == "ISO-8859-1" && canTranscode("IBM437"))
        m_charset = "IBM437";
}

QString ArchiveNames::text(const QByteArray &name) const
{
    if (QByteArrayView(name).isValidUtf8())
        return textOfUtf8(viewOf(name));
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
