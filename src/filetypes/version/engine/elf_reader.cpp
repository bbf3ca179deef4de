#include "filetypes/version/engine/elf_reader.h"

#include "filetypes/version/engine/program_bytes.h"
#include "filetypes/version/engine/program_essence.h"

#include <QMap>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

constexpr NamedCode machineNames[] = {{3, "386"},       {8, "MIPS"},    {20, "PPC"},       {21, "PPC64"},
                                      {22, "S390"},     {40, "ARM"},    {50, "IA_64"},     {62, "X86_64"},
                                      {183, "AARCH64"}, {243, "RISCV"}, {258, "LOONGARCH"}};
constexpr NamedCode typeNames[] = {{1, "REL"}, {2, "EXEC"}, {3, "DYN"}, {4, "CORE"}};
constexpr NamedCode sectionFlagNames[] = {{0x1, "WRITE"},  {0x2, "ALLOC"},    {0x4, "EXECINSTR"},
                                          {0x10, "MERGE"}, {0x20, "STRINGS"}, {0x400, "TLS"}};

/// A hostile file may ask for any number of entries; none of these tables is as long in a program.
constexpr qint64 mostEntries = 65536;

struct Segment {
    quint32 type = 0;
    qint64 offset = 0;
    quint64 address = 0;
    qint64 size = 0; ///< in the file
};

struct Section {
    QString name;
    quint32 type = 0;
    quint64 flags = 0;
    qint64 offset = 0;
    qint64 size = 0;
    qint64 headerAt = 0;
};

class ElfReader {
public:
    explicit ElfReader(ProgramBytes bytes) : m_bytes(bytes), m_is64(bytes.u8(4) == 2) {}

    ProgramFacts facts();

private:
    /// A number as wide as addresses are.
    [[nodiscard]] quint64 wide(qint64 at) const { return m_is64 ? m_bytes.u64(at) : m_bytes.u32(at); }
    /// The same as a place or length in the file; -1 for one that no file has.
    [[nodiscard]] qint64 place(qint64 at) const
    {
        const quint64 value = wide(at);
        return value <= quint64(m_bytes.size()) ? qint64(value) : -1;
    }
    [[nodiscard]] qint64 pick(qint64 of64, qint64 of32) const { return m_is64 ? of64 : of32; }
    [[nodiscard]] std::optional<qint64> placeOf(quint64 address) const;

    void addHeader();
    void readSegments();
    void readSections();
    void readNotes(const Segment &segment);
    void readDynamic(const Segment &segment);
    void readNeededVersions(qint64 at, qint64 count, qint64 strings);
    void addSections();

    ProgramBytes m_bytes;
    bool m_is64;
    ProgramFacts m_facts;
    QList<Segment> m_segments;
    QList<Section> m_sections;
    QMap<QString, QStringList> m_versions; ///< that are wanted of libraries
    QList<ByteRange> m_masked;
};

void ElfReader::addHeader()
{
    m_facts.add(ProgramFact::Format,
                QStringLiteral("ELF%1 %2").arg(m_is64 ? 64 : 32).arg(m_bytes.u8(5) == 2 ? u"MSB" : u"LSB"), 4);
    m_facts.add(ProgramFact::Machine, codeText(m_bytes.u16(18), machineNames), 18);
    m_facts.add(ProgramFact::ObjectType, codeText(m_bytes.u16(16), typeNames), 16);
    m_facts.add(ProgramFact::EntryPoint, hexText(wide(24)), 24);
}

void ElfReader::readSegments()
{
    const qint64 first = place(pick(32, 28));
    const qint64 size = m_bytes.u16(pick(54, 42));
    const int count = m_bytes.u16(pick(56, 44));
    for (int k = 0; k < count; ++k) {
        const qint64 at = first + k * size;
        if (first < 0 || size < pick(56, 32) || !m_bytes.holds(at, size)) {
            m_facts.addDamage(ProgramPart::Dynamic);
            return;
        }
        m_segments.append({m_bytes.u32(at), place(at + pick(8, 4)), wide(at + pick(16, 8)), place(at + pick(32, 16))});
    }
}

void ElfReader::readSections()
{
    const qint64 first = place(pick(40, 32));
    const qint64 size = m_bytes.u16(pick(58, 46));
    const int count = m_bytes.u16(pick(60, 48));
    QList<quint32> names;
    for (int k = 0; k < count; ++k) {
        const qint64 at = first + k * size;
        if (first < 0 || size < pick(64, 40) || !m_bytes.holds(at, size)) {
            m_facts.addDamage(ProgramPart::Sections);
            break;
        }
        names.append(m_bytes.u32(at));
        m_sections.append(
            {{}, m_bytes.u32(at + 4), wide(at + 8), place(at + pick(24, 16)), place(at + pick(32, 20)), at});
    }
    const int namesSection = m_bytes.u16(pick(62, 50));
    if (namesSection >= m_sections.size())
        return;
    const qint64 strings = m_sections[namesSection].offset;
    for (qsizetype k = 0; k < m_sections.size() && strings >= 0; ++k)
        m_sections[k].name = QString::fromUtf8(m_bytes.text(strings + names[k], 256));
}

std::optional<qint64> ElfReader::placeOf(quint64 address) const
{
    constexpr quint32 load = 1;
    for (const Segment &segment : m_segments) {
        if (segment.type == load && segment.offset >= 0 && address >= segment.address && segment.size > 0 &&
            address - segment.address < quint64(segment.size))
            return segment.offset + qint64(address - segment.address);
    }
    return std::nullopt;
}

void ElfReader::readNotes(const Segment &segment)
{
    constexpr qint64 headSize = 12;
    constexpr quint32 buildId = 3;
    const qint64 end = segment.offset + segment.size;
    for (qint64 at = segment.offset; at + headSize <= end;) {
        const qint64 nameSize = m_bytes.u32(at);
        const qint64 size = m_bytes.u32(at + 4);
        const qint64 contentAt = at + headSize + (nameSize + 3) / 4 * 4;
        if (!m_bytes.holds(contentAt, size) || contentAt + size > end) {
            m_facts.addDamage(ProgramPart::Notes);
            return;
        }
        const bool isGnu = m_bytes.slice(at + headSize, nameSize) == QByteArrayView("GNU\0", 4);
        if (isGnu && m_bytes.u32(at + 8) == buildId) {
            const QByteArrayView id = m_bytes.slice(contentAt, size);
            m_facts.add(ProgramFact::BuildId, QString::fromLatin1(id.toByteArray().toHex()), contentAt);
            m_masked.append({contentAt, size});
        }
        at = contentAt + (size + 3) / 4 * 4;
    }
}

/// The versions that a library must have (LSB, "Symbol Version Requirements").
void ElfReader::readNeededVersions(qint64 at, qint64 count, qint64 strings)
{
    qint64 left = mostEntries;
    for (; count > 0 && m_bytes.holds(at, 16) && left-- > 0; --count) {
        QStringList &versions = m_versions[QString::fromUtf8(m_bytes.text(strings + m_bytes.u32(at + 4), 512))];
        qint64 version = at + m_bytes.u32(at + 8);
        for (int k = m_bytes.u16(at + 2); k > 0 && m_bytes.holds(version, 16) && left-- > 0; --k) {
            versions.append(QString::fromUtf8(m_bytes.text(strings + m_bytes.u32(version + 8), 512)));
            version += m_bytes.u32(version + 12);
        }
        at += m_bytes.u32(at + 12);
    }
}

void ElfReader::readDynamic(const Segment &segment)
{
    enum : quint64 {
        Needed = 1,
        StringTable = 5,
        Name = 14,
        RunPath = 15,
        NewRunPath = 29,
        VersionNeed = 0x6ffffffe,
        VersionNeedCount = 0x6fffffff
    };
    struct Entry {
        quint64 tag;
        quint64 value;
        qint64 at;
    };
    const qint64 width = pick(8, 4);
    QList<Entry> entries;
    QMap<quint64, quint64> values;
    for (qint64 at = segment.offset; at + 2 * width <= segment.offset + segment.size && entries.size() < mostEntries;
         at += 2 * width) {
        entries.append({wide(at), wide(at + width), at});
        values.insert(entries.last().tag, entries.last().value);
        if (entries.last().tag == 0)
            break;
    }
    const std::optional<qint64> strings = placeOf(values.value(StringTable));
    if (!strings) {
        m_facts.addDamage(ProgramPart::Dynamic);
        return;
    }
    const qint64 count = qint64(std::min<quint64>(values.value(VersionNeedCount), mostEntries));
    if (const std::optional<qint64> at = placeOf(values.value(VersionNeed)); at && count > 0)
        readNeededVersions(*at, count, *strings);
    for (const Entry &entry : entries) {
        const quint64 offset = std::min<quint64>(entry.value, quint64(m_bytes.size()));
        const QString text = QString::fromUtf8(m_bytes.text(*strings + qint64(offset)));
        if (entry.tag == Name)
            m_facts.add(ProgramFact::Soname, text, entry.at);
        else if (entry.tag == RunPath || entry.tag == NewRunPath)
            m_facts.add(ProgramFact::RunPath, text, entry.at);
        else if (entry.tag == Needed)
            m_facts.add(ProgramFact::Needed, m_versions.value(text).join(u'\n'), entry.at, text);
    }
}

void ElfReader::addSections()
{
    constexpr quint32 noBits = 8;
    qint64 left = 2 * m_bytes.size();
    for (const Section &section : m_sections) {
        if (section.name.isEmpty())
            continue;
        m_facts.add(ProgramFact::SectionSize, QString::number(std::max<qint64>(0, section.size)),
                    section.headerAt + pick(32, 20), section.name);
        m_facts.add(ProgramFact::SectionFlags, flagsText(quint32(section.flags), sectionFlagNames),
                    section.headerAt + 8, section.name);
        if (section.type == noBits)
            continue;
        left -= section.size;
        if (left < 0 || !m_bytes.holds(section.offset, section.size)) {
            m_facts.addDamage(ProgramPart::Sections);
            continue;
        }
        const QByteArrayView content = m_bytes.slice(section.offset, section.size);
        m_facts.add(ProgramFact::SectionHash, QString::fromLatin1(hashOf(content).toHex()), section.offset,
                    section.name);
        if (section.name == QLatin1String(".comment")) {
            const QString notes = QString::fromUtf8(content);
            m_facts.add(ProgramFact::CompilerNotes, notes.split(QChar(0), Qt::SkipEmptyParts).join(u'\n'),
                        section.offset);
        } else if (section.name == QLatin1String(".gnu_debuglink")) {
            m_facts.add(ProgramFact::DebugFile, QString::fromUtf8(m_bytes.text(section.offset, section.size)),
                        section.offset);
            m_masked.append({section.offset, section.size});
        }
    }
}

ProgramFacts ElfReader::facts()
{
    m_facts.format = ProgramFacts::Format::Elf;
    addHeader();
    readSegments();
    readSections();
    enum : quint32 { Dynamic = 2, Interpreter = 3, Note = 4 };
    for (const Segment &segment : std::as_const(m_segments)) {
        const bool isThere = m_bytes.holds(segment.offset, segment.size);
        if (segment.type == Dynamic && isThere)
            readDynamic(segment);
        else if (segment.type == Interpreter && isThere)
            m_facts.add(ProgramFact::Interpreter, QString::fromUtf8(m_bytes.text(segment.offset, segment.size)),
                        segment.offset);
        else if (segment.type == Note && isThere)
            readNotes(segment);
        else if (!isThere)
            m_facts.addDamage(segment.type == Note ? ProgramPart::Notes : ProgramPart::Dynamic);
    }
    addSections();
    m_facts.essence = hashWithout(m_bytes.all(), m_masked);
    return m_facts;
}

} // namespace

std::optional<ProgramFacts> readElfFacts(QByteArrayView file)
{
    constexpr qint64 size32 = 52;
    constexpr qint64 size64 = 64;
    const ProgramBytes bytes(file, file.size() > 5 && file[5] == 2);
    const bool isElf = bytes.slice(0, 4) == QByteArrayView("\x7f"
                                                           "ELF",
                                                           4);
    const quint8 width = bytes.u8(4);
    if (!isElf || (width != 1 && width != 2) || !bytes.holds(0, width == 2 ? size64 : size32))
        return std::nullopt;
    return ElfReader(bytes).facts();
}

} // namespace velmora
