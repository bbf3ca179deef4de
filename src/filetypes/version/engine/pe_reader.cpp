#include "filetypes/version/engine/pe_reader.h"

#include "filetypes/version/engine/pe_tables.h"
#include "filetypes/version/engine/program_essence.h"
#include "filetypes/version/engine/version_resource.h"

#include <QDateTime>

namespace velmora {

namespace {

constexpr NamedCode machineNames[] = {{0x14c, "I386"}, {0x8664, "AMD64"},   {0xaa64, "ARM64"},
                                      {0x1c0, "ARM"},  {0x1c4, "ARMNT"},    {0x200, "IA64"},
                                      {0xebc, "EBC"},  {0x5064, "RISCV64"}, {0xa641, "ARM64EC"}};
constexpr NamedCode subsystemNames[] = {{1, "NATIVE"},
                                        {2, "WINDOWS_GUI"},
                                        {3, "WINDOWS_CUI"},
                                        {7, "POSIX_CUI"},
                                        {9, "WINDOWS_CE_GUI"},
                                        {10, "EFI_APPLICATION"},
                                        {11, "EFI_BOOT_SERVICE_DRIVER"},
                                        {12, "EFI_RUNTIME_DRIVER"},
                                        {16, "WINDOWS_BOOT_APPLICATION"}};
constexpr NamedCode fileFlagNames[] = {{0x1, "RELOCS_STRIPPED"},
                                       {0x2, "EXECUTABLE_IMAGE"},
                                       {0x4, "LINE_NUMS_STRIPPED"},
                                       {0x8, "LOCAL_SYMS_STRIPPED"},
                                       {0x20, "LARGE_ADDRESS_AWARE"},
                                       {0x100, "32BIT_MACHINE"},
                                       {0x200, "DEBUG_STRIPPED"},
                                       {0x1000, "SYSTEM"},
                                       {0x2000, "DLL"}};
constexpr NamedCode dllFlagNames[] = {
    {0x20, "HIGH_ENTROPY_VA"}, {0x40, "DYNAMIC_BASE"},           {0x80, "FORCE_INTEGRITY"},
    {0x100, "NX_COMPAT"},      {0x200, "NO_ISOLATION"},          {0x400, "NO_SEH"},
    {0x800, "NO_BIND"},        {0x1000, "APPCONTAINER"},         {0x2000, "WDM_DRIVER"},
    {0x4000, "GUARD_CF"},      {0x8000, "TERMINAL_SERVER_AWARE"}};
constexpr NamedCode sectionFlagNames[] = {
    {0x20, "CODE"},         {0x40, "INITIALIZED_DATA"}, {0x80, "UNINITIALIZED_DATA"}, {0x2000000, "DISCARDABLE"},
    {0x10000000, "SHARED"}, {0x20000000, "EXECUTE"},    {0x40000000, "READ"},         {0x80000000, "WRITE"}};

QString pairText(quint32 major, quint32 minor)
{
    return QStringLiteral("%1.%2").arg(major).arg(minor);
}

void addFileHeader(const PeImage &image, ProgramFacts &facts)
{
    const ProgramBytes &bytes = image.bytes();
    const qint64 at = image.fileHeaderAt();
    facts.add(ProgramFact::Format, image.is64() ? QStringLiteral("PE32+") : QStringLiteral("PE32"),
              image.optionalHeaderAt());
    facts.add(ProgramFact::Machine, codeText(bytes.u16(at), machineNames), at);
    const quint32 stamp = bytes.u32(at + 4);
    facts.add(ProgramFact::LinkTime,
              QStringLiteral("%1 (%2)").arg(QDateTime::fromSecsSinceEpoch(stamp, Qt::UTC).toString(Qt::ISODate),
                                            hexText(stamp)),
              at + 4);
    facts.add(ProgramFact::Characteristics, flagsText(bytes.u16(at + 18), fileFlagNames), at + 18);
}

void addOptionalHeader(const PeImage &image, ProgramFacts &facts)
{
    const ProgramBytes &bytes = image.bytes();
    const qint64 at = image.optionalHeaderAt();
    facts.add(ProgramFact::Subsystem, codeText(bytes.u16(at + 68), subsystemNames), at + 68);
    facts.add(ProgramFact::SystemVersion, pairText(bytes.u16(at + 40), bytes.u16(at + 42)), at + 40);
    facts.add(ProgramFact::LinkerVersion, pairText(bytes.u8(at + 2), bytes.u8(at + 3)), at + 2);
    facts.add(ProgramFact::StoredChecksum, hexText(bytes.u32(at + 64)), at + 64);
    facts.add(ProgramFact::ComputedChecksum, hexText(peChecksum(image)), -1);
    const qint64 base = at + (image.is64() ? 24 : 28);
    facts.add(ProgramFact::ImageBase, hexText(image.is64() ? bytes.u64(base) : bytes.u32(base)), base);
    facts.add(ProgramFact::SizeOfImage, QString::number(bytes.u32(at + 56)), at + 56);
    facts.add(ProgramFact::EntryPoint, hexText(bytes.u32(at + 16)), at + 16);
    facts.add(ProgramFact::DllCharacteristics, flagsText(bytes.u16(at + 70), dllFlagNames), at + 70);
}

void addSections(const PeImage &image, ProgramFacts &facts)
{
    const ProgramBytes &bytes = image.bytes();
    qint64 left = 2 * bytes.size(); // sections that lie over each other could ask for any number of bytes to be hashed
    if (image.lacksSections())
        facts.addDamage(ProgramPart::Sections);
    for (const PeSection &section : image.sections()) {
        facts.add(ProgramFact::SectionSize, QString::number(section.virtualSize), section.headerAt + 8, section.name);
        facts.add(ProgramFact::SectionFlags, flagsText(section.flags, sectionFlagNames), section.headerAt + 36,
                  section.name);
        if (section.fileSize == 0)
            continue;
        left -= section.fileSize;
        if (left < 0 || !bytes.holds(section.fileOffset, section.fileSize)) {
            facts.addDamage(ProgramPart::Sections);
            continue;
        }
        const QByteArrayView content = bytes.slice(section.fileOffset, section.fileSize);
        facts.add(ProgramFact::SectionHash, QString::fromLatin1(hashOf(content).toHex()), section.fileOffset,
                  section.name);
    }
}

void addManifest(const PeImage &image, ProgramFacts &facts)
{
    const ProgramBytes &bytes = image.bytes();
    for (const PeResource &manifest : resourcesOf(image, PeResourceType::Manifest, facts)) {
        QString text = QString::fromUtf8(bytes.slice(manifest.at, manifest.size));
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        facts.add(ProgramFact::Manifest, text.trimmed(), manifest.at);
    }
}

/// Linkers leave a time stamp in the root of the resources, too.
void maskResourceStamp(const PeImage &image, QList<ByteRange> &masked)
{
    const PeImage::Table table = image.table(PeImage::Directory::Resources);
    const std::optional<qint64> root = table.address != 0 ? image.placeOf(table.address) : std::nullopt;
    if (root)
        masked.append({*root + 4, 4});
}

/// Where the signature is the end of the file, all before it is what is compared.
QByteArrayView withoutSignature(const PeImage &image)
{
    const PeImage::Table table = image.table(PeImage::Directory::Security);
    const QByteArrayView all = image.bytes().all();
    const bool isAtEnd = table.address != 0 && qint64(table.address) + table.size == all.size();
    return isAtEnd ? all.first(table.address) : all;
}

} // namespace

quint32 peChecksum(const PeImage &image)
{
    const ProgramBytes &bytes = image.bytes();
    const qint64 stored = image.optionalHeaderAt() + 64;
    quint64 sum = 0;
    for (qint64 at = 0; at + 1 < bytes.size(); at += 2)
        sum += quint8(bytes.all()[at]) | quint32(quint8(bytes.all()[at + 1])) << 8;
    if (bytes.size() % 2 != 0)
        sum += quint8(bytes.all()[bytes.size() - 1]);
    // Where the header lies at an odd place its words are not those that were added; no linker does that.
    sum -= stored % 2 == 0 ? bytes.u16(stored) + bytes.u16(stored + 2) : 0;
    while (sum > 0xffff)
        sum = (sum & 0xffff) + (sum >> 16);
    return quint32(sum + quint64(bytes.size()));
}

ProgramFacts readPeFacts(const PeImage &image)
{
    ProgramFacts facts;
    facts.format = ProgramFacts::Format::Pe;
    for (const PeResource &resource : resourcesOf(image, PeResourceType::Version, facts))
        readVersionResource(image.bytes(), resource, facts);
    addFileHeader(image, facts);
    addOptionalHeader(image, facts);
    QList<ByteRange> masked{{image.fileHeaderAt() + 4, 4}, {image.optionalHeaderAt() + 64, 4}};
    readImports(image, facts);
    readExports(image, facts, masked);
    readDebug(image, facts, masked);
    addManifest(image, facts);
    readSignature(image, facts, masked);
    addSections(image, facts);
    maskResourceStamp(image, masked);
    facts.essence = hashWithout(withoutSignature(image), masked);
    return facts;
}

} // namespace velmora
