#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtEndian>

#include <utility>

namespace velmora::test {

/// Bytes put together at places that are known only later.
class ByteBuilder {
public:
    template <typename T>
    ByteBuilder &add(T number)
    {
        const T little = qToLittleEndian(number);
        bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
        return *this;
    }
    ByteBuilder &add(const QByteArray &more)
    {
        bytes.append(more);
        return *this;
    }
    template <typename T>
    void put(qsizetype at, T number)
    {
        qToLittleEndian(number, bytes.data() + at);
    }
    ByteBuilder &fillTo(qsizetype size)
    {
        bytes.append(std::max<qsizetype>(0, size - bytes.size()), '\0');
        return *this;
    }
    ByteBuilder &align(qsizetype step) { return fillTo((bytes.size() + step - 1) / step * step); }

    QByteArray bytes;
};

/// A library for Windows with one of everything.
struct MadeProgram {
    quint64 version = 0x0001'0002'0003'0004;
    QList<std::pair<QString, QString>> strings{{QStringLiteral("CompanyName"), QStringLiteral("Grün & Söhne")},
                                               {QStringLiteral("FileVersion"), QStringLiteral("1.2.3.4")}};
    quint32 stamp = 0x60000000;
    quint32 checksum = 7;
    QByteArray code{"\xc3 code"};
    QByteArray signature = {}; ///< PKCS #7; none when empty
};

inline QByteArray utf16Bytes(const QString &text)
{
    ByteBuilder out;
    for (const QChar c : text)
        out.add(quint16(c.unicode()));
    return out.add(quint16(0)).bytes;
}

/// A block of a version resource.
inline QByteArray versionBlock(const QString &key, const QByteArray &value, bool isText,
                               const QList<QByteArray> &children)
{
    ByteBuilder out;
    out.add(quint16(0)).add(quint16(isText ? value.size() / 2 : value.size())).add(quint16(isText));
    out.add(utf16Bytes(key)).align(4).add(value);
    for (const QByteArray &child : children)
        out.align(4).add(child);
    out.put(0, quint16(out.bytes.size()));
    return out.bytes;
}

inline QByteArray versionResource(const MadeProgram &program)
{
    ByteBuilder fixed;
    fixed.add(quint32(0xfeef04bd)).add(quint32(0x10000));
    for (int k = 0; k < 2; ++k)
        fixed.add(quint32(program.version >> 32)).add(quint32(program.version));
    fixed.add(quint32(0x3f)).add(quint32(0x2)).add(quint32(0x40004)).add(quint32(2)).fillTo(52);
    QList<QByteArray> strings;
    for (const auto &[name, value] : program.strings)
        strings.append(versionBlock(name, utf16Bytes(value), true, {}));
    const QByteArray table = versionBlock(QStringLiteral("040904b0"), {}, true, strings);
    const QByteArray languages =
        versionBlock(QStringLiteral("Translation"), QByteArray::fromHex("0904b004"), false, {});
    return versionBlock(QStringLiteral("VS_VERSION_INFO"), fixed.bytes, false,
                        {versionBlock(QStringLiteral("StringFileInfo"), {}, true, {table}),
                         versionBlock(QStringLiteral("VarFileInfo"), {}, true, {languages})});
}

/// The section of resources at the address 0x3000.
inline QByteArray resourceSection(const QByteArray &resource)
{
    ByteBuilder out;
    const auto directory = [&](quint32 id, quint32 target) {
        out.fillTo(out.bytes.size() + 12).add(quint16(0)).add(quint16(1)).add(id).add(target);
    };
    directory(16, 0x80000018);
    directory(1, 0x80000030);
    directory(0x409, 0x48);
    return out.add(quint32(0x3058)).add(quint32(resource.size())).fillTo(0x58).add(resource).bytes;
}

/// The section with imports, at 0x2000, and with the debug directory, at 0x2100.
inline QByteArray dataSection(quint32 stamp)
{
    ByteBuilder out;
    out.add(quint32(0x2040)).add(quint32(0)).add(quint32(0)).add(quint32(0x2080)).add(quint32(0x2040));
    out.fillTo(0x40).add(quint64(0x2090)).add(quint64(0x8000000000000007)).fillTo(0x80);
    out.add(QByteArray("KERNEL32.dll\0", 13)).fillTo(0x90).add(quint16(1)).add(QByteArray("Sleep\0", 6)).fillTo(0x100);
    out.add(quint32(0)).add(stamp).add(quint32(0)).add(quint32(2)).add(quint32(0x22)).add(quint32(0x2120));
    out.add(quint32(0x520)).fillTo(0x120);
    return out.add(QByteArray("RSDS"))
        .add(QByteArray("0123456789abcdef"))
        .add(quint32(3))
        .add(QByteArray("a.pdb"))
        .fillTo(0x142)
        .bytes;
}

inline QByteArray madeProgram(const MadeProgram &program = {})
{
    const std::pair<const char *, QByteArray> sections[] = {{".text", program.code},
                                                            {".rdata", dataSection(program.stamp)},
                                                            {".rsrc", resourceSection(versionResource(program))}};
    ByteBuilder out;
    out.add(QByteArray("MZ")).fillTo(0x3c).add(quint32(0x40)).add(QByteArray("PE\0\0", 4));
    out.add(quint16(0x8664)).add(quint16(3)).add(program.stamp).add(quint64(0)).add(quint16(240)).add(quint16(0x2022));
    constexpr qsizetype optional = 0x58;
    out.add(quint16(0x20b)).add(quint8(2)).add(quint8(40)).fillTo(optional + 240);
    out.put(optional + 16, quint32(0x1000));
    out.put(optional + 24, quint64(0x180000000));
    out.put(optional + 56, quint32(0x4000));
    out.put(optional + 60, quint32(0x200));
    out.put(optional + 64, program.checksum);
    out.put(optional + 68, quint16(3));
    out.put(optional + 108, quint32(16));
    const auto table = [&](int number, quint32 address, quint32 size) {
        out.put(optional + 112 + 8 * number, address);
        out.put(optional + 116 + 8 * number, size);
    };
    table(1, 0x2000, 40);
    table(2, 0x3000, 0x1000);
    table(6, 0x2100, 28);
    quint32 place = 0x200;
    quint32 address = 0x1000;
    for (const auto &[name, content] : sections) {
        const auto fileSize = quint32((content.size() + 0x1ff) / 0x200 * 0x200);
        out.add(QByteArray(name).leftJustified(8, '\0')).add(quint32(content.size())).add(address).add(fileSize);
        out.add(place).add(quint64(0)).add(quint32(0)).add(quint32(0x60000020));
        place += fileSize;
        address += 0x1000;
    }
    for (const auto &[name, content] : sections)
        out.align(0x200).add(content);
    out.align(0x200);
    if (!program.signature.isEmpty()) {
        table(4, quint32(out.bytes.size()), quint32(program.signature.size() + 8));
        out.add(quint32(program.signature.size() + 8)).add(quint16(0x200)).add(quint16(2)).add(program.signature);
    }
    return out.bytes;
}

} // namespace velmora::test
