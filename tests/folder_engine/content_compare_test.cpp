#include "core/content_compare.h"
#include "core/crc32.h"
#include "core/crc32_folding.h"
#include "core/crew.h"
#include "core/pair_scan.h"
#include "folder/engine/folder_engine.h"
#include "folder_engine/memory_tree.h"
#include "folder_engine/plain_engine.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <atomic>
#include <random>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray randomBytes(qsizetype size, unsigned seed)
{
    std::mt19937 random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random() % 255 + 1); // no zeros: where they stand is the test's to say
    return bytes;
}

} // namespace

class ContentCompareTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knowsTheStandardCrcs()
    {
        Crc32 empty;
        QCOMPARE(empty.value(), 0U);
        Crc32 check;
        check.update("12345");
        check.update({});
        check.update("6789");
        QCOMPARE(check.value(), 0xCBF43926U);
    }

    void foldsToTheCrcOfTheDefinition()
    {
        if (!hasCrc32Folding())
            QSKIP("no carry-less multiplication on this processor");
        const QByteArray bytes = randomBytes(1500, 1);
        const auto wide = hasCrc32WideFolding() ? crc32WideFolding : crc32Folding;
        // All lengths around the lanes and steps, at all alignments, from registers with any bits.
        for (qsizetype length = 0; length < 600; ++length) {
            for (qsizetype begin = 0; begin < 17; ++begin) {
                const QByteArrayView view(bytes.constData() + begin, length);
                const quint32 state = quint32(length) * 0x9E3779B9U;
                QCOMPARE(crc32Folding(state, view), crc32BitByBit(state, view));
                QCOMPARE(wide(state, view), crc32BitByBit(state, view));
            }
        }
        QCOMPARE(crc32Folding(0, bytes), crc32BitByBit(0, bytes));
        QCOMPARE(wide(0, bytes), crc32BitByBit(0, bytes));
    }

    /// The contents of a pair differ at one place, with a common zero at another, around the borders of pieces and
    /// blocks.
    void agreesWithThePlainForms()
    {
        constexpr qsizetype piece = 256 * 1024;
        constexpr qsizetype block = 1024 * 1024;
        TestTree tree;
        const QString l = tree.path(word("left/f"));
        const QString r = tree.path(word("right/f"));
        ContentComparer comparer(FileAccess::native(), {});
        const auto check = [&](const QByteArray &left, const QByteArray &right) {
            tree.file(word("left/f"), left);
            tree.file(word("right/f"), right);
            QCOMPARE(comparer.sameByDigest(l, r), left == right);
            QCOMPARE(comparer.sameByBlocks(l, r), plain::sameByBlocks(l, r));
            QCOMPARE(comparer.sameByCrc32(l, r), left == right);
        };
        const QByteArray bytes = randomBytes(block + piece + 10, 5);
        const QList<qsizetype> places{0,         1,     piece - 1,         piece,     piece + 1,
                                      block - 1, block, block + piece - 1, block + 1, bytes.size() - 1};
        for (const qsizetype difference : places) {
            for (const qsizetype zero : places) {
                QByteArray left = bytes;
                QByteArray right = bytes;
                left[zero] = right[zero] = '\0';
                right[difference] = static_cast<char>(right[difference] ^ 1);
                check(left, right);
            }
        }
        for (const qsizetype longer : {0, 1, 1000, 262'144})
            check(bytes.first(piece), bytes.first(piece + longer));
        QVERIFY(comparer.sameByDigest(l, l));
        QVERIFY(!comparer.sameByDigest(l, tree.left()));
        QVERIFY(!comparer.sameByBlocks(l + u'x', l + u'x'));
    }

    void computesTheCrcsOfFilesAndCountsTheirBytes()
    {
        TestTree tree;
        const QString l = tree.path(word("left/f"));
        const QString r = tree.path(word("right/f"));
        ContentComparer comparer(FileAccess::native(), {});
        qint64 counted = 0;
        comparer.setBytesListener([&](qint64 count) { counted += count; });
        for (const qsizetype size : {0, 1, 262'143, 262'144, 262'145, 9'000'000}) {
            const QByteArray bytes = randomBytes(size, unsigned(size));
            tree.file(word("left/f"), bytes);
            tree.file(word("right/f"), bytes);
            QCOMPARE(comparer.crc32(l), plain::crc32(l));
            counted = 0;
            QVERIFY(comparer.sameByDigest(l, r));
            QCOMPARE(counted, size);
            QVERIFY(comparer.sameByCrc32(l, r));
            QCOMPARE(counted, 3 * size); // of both sides
        }
        tree.file(word("right/f"), randomBytes(9'000'000, 1));
        QVERIFY(!comparer.sameByCrc32(l, r));
        QCOMPARE(fileCrc32(l + u'x'), QByteArray());
        QCOMPARE(fileCrc32(tree.left()), QByteArray());
    }

    /// Several threads find what one finds, whatever differs, fails or ends where, and count each equal byte once.
    void findsTheSameEndWithACrew()
    {
        constexpr qint64 block = 1024 * 1024;
        std::mt19937 random(7);
        const auto below = [&random](qint64 bound) { return qint64(random() % quint32(bound)); };
        const QByteArray bytes = randomBytes(18 * block, 3);
        PieceBuffers buffers;
        for (int round = 0; round < 60; ++round) {
            MemoryTree files;
            MemoryTree::File &left = files.addFile(word("/l"), bytes);
            MemoryTree::File &right = files.addFile(word("/r"), bytes);
            for (qint64 n = below(3); n > 0; --n)
                right.bytes[below(bytes.size())] = 'x';
            for (qint64 n = below(12); n > 0; --n) {
                const qint64 zero = below(bytes.size());
                left.bytes[zero] = right.bytes[zero] = 0;
            }
            if (below(4) == 0)
                right.bytes.truncate(below(bytes.size()));
            if (below(3) == 0)
                left.failsAt = right.failsAt = below(bytes.size());
            const auto opener = files.makeOpener();
            const auto l = opener->open(word("/l"), OpenHint::Unknown);
            const auto r = opener->open(word("/r"), OpenHint::Unknown);
            for (const PieceRule rule : {PieceRule::Bytes, PieceRule::ZeroEndBlocks}) {
                const PairScan scan(*l, *r, rule, {});
                qint64 alone = 0;
                qint64 together = 0;
                const auto plain = scan.walk(
                    0, PairScan::toTheEnd, buffers, [](qint64) { return true; }, [&](qint64 n) { alone += n; });
                const auto crew = scan.walkWithCrew(0, buffers, [&](qint64 n) { together += n; });
                QVERIFY(plain && crew);
                QCOMPARE(crew->offset, plain->offset);
                QCOMPARE(crew->same, plain->same);
                QCOMPARE(crew->leftFailed, plain->leftFailed);
                QCOMPARE(crew->rightFailed, plain->rightFailed);
                if (plain->same)
                    QCOMPARE(together, alone);
            }
        }
    }

    void runsACrewToItsEnd()
    {
        std::atomic<int> workers{0};
        std::atomic<int> ticks{0};
        runCrew(
            4,
            [&](int worker) {
                ++workers;
                while (worker != 0 && ticks == 0)
                    std::this_thread::yield();
            },
            [&] { ++ticks; });
        QCOMPARE(workers, 4);
        QVERIFY(ticks > 0);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, runCrew(3,
                                                         [](int worker) {
                                                             if (worker == 2)
                                                                 throw std::bad_alloc();
                                                         },
                                                         {}));
    }
};

VELMORA_TEST(ContentCompareTest)
#include "content_compare_test.moc"
