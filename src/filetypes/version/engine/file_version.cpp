#include "filetypes/version/engine/file_version.h"

#include "filetypes/version/engine/version_resource.h"

#include <QtEndian>

#include <algorithm>

namespace velmora {

namespace {

constexpr qint64 longestHeaders = 64 * 1024;
constexpr qint64 longestResources = 64 * 1024 * 1024;

QByteArray bytesOf(OpenFile &file, qint64 offset, qint64 length)
{
    const qint64 size = file.size().value_or(0);
    QByteArray bytes(std::clamp<qint64>(size - offset, 0, length), Qt::Uninitialized);
    bytes.truncate(file.readAt(offset, bytes.data(), bytes.size()).length);
    return bytes;
}

/// The section that an address in memory lies in; null for none.
const PeSection *sectionAt(const PeImage &image, quint32 address)
{
    const QList<PeSection> &sections = image.sections();
    const auto at = std::find_if(sections.begin(), sections.end(), [address](const PeSection &section) {
        return address >= section.address && address - section.address < section.fileSize;
    });
    return at == sections.end() ? nullptr : &*at;
}

} // namespace

QString readFileVersion(OpenFile &file)
{
    // Most files are no programs, which their first bytes tell.
    if (bytesOf(file, 0, 2) != "MZ")
        return {};
    QByteArray excerpt = bytesOf(file, 0, longestHeaders);
    const std::optional<PeImage> headers = PeImage::read(ProgramBytes(excerpt));
    if (!headers)
        return {};
    const PeSection *section = sectionAt(*headers, headers->table(PeImage::Directory::Resources).address);
    if (!section)
        return {};
    // The section right behind the headers, and a header that says so: a small file for the reader of whole ones.
    const QByteArray resources =
        bytesOf(file, section->fileOffset, std::min<qint64>(section->fileSize, longestResources));
    const qint64 place = section->headerAt + 20;
    qToLittleEndian(quint32(excerpt.size()), excerpt.data() + place);
    excerpt += resources;
    const std::optional<PeImage> image = PeImage::read(ProgramBytes(excerpt));
    ProgramFacts facts;
    const QList<PeResource> found = image ? resourcesOf(*image, PeResourceType::Version, facts) : QList<PeResource>();
    for (const PeResource &resource : found)
        readVersionResource(image->bytes(), resource, facts);
    return facts.fileVersion ? versionText(*facts.fileVersion) : QString();
}

} // namespace velmora
