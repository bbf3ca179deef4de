#include "filetypes/version/engine/pe_tables.h"

#include "filetypes/version/engine/signer_name.h"

#include <QStringList>
#include <QUuid>

#include <algorithm>

namespace velmora {

namespace {

/// Tables may share their parts, so that a small file names functions without end. No program has as many.
constexpr qsizetype mostNames = 300'000;
constexpr qsizetype mostLibraries = 4096;

/// How a table of imported libraries is laid out.
struct ImportLayout {
    PeImage::Directory directory;
    ProgramFact fact;
    qint64 entrySize;
    qint64 nameAt;
    qint64 lookupAt;
    qint64 otherLookupAt; ///< what takes its place where there is none
};

constexpr ImportLayout importLayouts[] = {
    {PeImage::Directory::Imports, ProgramFact::Import, 20, 12, 0, 16},
    {PeImage::Directory::DelayImports, ProgramFact::DelayedImport, 32, 4, 16, 16},
};

/// The names that a table of lookups leads to, "#7" for a function that has a number only.
class FunctionNames {
public:
    FunctionNames(const PeImage &image, qsizetype &left) : m_image(image), m_left(left) {}

    QStringList at(qint64 place, bool &isWhole)
    {
        const ProgramBytes &bytes = m_image.bytes();
        const int width = m_image.is64() ? 8 : 4;
        QStringList names;
        for (; bytes.holds(place, width); place += width) {
            const quint64 lookup = m_image.is64() ? bytes.u64(place) : bytes.u32(place);
            if (lookup == 0)
                return names;
            if (m_left-- <= 0)
                break;
            const bool byNumber = (lookup >> (8 * width - 1)) != 0;
            names.append(byNumber ? QStringLiteral("#%1").arg(lookup & 0xffff) : nameOf(quint32(lookup), isWhole));
        }
        isWhole = false;
        return names;
    }

private:
    QString nameOf(quint32 address, bool &isWhole) const
    {
        constexpr qint64 hintSize = 2;
        const std::optional<qint64> place = m_image.placeOf(address);
        const QString name = place ? QString::fromLatin1(m_image.bytes().text(*place + hintSize)) : QString();
        isWhole &= !name.isEmpty();
        return name;
    }

    const PeImage &m_image;
    qsizetype &m_left;
};

bool isZero(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
}

/// False where the table is damaged.
bool readLibraries(const PeImage &image, const ImportLayout &layout, qsizetype &names, ProgramFacts &facts)
{
    const PeImage::Table table = image.table(layout.directory);
    if (table.address == 0)
        return true;
    const ProgramBytes &bytes = image.bytes();
    const std::optional<qint64> start = image.placeOf(table.address);
    FunctionNames functions(image, names);
    bool isWhole = true;
    for (qsizetype k = 0; start && k < mostLibraries; ++k) {
        const qint64 at = *start + k * layout.entrySize;
        if (!bytes.holds(at, layout.entrySize))
            return false;
        if (isZero(bytes.slice(at, layout.entrySize)) || bytes.u32(at + layout.nameAt) == 0)
            return isWhole;
        const std::optional<qint64> name = image.placeOf(bytes.u32(at + layout.nameAt));
        const quint32 lookup = bytes.u32(at + layout.lookupAt);
        const std::optional<qint64> first = image.placeOf(lookup != 0 ? lookup : bytes.u32(at + layout.otherLookupAt));
        const QByteArrayView library = name ? bytes.text(*name, 512) : QByteArrayView();
        if (library.isEmpty() || !first)
            return false;
        QStringList found = functions.at(*first, isWhole);
        found.sort();
        facts.add(layout.fact, found.join(u'\n'), at, QString::fromLatin1(library));
    }
    return false;
}

QString identityText(const ProgramBytes &bytes, qint64 at)
{
    QByteArray id(16, Qt::Uninitialized);
    // The first three numbers of an identifier stand with their lowest byte first.
    static constexpr int order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int k = 0; k < 16; ++k)
        id[k] = char(bytes.u8(at + order[k]));
    return QStringLiteral("%1 %2").arg(QUuid::fromRfc4122(id).toString()).arg(bytes.u32(at + 16));
}

void readCodeView(const ProgramBytes &bytes, qint64 at, qint64 size, ProgramFacts &facts)
{
    constexpr qint64 headSize = 24;
    if (size < headSize || bytes.slice(at, 4) != QByteArrayView("RSDS"))
        return; // older forms have no identifier
    facts.add(ProgramFact::DebugIdentity, identityText(bytes, at + 4), at + 4);
    facts.add(ProgramFact::DebugFile, QString::fromUtf8(bytes.text(at + headSize, size - headSize)), at + headSize);
}

} // namespace

void readImports(const PeImage &image, ProgramFacts &facts)
{
    qsizetype names = mostNames;
    for (const ImportLayout &layout : importLayouts) {
        if (!readLibraries(image, layout, names, facts))
            facts.addDamage(ProgramPart::Imports);
    }
}

void readExports(const PeImage &image, ProgramFacts &facts, QList<ByteRange> &masked)
{
    const PeImage::Table table = image.table(PeImage::Directory::Exports);
    if (table.address == 0)
        return;
    constexpr qint64 headSize = 40;
    const ProgramBytes &bytes = image.bytes();
    const std::optional<qint64> at = image.placeOf(table.address);
    const qsizetype count = at ? bytes.u32(*at + 24) : 0;
    const std::optional<qint64> list = at ? image.placeOf(bytes.u32(*at + 32)) : std::nullopt;
    if (!at || !bytes.holds(*at, headSize) || count > mostNames ||
        (count > 0 && (!list || !bytes.holds(*list, 4 * count)))) {
        facts.addDamage(ProgramPart::Exports);
        return;
    }
    masked.append({*at + 4, 4});
    if (const std::optional<qint64> name = image.placeOf(bytes.u32(*at + 12)))
        facts.add(ProgramFact::ExportName, QString::fromLatin1(bytes.text(*name, 512)), *name);
    QStringList names;
    for (qsizetype k = 0; k < count; ++k) {
        const std::optional<qint64> name = image.placeOf(bytes.u32(*list + 4 * k));
        const QByteArrayView text = name ? bytes.text(*name) : QByteArrayView();
        if (text.isEmpty()) {
            facts.addDamage(ProgramPart::Exports);
            break;
        }
        names.append(QString::fromLatin1(text));
    }
    facts.add(ProgramFact::Exports, names.join(u'\n'), *at);
}

void readDebug(const PeImage &image, ProgramFacts &facts, QList<ByteRange> &masked)
{
    const PeImage::Table table = image.table(PeImage::Directory::Debug);
    if (table.address == 0)
        return;
    constexpr qint64 entrySize = 28;
    constexpr quint32 codeView = 2;
    constexpr qint64 mostEntries = 64;
    const ProgramBytes &bytes = image.bytes();
    const std::optional<qint64> start = image.placeOf(table.address);
    const qint64 count = std::min<qint64>(table.size / entrySize, mostEntries);
    if (!start || !bytes.holds(*start, count * entrySize)) {
        facts.addDamage(ProgramPart::Debug);
        return;
    }
    for (qint64 k = 0; k < count; ++k) {
        const qint64 entry = *start + k * entrySize;
        const qint64 size = bytes.u32(entry + 16);
        const qint64 at = bytes.u32(entry + 24);
        masked.append({entry + 4, 4});
        if (bytes.u32(entry + 12) != codeView)
            continue;
        if (bytes.holds(at, size))
            readCodeView(bytes, at, size, facts);
        else
            facts.addDamage(ProgramPart::Debug);
    }
}

void readSignature(const PeImage &image, ProgramFacts &facts, QList<ByteRange> &masked)
{
    const PeImage::Table table = image.table(PeImage::Directory::Security);
    if (table.entryAt >= 0)
        masked.append({table.entryAt, 8});
    if (table.address == 0 || table.size == 0)
        return;
    constexpr qint64 headSize = 8;
    const ProgramBytes &bytes = image.bytes();
    const qint64 length = bytes.u32(table.address);
    if (!bytes.holds(table.address, table.size) || length < headSize || length > table.size) {
        facts.addDamage(ProgramPart::Signature);
        return;
    }
    facts.add(ProgramFact::SignatureSize, QString::number(table.size), table.address);
    const QString signer = signerName(bytes.slice(table.address + headSize, length - headSize));
    if (signer.isEmpty())
        facts.addDamage(ProgramPart::Signature);
    else
        facts.add(ProgramFact::Signer, signer, table.address);
}

} // namespace velmora
