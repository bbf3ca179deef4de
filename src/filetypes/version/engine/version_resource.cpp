#include "filetypes/version/engine/version_resource.h"

#include <QStringList>

namespace velmora {

namespace {

constexpr NamedCode flagNames[] = {{0x1, "DEBUG"},        {0x2, "PRERELEASE"},    {0x4, "PATCHED"},
                                   {0x8, "PRIVATEBUILD"}, {0x10, "INFOINFERRED"}, {0x20, "SPECIALBUILD"}};
constexpr NamedCode systemNames[] = {{0x40004, "NT_WINDOWS32"},
                                     {0x40000, "NT"},
                                     {0x4, "WINDOWS32"},
                                     {0x10001, "DOS_WINDOWS16"},
                                     {0x10004, "DOS_WINDOWS32"}};
constexpr NamedCode typeNames[] = {{1, "APP"}, {2, "DLL"}, {3, "DRV"}, {4, "FONT"}, {5, "VXD"}, {7, "STATIC_LIB"}};

// Directories -------------------------------------------------------------------------------------------------------

/// Tables may lead into each other without end; no program has nearly as many entries of these types.
constexpr int mostEntries = 4096;
constexpr quint32 subdirectory = 0x80000000;

struct ResourceTree {
    const PeImage &image;
    qint64 root;
    int left = mostEntries;
    bool isBroken = false;
    QList<PeResource> found = {};
};

void addLeaf(ResourceTree &tree, qint64 entry)
{
    const ProgramBytes &bytes = tree.image.bytes();
    const std::optional<qint64> place = tree.image.placeOf(bytes.u32(entry));
    const quint32 size = bytes.u32(entry + 4);
    if (!bytes.holds(entry, 16) || !place || !bytes.holds(*place, size))
        tree.isBroken = true;
    else
        tree.found.append({*place, size});
}

/// Follows the entries of a directory; `wanted` is a type, or nothing for all that is in it.
void walk(ResourceTree &tree, qint64 directory, std::optional<PeResourceType> wanted, int depth)
{
    constexpr int deepest = 3; // type, name, language
    const ProgramBytes &bytes = tree.image.bytes();
    const int count = bytes.u16(directory + 12) + bytes.u16(directory + 14);
    if (depth >= deepest || !bytes.holds(directory, 16)) {
        tree.isBroken = true;
        return;
    }
    for (int k = 0; k < count; ++k) {
        const qint64 entry = directory + 16 + 8 * qint64(k);
        if (!bytes.holds(entry, 8) || (!wanted && tree.left-- <= 0)) {
            tree.isBroken = true;
            return;
        }
        if (wanted && bytes.u32(entry) != quint32(*wanted))
            continue;
        const quint32 target = bytes.u32(entry + 4);
        if ((target & subdirectory) != 0)
            walk(tree, tree.root + (target & ~subdirectory), std::nullopt, depth + 1);
        else
            addLeaf(tree, tree.root + target);
    }
}

// Blocks of the version resource --------------------------------------------------------------------------------------

/// One block: its key, its value and the blocks in it.
struct VersionBlock {
    QString key;
    qint64 valueAt = 0;
    qint64 valueLength = 0; ///< bytes, none of them outside
    qint64 childrenAt = 0;
    qint64 end = 0;
};

qint64 aligned(qint64 at, qint64 origin)
{
    return origin + (at - origin + 3) / 4 * 4;
}

QString utf16(const ProgramBytes &bytes, qint64 at, qint64 end)
{
    QString text;
    for (; at + 2 <= end; at += 2) {
        const char16_t unit = bytes.u16(at);
        if (unit == 0)
            break;
        text += QChar(unit);
    }
    return text;
}

/// Nothing where no block fits before `end`. Places are padded from `origin` on.
std::optional<VersionBlock> blockAt(const ProgramBytes &bytes, qint64 at, qint64 end, qint64 origin)
{
    constexpr qint64 headSize = 6;
    const qint64 length = bytes.u16(at);
    if (at + headSize > end || length < headSize || at + length > end || !bytes.holds(at, length))
        return std::nullopt;
    VersionBlock block;
    block.end = at + length;
    block.key = utf16(bytes, at + headSize, block.end);
    block.valueAt = std::min(block.end, aligned(at + headSize + 2 * (block.key.size() + 1), origin));
    // The length of a text counts letters, that of anything else bytes; some compilers count bytes always.
    const bool isText = bytes.u16(at + 4) == 1;
    const qint64 stated = qint64(bytes.u16(at + 2)) * (isText ? 2 : 1);
    block.valueLength = std::min(stated, block.end - block.valueAt);
    block.childrenAt = std::min(block.end, aligned(block.valueAt + block.valueLength, origin));
    return block;
}

template <typename Take>
bool forEachChild(const ProgramBytes &bytes, const VersionBlock &parent, qint64 origin, Take take)
{
    qint64 at = parent.childrenAt;
    while (at + 2 <= parent.end) {
        const std::optional<VersionBlock> child = blockAt(bytes, at, parent.end, origin);
        if (!child)
            return bytes.u16(at) == 0; // padding
        take(*child);
        at = aligned(child->end, origin);
    }
    return true;
}

void readFixedInfo(const ProgramBytes &bytes, const VersionBlock &root, ProgramFacts &facts)
{
    constexpr quint32 signature = 0xfeef04bd;
    constexpr qint64 size = 52;
    const qint64 at = root.valueAt;
    if (root.valueLength < size || bytes.u32(at) != signature) {
        if (root.valueLength != 0)
            facts.addDamage(ProgramPart::VersionInfo);
        return;
    }
    if (facts.fileVersion)
        return;
    facts.fileVersion = quint64(bytes.u32(at + 8)) << 32 | bytes.u32(at + 12);
    facts.productVersion = quint64(bytes.u32(at + 16)) << 32 | bytes.u32(at + 20);
    facts.add(ProgramFact::FileVersion, versionText(*facts.fileVersion), at + 8);
    facts.add(ProgramFact::ProductVersion, versionText(*facts.productVersion), at + 16);
    facts.add(ProgramFact::VersionFlags, flagsText(bytes.u32(at + 28) & bytes.u32(at + 24), flagNames), at + 28);
    facts.add(ProgramFact::VersionSystem, codeText(bytes.u32(at + 32), systemNames), at + 32);
    facts.add(ProgramFact::VersionType, codeText(bytes.u32(at + 36), typeNames), at + 36);
}

bool readStrings(const ProgramBytes &bytes, const VersionBlock &info, qint64 origin, ProgramFacts &facts)
{
    bool isWhole = true;
    isWhole &= forEachChild(bytes, info, origin, [&](const VersionBlock &table) {
        isWhole &= forEachChild(bytes, table, origin, [&](const VersionBlock &string) {
            facts.add(ProgramFact::VersionString, utf16(bytes, string.valueAt, string.end), string.valueAt,
                      table.key.toUpper() + u' ' + string.key);
        });
    });
    return isWhole;
}

bool readTranslations(const ProgramBytes &bytes, const VersionBlock &info, qint64 origin, ProgramFacts &facts)
{
    return forEachChild(bytes, info, origin, [&](const VersionBlock &var) {
        QStringList languages;
        for (qint64 at = var.valueAt; at + 4 <= var.valueAt + var.valueLength; at += 4)
            languages.append(QStringLiteral("%1%2")
                                 .arg(bytes.u16(at), 4, 16, QLatin1Char('0'))
                                 .arg(bytes.u16(at + 2), 4, 16, QLatin1Char('0'))
                                 .toUpper());
        facts.add(ProgramFact::VersionTranslation, languages.join(u'\n'), var.valueAt);
    });
}

} // namespace

QList<PeResource> resourcesOf(const PeImage &image, PeResourceType type, ProgramFacts &facts)
{
    const PeImage::Table table = image.table(PeImage::Directory::Resources);
    if (table.address == 0)
        return {};
    const std::optional<qint64> root = image.placeOf(table.address);
    if (!root) {
        facts.addDamage(ProgramPart::Resources);
        return {};
    }
    ResourceTree tree{image, *root};
    walk(tree, *root, type, 0);
    if (tree.isBroken)
        facts.addDamage(ProgramPart::Resources);
    return tree.found;
}

void readVersionResource(const ProgramBytes &bytes, const PeResource &resource, ProgramFacts &facts)
{
    const qint64 origin = resource.at;
    const std::optional<VersionBlock> root = blockAt(bytes, origin, origin + resource.size, origin);
    if (!root || root->key != QLatin1String("VS_VERSION_INFO")) {
        facts.addDamage(ProgramPart::VersionInfo);
        return;
    }
    readFixedInfo(bytes, *root, facts);
    bool isWhole = true;
    isWhole &= forEachChild(bytes, *root, origin, [&](const VersionBlock &info) {
        if (info.key == QLatin1String("StringFileInfo"))
            isWhole &= readStrings(bytes, info, origin, facts);
        else if (info.key == QLatin1String("VarFileInfo"))
            isWhole &= readTranslations(bytes, info, origin, facts);
    });
    if (!isWhole)
        facts.addDamage(ProgramPart::VersionInfo);
}

} // namespace velmora
