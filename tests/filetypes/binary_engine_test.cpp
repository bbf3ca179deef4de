#include "core/sides.h"
#include "filetypes/binary/engine/aligned_range.h"
#include "filetypes/binary/engine/binary_align.h"
#include "filetypes/binary/engine/binary_compare.h"
#include "filetypes/binary/engine/byte_text.h"
#include "filetypes/binary/engine/byte_values.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr qint64 mib = 1024 * 1024;

/// A file in memory whose medium can fail, and which can be shortened after it was opened.
struct FaultyFile {
    QByteArray bytes;
    qint64 failsFrom = -1; ///< bytes that cannot be read, to `failsTo`
    qint64 failsTo = -1;
    qint64 shortenedTo = -1;
};

class FaultyOpenFile final : public OpenFile {
public:
    explicit FaultyOpenFile(const FaultyFile &file) : m_file(file) {}
    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        qint64 end = m_file.shortenedTo < 0 ? m_file.bytes.size() : m_file.shortenedTo;
        const bool meetsFault = m_file.failsFrom >= 0 && offset < m_file.failsTo;
        if (meetsFault)
            end = std::min(end, m_file.failsFrom);
        const qint64 count = std::clamp<qint64>(end - offset, 0, length);
        std::copy_n(m_file.bytes.constData() + (count == 0 ? 0 : offset), count, buffer);
        return {count, meetsFault && offset + count == m_file.failsFrom && count < length};
    }
    std::optional<qint64> size() const override { return m_file.bytes.size(); }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    FaultyFile m_file;
};

class FaultyAccess final : public FileAccess, public FileOpener {
public:
    explicit FaultyAccess(FaultyFile file) : m_file(std::move(file)) {}
    FolderRead readFolder(const QString &, const Sink &) const override { return FolderRead::Missing; }
    std::optional<FolderEntry> describe(const QString &) const override { return std::nullopt; }
    std::unique_ptr<FileOpener> makeOpener() const override { return std::make_unique<FaultyAccess>(m_file); }
    std::unique_ptr<OpenFile> open(const QString &, OpenHint) override
    {
        return std::make_unique<FaultyOpenFile>(m_file);
    }

private:
    FaultyFile m_file;
};

std::shared_ptr<const BinarySource> sourceOf(FaultyFile file)
{
    return BinarySource::open(word("file"), FaultyAccess(std::move(file)));
}

RowComparison compared(const BinarySource &left, const BinarySource &right, Sides<qint64> starts = {})
{
    Progress progress;
    return compareRows({{left, starts.left}, {right, starts.right}}, {}, progress);
}

RowComparison compared(const QByteArray &left, const QByteArray &right)
{
    return compared(*sourceOf({left}), *sourceOf({right}));
}

Alignment aligned(const BinarySource &left, const BinarySource &right)
{
    Progress progress;
    return alignFiles({{left}, {right}}, {}, progress);
}

Alignment aligned(const QByteArray &left, const QByteArray &right)
{
    return aligned(*sourceOf({left}), *sourceOf({right}));
}

using Rows = std::vector<qint64>;

QByteArray randomBytes(qint64 size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&] { return char(random.generate()); });
    return bytes;
}

/// What makes rows differ, said as plainly as can be.
Rows plainRows(const QByteArray &left, const QByteArray &right)
{
    Rows rows;
    for (qsizetype at = 0; at < std::max(left.size(), right.size()); at += rowSize) {
        if (left.mid(at, rowSize) != right.mid(at, rowSize))
            rows.push_back(at / rowSize);
    }
    return rows;
}

} // namespace

class BinaryEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsRowsThatDiffer()
    {
        QCOMPARE(compared("", "").rowCount, 0);
        QCOMPARE(compared("", "").rate(), 0);
        const RowComparison oneSided = compared("", QByteArray(17, 'x'));
        QCOMPARE(oneSided.diffRows, (Rows{0, 1}));
        QCOMPARE(oneSided.rate(), 100);
        const QByteArray bytes = randomBytes(3 * mib, 1);
        QCOMPARE(compared(bytes, bytes).differing, 0);
        QCOMPARE(compared(bytes, bytes + 'x').diffRows, Rows{3 * mib / 16});
        QByteArray other = bytes;
        other[mib - 1] = char(~other[mib - 1]);
        QCOMPARE(compared(bytes, other).diffRows, Rows{65'535});
    }

    void agreesWithThePlainForm()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 60; ++round) {
            const QByteArray left = randomBytes(random.bounded(round % 3 == 0 ? 9 * mib : 5'000), random.generate());
            QByteArray right = left.left(left.size() - (round % 2 == 0 ? 0 : random.bounded(40)));
            for (int k = random.bounded(50); k > 0 && !right.isEmpty(); --k)
                right[qsizetype(random.bounded(quint32(right.size())))] = 'x';
            const RowComparison found = round % 4 == 0 ? compared(left, right) : compared(right, left);
            QCOMPARE(found.diffRows, plainRows(left, right));
            QCOMPARE(found.differing, qint64(found.diffRows.size()));
        }
    }

    void listsNoMoreThanTheLimit()
    {
        const QByteArray zeros(40 * mib, '\0');
        QByteArray other(40 * mib, 'x');
        other.replace(0, 16, zeros.left(16));
        for (const RowComparison &found : {compared(zeros, other), compared(zeros.left(16), other)}) {
            QVERIFY(found.isCapped);
            QCOMPARE(found.differing, 40 * mib / 16 - 1);
            QCOMPARE(found.diffRows.size(), RowComparison::listLimit);
            QVERIFY(std::is_sorted(found.diffRows.begin(), found.diffRows.end()));
            QCOMPARE(found.diffRows.front(), 1);
            QCOMPARE(found.diffRows.back(), qint64(RowComparison::listLimit));
        }
    }

    void countsBytesThatCannotBeReadAsDifferent()
    {
        const QByteArray bytes(mib, '\0');
        const auto whole = sourceOf({bytes});
        const auto hurt = sourceOf({bytes, 40'000, 40'010});
        const Rows lost = compared(*whole, *hurt).diffRows; // to the end of the page
        QCOMPARE(lost.front(), 2'500);
        QCOMPARE(lost.back(), 40'960 / 16 - 1);
        QCOMPARE(compared(*hurt, *hurt).diffRows, lost);
        const auto cut = sourceOf({bytes, -1, -1, 1'000});
        QCOMPARE(compared(*cut, *whole).differing, mib / 16 - 62);
        char byte = 0;
        QVERIFY(cut->read(999, &byte, 1));
        QVERIFY(!cut->read(1'000, &byte, 1));
        QVERIFY(!whole->read(mib, &byte, 1));
        QVERIFY(!whole->read(-1, &byte, 1));
    }

    void survivesAFileThatIsShortenedMeanwhile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(word("shrinks"));
        QVERIFY(makeFile(path, QByteArray(8 * mib, 'x')));
        const auto source = BinarySource::open(path);
        const auto whole = sourceOf({QByteArray(8 * mib, 'x')});
        QVERIFY(QFile::resize(path, 3 * mib + 5));
        const RowComparison found = compared(*source, *whole);
        QCOMPARE(found.rowCount, 8 * mib / 16);
        QCOMPARE(found.diffRows.front(), 3 * mib / 16);
        QCOMPARE(found.differing, 5 * mib / 16);
        QVERIFY(!BinarySource::open(folder.filePath(word("none"))));
        QVERIFY(!BinarySource::open(folder.path()));
    }

    void startsWhereItIsTold()
    {
        const QByteArray bytes = randomBytes(100'000, 3);
        const auto left = sourceOf({bytes});
        const auto right = sourceOf({"abcde" + bytes});
        QCOMPARE(compared(*left, *right, {0, 5}).differing, 0);
        QVERIFY(compared(*left, *right).differing > 6'000);
        QCOMPARE(compared(*left, *right, {200'000, 200'000}).rowCount, 0);
    }

    void tellsRangesOfBytes()
    {
        const auto left = sourceOf({QByteArray(100, 'a')});
        const auto right = sourceOf({QByteArray(20, 'a') + 'b' + QByteArray(20, 'a')});
        const BinaryPair files{{*left}, {*right}};
        Progress progress;
        const std::vector<AlignedRange> expected{{RangeKind::Changed, 16, 84, 16, 25}};
        QCOMPARE(rangesOfRows(compareRows(files, {}, progress), files), expected);
    }

    void alignsWhatMoved()
    {
        const QByteArray bytes = randomBytes(3 * mib, 5);
        using Ranges = std::vector<AlignedRange>;
        const qint64 size = bytes.size();
        const std::pair<QByteArray, Ranges> cases[] = {
            {bytes, {{RangeKind::Equal, 0, size, 0, size}}},
            {randomBytes(mib, 6) + bytes,
             {{RangeKind::Inserted, 0, 0, 0, mib}, {RangeKind::Equal, 0, size, mib, size}}},
            {bytes.mid(700), {{RangeKind::Deleted, 0, 700, 0, 0}, {RangeKind::Equal, 700, size - 700, 0, size - 700}}},
            {bytes.left(mib) + bytes.mid(2 * mib),
             {{RangeKind::Equal, 0, mib, 0, mib},
              {RangeKind::Deleted, mib, mib, mib, 0},
              {RangeKind::Equal, 2 * mib, mib, mib, mib}}},
            {randomBytes(mib, 8), {{RangeKind::Changed, 0, size, 0, mib}}},
            {{}, {{RangeKind::Deleted, 0, size, 0, 0}}},
        };
        for (const auto &[right, expected] : cases)
            QCOMPARE(aligned(bytes, right).ranges, expected);
        QCOMPARE(aligned(*sourceOf({bytes}), *sourceOf({bytes, -1, -1, mib})).ranges,
                 (Ranges{{RangeKind::Equal, 0, mib, 0, mib}, {RangeKind::Changed, mib, 2 * mib, mib, 2 * mib}}));
    }

    void alignmentsHoldForAnyEdits()
    {
        QRandomGenerator random(11);
        for (int round = 0; round < 40; ++round) {
            // Half of them with long runs of one byte, as programs and images have them.
            QByteArray left = randomBytes(200'000 + random.bounded(200'000), random.generate());
            if (round % 2 == 0)
                left.replace(50'000, 60'000, QByteArray(60'000, '\0'));
            QByteArray right = left;
            qint64 edited = 0;
            for (int k = 0; k < round / 2; ++k) {
                const int length = 1 + int(random.bounded(2'000U));
                const qsizetype at = random.bounded(quint32(right.size() - 2 * length));
                right.replace(at, random.bounded(3U) * quint32(length),
                              randomBytes(random.bounded(quint32(length)), random.generate()));
                edited += 3 * length;
            }
            const Alignment found = aligned(left, right);
            qint64 leftAt = 0;
            qint64 rightAt = 0;
            qint64 unequal = 0;
            for (const AlignedRange &range : found.ranges) {
                QCOMPARE(range.left, leftAt);
                QCOMPARE(range.right, rightAt);
                leftAt += range.leftLength;
                rightAt += range.rightLength;
                if (range.kind != RangeKind::Equal)
                    unequal += range.leftLength + range.rightLength;
                else
                    QCOMPARE(left.mid(range.left, range.leftLength), right.mid(range.right, range.rightLength));
            }
            QCOMPARE(leftAt, left.size());
            QCOMPARE(rightAt, right.size());
            QVERIFY2(unequal <= edited + round * 100 + (round % 2 == 0 ? 120'000 : 0),
                     qPrintable(QString::number(unequal - edited)));
        }
    }

    void readsWhatPeopleWrite()
    {
        for (const char *same : {"0aff41", "0A FF 41", "0x0a, 0xFF,0x41", "\\x0a\\xff\\x41"})
            QCOMPARE(bytesFromHex(word(same)), std::optional(QByteArray("\x0a\xff\x41")));
        for (const char *wrong : {"", " ", "0", "0 a", "0ag1", "abc"})
            QVERIFY(!bytesFromHex(word(wrong)));
        const std::pair<const char *, qint64> offsets[] = {
            {"1234", 1'234}, {" 0x4d2 ", 1'234}, {"4D2h", 1'234}, {"+0x10", 116}, {"-100", 0}};
        for (const auto &[text, offset] : offsets)
            QCOMPARE(offsetFromText(word(text), 100), std::optional(offset));
        for (const char *wrong : {"", "x", "-101", "+-1", "0x", "9223372036854775808", "+9223372036854775807"})
            QVERIFY(!offsetFromText(word(wrong), 100));
    }

    void tellsWhatBytesMean()
    {
        const auto value = [](const char *hex, ByteOrder order, ByteValue kind) {
            return byteValues(*bytesFromHex(word(hex)), order)[std::size_t(kind)];
        };
        using enum ByteValue;
        const std::tuple<const char *, ByteOrder, ByteValue, const char *> cases[] = {
            {"ff", ByteOrder::LittleEndian, Int8, "-1"},
            {"ff", ByteOrder::LittleEndian, Int16, ""},
            {"0180", ByteOrder::LittleEndian, Int16, "-32767"},
            {"0180", ByteOrder::BigEndian, UInt16, "384"},
            {"ffffffffffffffff", ByteOrder::BigEndian, UInt64, "18446744073709551615"},
            {"0000c03f", ByteOrder::LittleEndian, Float32, "1.5"},
            {"3ff8000000000000", ByteOrder::BigEndian, Float64, "1.5"},
            {"00000000", ByteOrder::BigEndian, UnixTime32, "1970-01-01 00:00:00 UTC"},
            {"ffffffff", ByteOrder::BigEndian, UnixTime32, "1969-12-31 23:59:59 UTC"},
            {"7fffffffffffffff", ByteOrder::BigEndian, UnixTime64, ""},
            {"00803ed5deb19d01", ByteOrder::LittleEndian, FileTime, "1970-01-01 00:00:00 UTC"},
            {"00602158", ByteOrder::LittleEndian, DosTime, "2024-01-01 12:00:00"},
            {"00000000", ByteOrder::LittleEndian, DosTime, ""},
            {"e4bda0", ByteOrder::LittleEndian, Utf8, "\u4f60 U+4F60"},
            {"e4bd", ByteOrder::LittleEndian, Utf8, ""},
            {"3dd800de", ByteOrder::LittleEndian, Utf16, "\U0001F600 U+1F600"},
            {"a5", ByteOrder::LittleEndian, Bits, "10100101"},
        };
        for (const auto &[bytes, order, kind, text] : cases)
            QCOMPARE(value(bytes, order, kind), word(text));
    }

    void passesOverHoles()
    {
#ifndef Q_OS_UNIX
        QSKIP("files with holes are made the Unix way");
#endif
        const QTemporaryDir folder;
        constexpr qint64 size = 100LL * 1024 * mib;
        for (const char *name : {"left", "right"}) {
            QFile file(folder.filePath(word(name)));
            QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(size) && file.seek(size / 2 + 5));
            QCOMPARE(file.write(name, 1), 1);
        }
        QElapsedTimer timer;
        timer.start();
        const RowComparison found = compared(*BinarySource::open(folder.filePath(word("left"))),
                                             *BinarySource::open(folder.filePath(word("right"))));
        QCOMPARE(found.diffRows, Rows{size / 2 / 16});
        const Alignment ranges = aligned(*BinarySource::open(folder.filePath(word("left"))),
                                         *BinarySource::open(folder.filePath(word("right"))));
        QCOMPARE(ranges.differences(), 1);
        QCOMPARE(ranges.ranges.at(1), (AlignedRange{RangeKind::Changed, size / 2 + 5, 1, size / 2 + 5, 1}));
        QVERIFY2(timer.elapsed() < 20'000, "reading all of it takes longer");
    }
};

VELMORA_TEST(BinaryEngineTest)
#include "binary_engine_test.moc"
