#include "filetypes/version/engine/pe_image.h"

namespace velmora {

namespace {

constexpr qint64 fileHeaderSize = 20;
constexpr qint64 sectionHeaderSize = 40;
constexpr quint16 magic32 = 0x10b;
constexpr quint16 magic64 = 0x20b;
/// Up to the number of tables, for 32 and 64 bits.
constexpr qint64 fixedPart32 = 96;
constexpr qint64 fixedPart64 = 112;

} // namespace

std::optional<PeImage> PeImage::read(ProgramBytes bytes)
{
    constexpr qint64 headerPointer = 0x3c;
    if (bytes.slice(0, 2) != QByteArrayView("MZ") || !bytes.holds(headerPointer, 4))
        return std::nullopt;
    const qint64 signature = bytes.u32(headerPointer);
    if (bytes.slice(signature, 4) != QByteArrayView("PE\0\0", 4))
        return std::nullopt;
    PeImage image(bytes);
    image.m_fileHeader = signature + 4;
    image.m_optionalHeader = image.m_fileHeader + fileHeaderSize;
    const quint16 magic = bytes.u16(image.m_optionalHeader);
    image.m_is64 = magic == magic64;
    const qint64 size = bytes.u16(image.m_fileHeader + 16);
    const qint64 least = image.m_is64 ? fixedPart64 : fixedPart32;
    if ((magic != magic32 && magic != magic64) || size < least || !bytes.holds(image.m_optionalHeader, size))
        return std::nullopt;
    image.readSections();
    return image;
}

void PeImage::readSections()
{
    const qint64 first = m_optionalHeader + m_bytes.u16(m_fileHeader + 16);
    const int count = m_bytes.u16(m_fileHeader + 2);
    for (int k = 0; k < count; ++k) {
        const qint64 at = first + k * sectionHeaderSize;
        if (!m_bytes.holds(at, sectionHeaderSize)) {
            m_lacksSections = true;
            return;
        }
        m_sections.append({sectionName(at), m_bytes.u32(at + 8), m_bytes.u32(at + 12), m_bytes.u32(at + 16),
                           m_bytes.u32(at + 20), m_bytes.u32(at + 36), at});
    }
}

/// A name of more than eight letters stands behind the symbols; "/4" says where.
QString PeImage::sectionName(qint64 at) const
{
    const QByteArrayView field = m_bytes.slice(at, 8);
    const qsizetype end = field.indexOf('\0');
    const QByteArray name = (end < 0 ? field : field.first(end)).toByteArray();
    if (name.startsWith('/')) {
        constexpr qint64 symbolSize = 18;
        const qint64 strings = qint64(m_bytes.u32(m_fileHeader + 8)) + m_bytes.u32(m_fileHeader + 12) * symbolSize;
        bool isNumber = false;
        const quint32 offset = name.mid(1).toUInt(&isNumber);
        const QByteArrayView longName = isNumber ? m_bytes.text(strings + offset, 256) : QByteArrayView();
        if (!longName.isEmpty())
            return QString::fromLatin1(longName);
    }
    return QString::fromLatin1(name);
}

PeImage::Table PeImage::table(Directory directory) const
{
    const qint64 tables = m_optionalHeader + (m_is64 ? fixedPart64 : fixedPart32);
    const qint64 end = m_optionalHeader + m_bytes.u16(m_fileHeader + 16);
    const qint64 at = tables + 8 * qint64(directory);
    if (quint32(directory) >= m_bytes.u32(tables - 4) || at + 8 > end)
        return {};
    return {m_bytes.u32(at), m_bytes.u32(at + 4), at};
}

std::optional<qint64> PeImage::placeOf(quint32 address) const
{
    for (const PeSection &section : m_sections) {
        if (address >= section.address && address - section.address < section.fileSize) {
            const qint64 place = qint64(section.fileOffset) + (address - section.address);
            return place < m_bytes.size() ? std::optional(place) : std::nullopt;
        }
    }
    const quint32 headers = m_bytes.u32(m_optionalHeader + 60);
    return address < headers && address < m_bytes.size() ? std::optional<qint64>(address) : std::nullopt;
}

} // namespace velmora
