#include "vfs/archive/zip_directory.h"

#include "core/crc32.h"
#include "core/iso_times.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <numeric>

namespace velmora {

namespace {

constexpr quint32 localSign = 0x0403'4b50;
constexpr quint32 centralSign = 0x0201'4b50;
constexpr quint32 endSign = 0x0605'4b50;
constexpr quint32 end64Sign = 0x0606'4b50;
constexpr quint32 locatorSign = 0x0706'4b50;
constexpr qsizetype localSize = 30;
constexpr qsizetype centralSize = 46;
constexpr qsizetype endSize = 22;
constexpr qsizetype end64Size = 56;
constexpr qsizetype locatorSize = 20;
constexpr quint32 inExtra = 0xFFFF'FFFF; ///< the number stands in the field for large ones
constexpr quint32 unixHost = 3;          ///< an entry was made there

/// Little-endian numbers at any place of bytes; 0 beyond their end.
class Numbers {
public:
    explicit Numbers(QByteArrayView bytes) : m_bytes(bytes) {}

    [[nodiscard]] quint16 two(qsizetype at) const { return quint16(number(at, 2)); }
    [[nodiscard]] quint32 four(qsizetype at) const { return quint32(number(at, 4)); }
    [[nodiscard]] quint64 eight(qsizetype at) const { return number(at, 8); }

private:
    [[nodiscard]] quint64 number(qsizetype at, int size) const
    {
        if (at < 0 || at + size > m_bytes.size())
            return 0;
        quint64 value = 0;
        for (int i = size - 1; i >= 0; --i)
            value = (value << 8U) | static_cast<unsigned char>(m_bytes[at + i]);
        return value;
    }

    QByteArrayView m_bytes;
};

QByteArray readBytes(OpenFile &file, qint64 offset, qint64 length)
{
    QByteArray bytes(length, Qt::Uninitialized);
    const FilePiece piece = file.readAt(offset, bytes.data(), length);
    bytes.resize(piece.length);
    return bytes;
}

/// Where the directory stands.
struct Place {
    qint64 begin = 0;
    qint64 size = 0;
    qint64 shift = 0; ///< bytes before the archive
};

std::optional<Place> placeOf(OpenFile &file)
{
    constexpr qint64 longestComment = 0xFFFF;
    const qint64 size = file.size().value_or(0);
    const qint64 tailBegin = std::max<qint64>(0, size - endSize - longestComment);
    const QByteArray tail = readBytes(file, tailBegin, size - tailBegin);
    const qsizetype at = tail.lastIndexOf(QByteArrayView("PK\5\6", 4));
    if (at < 0 || at + endSize > tail.size())
        return std::nullopt;
    const Numbers end(QByteArrayView(tail).sliced(at));
    qint64 endAt = tailBegin + at;
    quint64 length = end.four(12);
    quint64 offset = end.four(16);
    const QByteArray locator = endAt >= locatorSize ? readBytes(file, endAt - locatorSize, locatorSize) : QByteArray();
    if (Numbers(locator).four(0) == locatorSign) {
        // Where it says, or directly before the locator where something stands before the archive.
        for (const quint64 place : {Numbers(locator).eight(8), quint64(endAt - locatorSize - end64Size)}) {
            const QByteArray end64 = place < quint64(size) ? readBytes(file, qint64(place), end64Size) : QByteArray();
            if (Numbers(end64).four(0) != end64Sign || end64.size() < end64Size)
                continue;
            length = Numbers(end64).eight(40);
            offset = Numbers(end64).eight(48);
            endAt = qint64(place);
            break;
        }
    }
    if (length > quint64(endAt) || offset > quint64(endAt) - length)
        return std::nullopt;
    const qint64 begin = endAt - qint64(length);
    return Place{begin, qint64(length), begin - qint64(offset)};
}

QByteArray methodName(quint16 method)
{
    switch (method) {
    case 0:
        return "Store";
    case 8:
        return "Deflate";
    case 9:
        return "Deflate64";
    case 12:
        return "BZip2";
    case 14:
        return "LZMA";
    case 93:
        return "Zstandard";
    case 95:
        return "XZ";
    case 98:
        return "PPMd";
    default:
        return QByteArray::number(method);
    }
}

/// What the fields behind an entry say: sizes of large files, exact times, names as UTF-8, and the method beneath the
/// encryption.
class Extra {
public:
    Extra(QByteArrayView bytes, ArchiveEntry &entry, bool sizeIsLarge, bool packedIsLarge, bool positionIsLarge)
    {
        while (bytes.size() >= 4) {
            const Numbers head(bytes);
            const qsizetype length = std::min<qsizetype>(head.two(2), bytes.size() - 4);
            take(head.two(0), bytes.sliced(4, length), entry, {sizeIsLarge, packedIsLarge, positionIsLarge});
            bytes = bytes.sliced(4 + length);
        }
    }

private:
    static void take(quint16 kind, QByteArrayView field, ArchiveEntry &entry, const std::array<bool, 3> &isLarge)
    {
        const Numbers numbers(field);
        if (kind == 0x0001) {
            qsizetype at = 0;
            const std::array<qint64 *, 3> values{&entry.size, &entry.packed, &entry.position};
            for (std::size_t i = 0; i < values.size(); ++i) {
                if (isLarge[i] && at + 8 <= field.size()) {
                    *values[i] = qint64(numbers.eight(at) & 0x7FFF'FFFF'FFFF'FFFFU);
                    at += 8;
                }
            }
        } else if (kind == 0x5455 && field.size() >= 5 && (field[0] & 1) != 0) {
            entry.modifiedMs = qint64(qint32(numbers.four(1))) * 1000;
        } else if (kind == 0x000a && field.size() >= 32 && numbers.two(4) == 1) {
            constexpr qint64 msTo1970 = 11'644'473'600'000; // from 1601, in which the field begins
            entry.modifiedMs = qint64(numbers.eight(8) / 10'000) - msTo1970;
        } else if (kind == 0x7075 && field.size() > 5) {
            Crc32 crc;
            crc.update(entry.name);
            if (crc.value() == numbers.four(1)) // else the name was changed by somebody who does not know the field
                entry.name = field.sliced(5).toByteArray();
        } else if (kind == 0x9901 && field.size() >= 7) {
            entry.method = methodName(numbers.two(5)) + " AES";
            if (numbers.two(0) == 2)
                entry.crc.reset(); // of the second kind: the checksum is left out on purpose
        }
    }
};

/// A time of MS-DOS, which is local.
qint64 dosTime(quint16 date, quint16 time, IsoTimes &times)
{
    const QDate day(1980 + (date >> 9U), (date >> 5U) & 15U, date & 31U);
    const QTime clock(time >> 11U, (time >> 5U) & 63U, (time & 31U) * 2);
    return day.isValid() && clock.isValid() ? times.time(day, clock) : 0;
}

ArchiveEntryKind kindOf(const ArchiveEntry &entry, quint16 madeBy, quint32 attributes)
{
    const quint32 type = (attributes >> 16U) & 0xF000U;
    const bool isUnix = (madeBy >> 8U) == unixHost;
    if (entry.name.endsWith('/') || (isUnix && type == 0x4000))
        return ArchiveEntryKind::Folder;
    if (isUnix && type == 0xA000)
        return ArchiveEntryKind::Link;
    return isUnix && type != 0 && type != 0x8000 ? ArchiveEntryKind::Special : ArchiveEntryKind::File;
}

ArchiveEntry entryOf(QByteArrayView bytes, qsizetype nameLength, qsizetype extraLength, IsoTimes &times)
{
    const Numbers head(bytes);
    ArchiveEntry entry;
    const quint16 flags = head.two(8);
    entry.name = bytes.sliced(centralSize, nameLength).toByteArray();
    entry.isEncrypted = (flags & 1U) != 0;
    entry.method = methodName(head.two(10));
    entry.modifiedMs = dosTime(head.two(14), head.two(12), times);
    entry.crc = head.four(16);
    entry.packed = head.four(20);
    entry.size = head.four(24);
    entry.position = head.four(42);
    const Extra extra(bytes.sliced(centralSize + nameLength, extraLength), entry, head.four(24) == inExtra,
                      head.four(20) == inExtra, head.four(42) == inExtra);
    const quint32 host = head.two(4) >> 8U;
    if (host == 0 || host == 10 || host == 11) // made on MS-DOS or Windows
        entry.name.replace('\\', '/');
    entry.kind = kindOf(entry, head.two(4), head.four(38));
    if (host == unixHost && head.four(38) >> 16U != 0)
        entry.mode = (head.four(38) >> 16U) & 07777U;
    return entry;
}

void put(QByteArray &bytes, quint64 value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += char((value >> (8U * unsigned(i))) & 0xFFU);
}

/// Bytes of a file and bytes in memory behind them.
class FileWithTail final : public OpenFile {
public:
    FileWithTail(std::shared_ptr<OpenFile> file, qint64 begin, qint64 length, QByteArray tail)
        : m_file(std::move(file)), m_begin(begin), m_length(length), m_tail(std::move(tail))
    {}

    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        FilePiece piece;
        if (offset < m_length) {
            const qint64 wanted = std::min(length, m_length - offset);
            piece = m_file->readAt(m_begin + offset, buffer, wanted);
            if (piece.length < wanted)
                return piece;
        }
        const qint64 at = std::max<qint64>(offset - m_length, 0);
        const qint64 rest = std::clamp<qint64>(m_tail.size() - at, 0, length - piece.length);
        std::copy_n(m_tail.constData() + std::min<qint64>(at, m_tail.size()), rest, buffer + piece.length);
        piece.length += rest;
        return piece;
    }
    std::optional<qint64> size() const override { return m_length + m_tail.size(); }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    std::shared_ptr<OpenFile> m_file;
    qint64 m_begin;
    qint64 m_length;
    QByteArray m_tail;
};

/// The directory of one entry, which stands at the beginning of the archive.
QByteArray directoryOf(QByteArrayView local, const ArchiveEntry &entry, qint64 begin)
{
    const Numbers head(local);
    const QByteArrayView name = local.sliced(localSize, head.two(26));
    QByteArray sizes; // all of them here: the local header need not have any
    put(sizes, 1, 2);
    put(sizes, 16, 2);
    put(sizes, quint64(entry.size), 8);
    put(sizes, quint64(entry.packed), 8);
    QByteArray extra;
    for (QByteArrayView rest = local.sliced(localSize + head.two(26), head.two(28)); rest.size() >= 4;) {
        const qsizetype field = 4 + std::min<qsizetype>(Numbers(rest).two(2), rest.size() - 4);
        if (Numbers(rest).two(0) == 0x9901) // how it is encrypted
            extra += rest.first(field).toByteArray();
        rest = rest.sliced(field);
    }
    extra += sizes;
    QByteArray bytes;
    put(bytes, centralSign, 4);
    put(bytes, 45, 2);
    bytes += local.sliced(4, 10).toByteArray(); // version, flags, method, time
    put(bytes, entry.crc.value_or(0), 4);
    put(bytes, inExtra, 4);
    put(bytes, inExtra, 4);
    put(bytes, quint64(name.size()), 2);
    put(bytes, quint64(extra.size()), 2);
    put(bytes, 0, 6); // comment, disk, attributes within
    put(bytes, 0, 8); // attributes outside, position
    bytes += name.toByteArray() + extra;
    const auto length = quint64(bytes.size());
    put(bytes, end64Sign, 4);
    put(bytes, end64Size - 12, 8);
    put(bytes, 45 | (45U << 16U), 4);
    put(bytes, 0, 8);
    put(bytes, 1, 8);
    put(bytes, 1, 8);
    put(bytes, length, 8);
    put(bytes, quint64(begin), 8);
    put(bytes, locatorSign, 4);
    put(bytes, 0, 4);
    put(bytes, quint64(begin) + length, 8);
    put(bytes, 1, 4);
    put(bytes, endSign, 4);
    put(bytes, 0, 4);
    put(bytes, 1, 2);
    put(bytes, 1, 2);
    put(bytes, length, 4);
    put(bytes, std::min<quint64>(quint64(begin), inExtra), 4);
    put(bytes, 0, 2);
    return bytes;
}

} // namespace

std::optional<ZipDirectory> ZipDirectory::read(OpenFile &file, qint64 mostEntries)
{
    const std::optional<Place> place = placeOf(file);
    constexpr qint64 mostBytes = qint64(1) << 30; // a million entries with long names have less
    if (!place || place->size > mostBytes)
        return std::nullopt;
    const QByteArray bytes = readBytes(file, place->begin, place->size);
    if (bytes.size() < place->size)
        return std::nullopt;
    ZipDirectory directory;
    directory.m_end = place->begin;
    IsoTimes times;
    for (qsizetype at = 0; at + centralSize <= bytes.size();) {
        const QByteArrayView rest = QByteArrayView(bytes).sliced(at);
        const Numbers head(rest);
        const qsizetype names = head.two(28);
        const qsizetype extra = head.two(30);
        directory.isDamaged = head.four(0) != centralSign || centralSize + names + extra > rest.size();
        if (directory.isDamaged)
            break;
        if (qint64(directory.entries.size()) == mostEntries) {
            directory.isCut = true;
            break;
        }
        directory.entries.push_back(entryOf(rest, names, extra, times));
        directory.entries.back().position += place->shift;
        at += centralSize + names + extra + head.two(32);
    }
    return directory.isDamaged && directory.entries.empty() ? std::nullopt : std::optional(std::move(directory));
}

std::vector<std::size_t> ZipDirectory::overlapping() const
{
    std::vector<std::size_t> order(entries.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return entries[a].position < entries[b].position; });
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const ArchiveEntry &entry = entries[order[i]];
        const qint64 limit = i + 1 < order.size() ? entries[order[i + 1]].position : m_end;
        const qint64 room = limit - entry.position - localSize;
        if (entry.packed > room || room < 0) {
            found.push_back(order[i]);
            if (i + 1 < order.size())
                found.push_back(order[i + 1]);
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::shared_ptr<OpenFile> zipOfEntry(std::shared_ptr<OpenFile> file, const ArchiveEntry &entry)
{
    const QByteArray fixed = readBytes(*file, entry.position, localSize);
    const Numbers head(fixed);
    if (fixed.size() < localSize || head.four(0) != localSign)
        return nullptr;
    const qint64 headLength = localSize + head.two(26) + head.two(28);
    const QByteArray local = readBytes(*file, entry.position, headLength);
    if (local.size() < headLength)
        return nullptr;
    // Behind the content its sizes may stand once more.
    constexpr qint64 descriptor = 24;
    const bool hasDescriptor = (head.two(6) & 8U) != 0;
    const qint64 rest = file->size().value_or(0) - entry.position - headLength;
    const qint64 content = std::min(rest, entry.packed + (hasDescriptor ? descriptor : 0));
    if (entry.packed < 0 || content < entry.packed)
        return nullptr;
    const qint64 length = headLength + content;
    return std::make_shared<FileWithTail>(std::move(file), entry.position, length, directoryOf(local, entry, length));
}

} // namespace velmora
