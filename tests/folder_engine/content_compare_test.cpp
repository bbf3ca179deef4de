#include "core/content_compare.h"
#include "core/crc32.h"
#include "core/crc32_folding.h"
#include "core/crew.h"
#include "folder/engine/folder_engine.h"
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
        // All lengths around the lanes and steps, at all alignments, from registers with any bits.
        for (qsizetype length = 0; length < 300; ++length) {
            for (qsizetype begin = 0; begin < 17; ++begin) {
                const QByteArrayView view(bytes.constData() + begin, length);
                const quint32 state = quint32(length) * 0x9E3779B9U;
                QCOMPARE(crc32Folding(state, view), crc32BitByBit(state, view));
            }
        }
        QCOMPARE(crc32Folding(0, bytes), crc32BitByBit(0, bytes));
    }

    void computesCrcsOfFiles()
    {
        TestTree tree;
        for (const qsizetype size : {0, 1, 262'143, 262'144, 262'145, 1'100'000}) {
            tree.file(QStringLiteral("left/f"), randomBytes(size, unsigned(size)));
            QCOMPARE(fileCrc32(tree.path(QStringLiteral("left/f"))), plain::crc32(tree.path(QStringLiteral("left/f"))));
        }
        QCOMPARE(fileCrc32(tree.path(QStringLiteral("left/f"))).size(), 4);
        QCOMPARE(fileCrc32(tree.path(QStringLiteral("nowhere"))), QByteArray());
        QCOMPARE(fileCrc32(tree.left()), QByteArray());
    }

    /// The contents of a pair differ at one place, with a common zero at another, around the borders of pieces and
    /// blocks.
    void agreesWithThePlainForms()
    {
        constexpr qsizetype piece = 256 * 1024;
        constexpr qsizetype block = 1024 * 1024;
        const QString left = QStringLiteral("left/f");
        const QString right = QStringLiteral("right/f");
        TestTree tree;
        ContentComparer comparer(FileAccess::native(), {});
        const auto check = [&] {
            const QString l = tree.path(left);
            const QString r = tree.path(right);
            QCOMPARE(comparer.sameByDigest(l, r), plain::sameByDigest(l, r));
            QCOMPARE(comparer.sameByBlocks(l, r), plain::sameByBlocks(l, r));
        };
        const QByteArray bytes = randomBytes(block + piece + 10, 5);
        const QList<qsizetype> places{0,         1,     piece - 1,         piece,     piece + 1,
                                      block - 1, block, block + piece - 1, block + 1, bytes.size() - 1};
        for (const qsizetype difference : places) {
            for (const qsizetype zero : places) {
                QByteArray l = bytes;
                QByteArray r = bytes;
                l[zero] = r[zero] = '\0';
                r[difference] = static_cast<char>(r[difference] ^ 1);
                tree.file(left, l);
                tree.file(right, r);
                check();
            }
        }
        for (const qsizetype longer : {1, 1000, 262'144}) {
            tree.file(left, bytes.first(piece));
            tree.file(right, bytes.first(piece + longer));
            check();
            QVERIFY(!comparer.sameByCrc32(tree.path(left), tree.path(right)));
        }
        tree.file(right, bytes.first(piece));
        check();
        QVERIFY(comparer.sameByCrc32(tree.path(left), tree.path(right)));
        QVERIFY(comparer.sameByDigest(tree.path(left), tree.path(left)));
        QVERIFY(!comparer.sameByDigest(tree.path(left), tree.left()));
        QVERIFY(!comparer.sameByBlocks(tree.path(QStringLiteral("none")), tree.path(QStringLiteral("none"))));
    }

    void computesTheCrcsOfLargeFiles()
    {
        TestTree tree;
        QByteArray bytes = randomBytes(9'000'000, 8);
        tree.file(QStringLiteral("left/f"), bytes);
        tree.file(QStringLiteral("right/same"), bytes);
        bytes[8'999'999] = '\0';
        tree.file(QStringLiteral("right/other"), bytes);
        ContentComparer comparer(FileAccess::native(), {});
        qint64 counted = 0;
        comparer.setBytesListener([&](qint64 count) { counted += count; });
        QVERIFY(comparer.sameByCrc32(tree.path(QStringLiteral("left/f")), tree.path(QStringLiteral("right/same"))));
        QCOMPARE(counted, 18'000'000);
        QVERIFY(!comparer.sameByCrc32(tree.path(QStringLiteral("left/f")), tree.path(QStringLiteral("right/other"))));
        QCOMPARE(comparer.crc32(tree.path(QStringLiteral("left/f"))),
                 plain::crc32(tree.path(QStringLiteral("left/f"))));
    }

    void countsTheBytesOfOneSide()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/f"), randomBytes(600'000, 3));
        tree.file(QStringLiteral("right/f"), randomBytes(600'000, 3));
        ContentComparer comparer(FileAccess::native(), {});
        qint64 counted = 0;
        comparer.setBytesListener([&](qint64 bytes) { counted += bytes; });
        QVERIFY(comparer.sameByDigest(tree.path(QStringLiteral("left/f")), tree.path(QStringLiteral("right/f"))));
        QCOMPARE(counted, 600'000);
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
