#include "support/test_main.h"
#include "text/engine/match_input.h"
#include "text/engine/sequence_matcher.h"
#include "text_engine/plain_engine.h"
#include "text_engine/sequences.h"

#include <QElapsedTimer>

#include <limits>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr qint64 neverTable = 0;
constexpr qint64 alwaysTable = std::numeric_limits<qint64>::max();

/// Sizes that bring every stage of the block matcher to bear on small inputs.
struct NamedTuning {
    const char *name;
    std::vector<qint32> longRuns;
    qint64 pairsPerElement;
    qint64 stepsPerElement;
    qint64 markShare;
    qint32 lopsidedRounds;

    [[nodiscard]] MatchTuning tuning() const
    {
        return {.pairsPerElement = pairsPerElement,
                .longRuns = longRuns,
                .stepsPerElement = stepsPerElement,
                .markShare = markShare,
                .lopsidedRounds = lopsidedRounds};
    }
};

const std::vector<NamedTuning> &tunings()
{
    static const std::vector<NamedTuning> list{
        {"pairs only", {}, 1000000, 24, 8, 3},
        {"sweep only, sorting", {}, 0, 24, 0, 1000},
        {"sweep only, marking", {}, 0, 24, 1000, 1000},
        {"cascade only", {}, 0, 24, 8, 0},
        {"sweep and cascade", {}, 1, 24, 8, 1},
        {"long runs, then sweep", {6, 3, 2}, 0, 1000000, 2, 3},
        {"long runs, then pairs", {5, 2}, 1, 1000000, 2, 3},
        {"long runs given up", {16, 4}, 1, 3, 4, 2},
        {"as delivered", {32, 8}, 4, 24, 8, 3},
    };
    return list;
}

QByteArray dump(const std::vector<qint32> &a, const std::vector<qint32> &b)
{
    QByteArray text;
    for (const std::vector<qint32> *sequence : {&a, &b}) {
        for (const qint32 value : *sequence)
            text += QByteArray::number(value) + ' ';
        text += '|';
    }
    return text;
}

std::vector<MatchPair> pairsOf(const std::vector<MatchBlock> &runs)
{
    std::vector<MatchPair> pairs;
    for (const MatchBlock &run : runs) {
        for (qint32 k = 0; k < run.length; ++k)
            pairs.push_back({run.a + k, run.b + k});
    }
    return pairs;
}

/// Checks every form of the block matcher against the plain one; false, and a message, at the first difference.
bool blocksAgree(const std::vector<qint32> &a, const std::vector<qint32> &b)
{
    const std::vector<MatchPair> expected = plain::blockMatch(a, b);
    for (const NamedTuning &named : tunings()) {
        if (pairsOf(matchedRuns(a, b, neverTable, named.tuning(), {})) != expected) {
            qWarning("%s differs: %s", named.name, dump(a, b).constData());
            return false;
        }
    }
    return true;
}

bool tableAgrees(const std::vector<qint32> &a, const std::vector<qint32> &b)
{
    if (matchSequences(a, b, alwaysTable) == plain::tableMatch(a, b))
        return true;
    qWarning("the table differs: %s", dump(a, b).constData());
    return false;
}

} // namespace

class SequenceMatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyPairOfShortSequences()
    {
        const std::vector<std::vector<qint32>> all = allSequences(3, 5);
        for (const std::vector<qint32> &a : all) {
            for (const std::vector<qint32> &b : all) {
                QVERIFY(tableAgrees(a, b));
                QVERIFY(blocksAgree(a, b));
            }
        }
    }

    void randomSequences()
    {
        Random random(20240601);
        for (int round = 0; round < 4500; ++round) {
            const bool edits = round % 3 == 0;
            const qint32 alphabet = round % 9 == 0 ? 1000 : 1 + qint32(random.below(edits ? 20 : 8));
            const qint32 longest = edits ? 150 : round % 50 == 1 ? 300 : 60;
            const std::vector<qint32> a = random.sequence(longest, alphabet);
            const std::vector<qint32> b =
                edits ? random.edited(a, 1 + qint32(random.below(12)), alphabet) : random.sequence(longest, alphabet);
            QVERIFY(tableAgrees(a, b));
            QVERIFY(blocksAgree(a, b));
        }
        for (int round = 0; round < 60; ++round) { // rows of several words, of which some have nothing equal
            const qint32 alphabet = 50 + qint32(random.below(300));
            const std::vector<qint32> a = random.sequence(500, alphabet);
            QVERIFY(tableAgrees(a, random.sequence(700, alphabet)));
        }
    }

    void repetitiveShapes_data()
    {
        QTest::addColumn<int>("shape");
        for (int shape = 0; shape < shapeCount; ++shape)
            QTest::newRow(shapeName(shape)) << shape;
    }

    void repetitiveShapes()
    {
        QFETCH(int, shape);
        for (const qint32 size : {40, 97, 210}) {
            const SequencePair pair = shapedPair(shape, size);
            QVERIFY(tableAgrees(pair.a, pair.b));
            QVERIFY(blocksAgree(pair.a, pair.b));
            QVERIFY(blocksAgree(pair.b, pair.a));
        }
    }

    void valuesAreArbitrary()
    {
        constexpr qint32 least = std::numeric_limits<qint32>::min();
        for (const qint32 most : {std::numeric_limits<qint32>::max(), 7}) {
            const std::vector<qint32> a{-5, most, 3, -5, least};
            const std::vector<qint32> b{least, -5, most, 3};
            QVERIFY(tableAgrees(a, b));
            QVERIFY(blocksAgree(a, b));
        }
    }

    /// What takes the plain form minutes or hours must take the matcher a moment.
    void largeShapes_data() { repetitiveShapes_data(); }

    void largeShapes()
    {
        QFETCH(int, shape);
        const SequencePair pair = shapedPair(shape, 100000);
        QElapsedTimer timer;
        timer.start();
        const std::vector<MatchPair> pairs = matchSequences(pair.a, pair.b, lineTableLimit);
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        qint32 i = -1;
        qint32 j = -1;
        for (const MatchPair &match : pairs) {
            QVERIFY(match.i > i && match.j > j && pair.a[size_t(match.i)] == pair.b[size_t(match.j)]);
            i = match.i;
            j = match.j;
        }
    }

    void endsWhenCancelled()
    {
        const SequencePair pair = shapedPair(6, 100000);
        const CancelFlag cancel;
        int looks = 0;
        const auto count = [&](qint64) {
            if (++looks == 40)
                cancel.cancel();
        };
        QVERIFY(matchedRuns(pair.a, pair.b, lineTableLimit, defaultMatchTuning(), cancel, count).empty());
        QCOMPARE(looks, 40);
    }
};

VELMORA_TEST(SequenceMatcherTest)
#include "sequence_matcher_test.moc"
