#include "support/test_main.h"
#include "text/engine/candidate_window.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/line_similarity.h"
#include "text_engine/lines.h"
#include "text_engine/plain_engine.h"

#include <array>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Rows or lines for a message, cut to a length that can be read.
template <typename List>
QByteArray excerpt(const List &list)
{
    return dump(list).left(4000);
}

/// Compares in both forms and against the plain form; false, and a message, at the first difference.
bool comparisonAgrees(const QStringList &left, const QStringList &right, const TextSessionOptions &options)
{
    const QList<DiffLine> expected = plain::compare(left, right, options);
    const auto check = [&](const char *form, const QList<DiffLine> &rows) {
        if (rows == expected)
            return true;
        qWarning("%s: mode %d, skew %d\n%s\n%s\nexpected\n%sgot\n%s", form, options.alignAlgorithm,
                 options.curvatureTolerance, excerpt(left).constData(), excerpt(right).constData(),
                 excerpt(expected).constData(), excerpt(rows).constData());
        return false;
    };
    if (!check("strings", compareTextLines(left, right, options)))
        return false;
    const TextLines leftLines = toTextLines(left);
    const TextLines rightLines = toTextLines(right);
    Progress progress;
    const QList<AlignedRow> rows = compareTexts(leftLines, rightLines, options, {}, progress);
    return check("bytes", withTexts(rows, leftLines, rightLines, options));
}

TextSessionOptions everythingCounts()
{
    TextSessionOptions options;
    options.importantLeadingWhitespace = options.importantEmbeddedWhitespace = true;
    options.importantTrailingWhitespace = true;
    return options;
}

QStringList split(const char *text)
{
    return QString::fromUtf8(text).split(u'|');
}

} // namespace

class LineDiffEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Pictures of the rows, worked out by hand.
    void rows()
    {
        struct Case {
            const char *left;
            const char *right;
            qint32 mode;
            const char *rows;
        };
        const std::array cases{
            Case{"one|two 2|three", "one|two 3|three", 0,
                 "= 1 1 [one] [one]\n~ 2 2 [two 2] [two 3]\n= 3 3 [three] [three]\n"},
            // Myers never pairs.
            Case{"one|two 2|two 4|three", "one|two 3|three", 1,
                 "= 1 1 [one] [one]\n- 2 -1 [two 2] []\n+ -1 2 [] [two 3]\n- 3 -1 [two 4] []\n"
                 "= 4 3 [three] [three]\n"},
            // Patience pairs from a half on, the standard from 0.35 on: here 7 of 20 units, to the last bit.
            Case{"abcdef", "abcxyz", 2, "~ 1 1 [abcdef] [abcxyz]\n"},
            Case{"abcdefg", "abcxyzq", 2, "- 1 -1 [abcdefg] []\n+ -1 1 [] [abcxyzq]\n"},
            Case{"abcdefgHIJKLMNOPQRST", "abcdefg4567890123456", 0,
                 "~ 1 1 [abcdefgHIJKLMNOPQRST] [abcdefg4567890123456]\n"},
            // What is in common at the start and at the end does not overlap.
            Case{"aaa", "aaaaaaaaa", 0, "- 1 -1 [aaa] []\n+ -1 1 [] [aaaaaaaaa]\n"},
            Case{"value = 1", "#|%|value = 2|&", 0,
                 "+ -1 1 [] [#]\n+ -1 2 [] [%]\n~ 1 3 [value = 1] [value = 2]\n+ -1 4 [] [&]\n"},
            Case{"same|p|q|r", "same|x", 0,
                 "= 1 1 [same] [same]\n- 2 -1 [p] []\n+ -1 2 [] [x]\n- 3 -1 [q] []\n- 4 -1 [r] []\n"},
            Case{"a|b|c", "b| b", 3, "~ 1 1 [a] [b]\n= 2 2 [b] [ b]\n- 3 -1 [c] []\n"},
            // White space does not count by default.
            Case{"\ta  b |c", "a b|\u00A0c", 0, "= 1 1 [\ta  b ] [a b]\n= 2 2 [c] [\u00A0c]\n"},
            // Any other mode is the standard one.
            Case{"two 2", "two 3", 77, "~ 1 1 [two 2] [two 3]\n"},
        };
        for (const Case &pictured : cases) {
            TextSessionOptions options;
            options.alignAlgorithm = pictured.mode;
            const QStringList left = split(pictured.left);
            const QStringList right = split(pictured.right);
            QCOMPARE(dump(compareTextLines(left, right, options)), QByteArray(pictured.rows));
            QVERIFY(comparisonAgrees(left, right, options));
        }
    }

    /// The text of an orphan is looked at as its row shows it, that of a key without its carriage return.
    void orphansWithACarriageReturn()
    {
        TextSessionOptions options;
        options.unimportantText = split("end\\z");
        const QStringList left = split("x|the end\r");
        QCOMPARE(dump(compareTextLines(left, split("x"), options)), "= 1 1 [x] [x]\n- 2 -1 [the end\\r] []\n");
        options.compareLineEndings = false;
        QCOMPARE(dump(compareTextLines(left, split("x"), options)), "= 1 1 [x] [x]\n= 2 -1 [the end] [the end]\n");
    }

    void parameters()
    {
        const auto params = [](qint32 algorithm, qint32 tolerance, bool nearby, bool never) {
            TextSessionOptions options;
            options.alignAlgorithm = algorithm;
            options.curvatureTolerance = tolerance;
            options.useNearbyMatches = nearby;
            options.neverAlignDifferences = never;
            return alignParams(options);
        };
        QCOMPARE(alignParams({}), (AlignParams{0, 0.35, 3, 2000}));
        QCOMPARE(params(0, -5, false, false), (AlignParams{0, 0.35, 0, 0}));
        QCOMPARE(params(2, -5, true, false), (AlignParams{2, 0.5, 3, 0}));
        QCOMPARE(params(1, -5, true, false), (AlignParams{1, 1.0, 0, 0}));
        QCOMPARE(params(3, -5, true, true), (AlignParams{3, 1.0, 3, 0}));
    }

    /// 632 by 632 lines are matched by the table, 633 by 633 by blocks, and these two differ.
    void theTableEndsAt400000Cells()
    {
        // The longest block is "x y z", which is in the way of the longest common subsequence.
        const auto equalRows = [](qint32 leftSize, qint32 rightSize) {
            QStringList left = split("x|y|z|a|-|b|-|c|-|d");
            QStringList right = split("a|+|b|+|c|+|d|x|y|z");
            while (left.size() < leftSize)
                left.append(QStringLiteral("left %1").arg(left.size()));
            while (right.size() < rightSize)
                right.append(QStringLiteral("%1 right").arg(right.size()));
            const QList<DiffLine> rows = compareTextLines(left, right, {});
            return std::count_if(rows.begin(), rows.end(), [](const DiffLine &row) { return row.kind == Equal; });
        };
        QCOMPARE(equalRows(632, 632), 4);
        QCOMPARE(equalRows(400, 1000), 4);
        QCOMPARE(equalRows(633, 633), 3);
        QCOMPARE(equalRows(400, 1001), 3);
    }

    void everyPairOfShortTexts()
    {
        const QStringList words = split("abc|abd| abc");
        QList<QStringList> texts;
        for (const std::vector<qint32> &sequence : allSequences(3, 4)) {
            QStringList text;
            for (const qint32 value : sequence)
                text.append(words[value]);
            texts.append(text);
        }
        TextSessionOptions options = everythingCounts();
        for (qint32 mode = 0; mode < 4; ++mode) {
            options.alignAlgorithm = mode;
            options.curvatureTolerance = mode == 0 ? 1 : 2000;
            for (const QStringList &left : texts) {
                for (const QStringList &right : texts)
                    QVERIFY(comparisonAgrees(left, right, options));
            }
        }
    }

    void randomTextsAndOptions()
    {
        Random random(99);
        for (int round = 0; round < 4000; ++round) {
            const TextSessionOptions options = randomOptions(random);
            const QStringList left = randomLines(random, 25);
            const QStringList right =
                random.below(3) == 0 ? randomLines(random, 25) : editedLines(random, left, 1 + qint32(random.below(8)));
            QVERIFY(comparisonAgrees(left, right, options));
            QCOMPARE(diffLinesByIndex(left, right), plain::byIndex(left, right));
        }
    }

    /// Large enough for the block method, and for gaps that are searched by marks.
    void randomLargeTexts()
    {
        Random random(7);
        for (int round = 0; round < 6; ++round) {
            TextSessionOptions options = randomOptions(random);
            options.alignAlgorithm = round % 2 == 0 ? 0 : 2;
            options.neverAlignDifferences = false;
            QStringList left;
            while (left.size() < 700)
                left += randomLines(random, 40);
            QVERIFY(comparisonAgrees(left, editedLines(random, left, 120), options));
        }
    }

    /// All is one gap, since no line of one side is on the other: in it stretches that are paired line by line stand
    /// between such that are searched through in vain, or all are long lines that are alike in part.
    void wideGaps()
    {
        for (const auto &[lookahead, skew] : {std::pair(0, 2000), std::pair(700, 100), std::pair(3, 30)}) {
            Random random(quint64(lookahead + skew));
            const auto lines = [&random](QChar mark, int count, int alikeUntil) {
                QStringList result;
                for (int line = 0; line < count; ++line) {
                    if (line / 150 % 2 == 1 && line < alikeUntil) {
                        result.append(QStringLiteral("%1 a line that is much like its partner").arg(line) + mark);
                        continue;
                    }
                    QString start =
                        QStringLiteral("2024-01-0%1 ").arg(random.below(4)).left(qsizetype(random.below(14)));
                    start += mark + randomLine(random, 6) + QString(qsizetype(random.below(80)), u'-');
                    result.append(start + QString::number(random.below(4)));
                }
                return result;
            };
            const QStringList left = lines(u'<', 400, 600);
            const QStringList right = lines(u'>', 900, 600);
            for (const double threshold : {-1.0, 0.0, 0.1, 0.35, 0.5, 0.8, 1.0, 1.5}) {
                const AlignParams params{0, threshold, lookahead, skew};
                QCOMPARE(dump(diffLinesAligned(left, right, params)), dump(plain::aligned(left, right, params)));
            }
        }
    }

    /// Marks may let a line through that shares too little, but not many, and never hold one back.
    void marksSortOutMostLines()
    {
        Random random(44);
        const auto line = [&random] {
            std::string text(size_t(random.below(90)), 'a');
            for (quint64 change = random.below(4); change > 0 && !text.empty(); --change)
                text[size_t(random.below(text.size()))] = char('b' + random.below(3));
            return text;
        };
        int passed = 0;
        int passedInVain = 0;
        for (int round = 0; round < 50000; ++round) {
            const std::string left = line();
            const std::string right = line();
            const auto units = qint64(1 + random.below(std::max<size_t>(left.size(), 1)));
            CandidateWindow window;
            window.reset(0);
            window.append(LineMarks(std::string_view(right)));
            const size_t prefix = commonPrefix(std::string_view(left), std::string_view(right));
            const size_t rest = std::min(left.size(), right.size()) - prefix;
            const size_t shared = prefix + commonSuffix(std::string_view(left), std::string_view(right), rest);
            const bool passes = window.find(LineMarks(std::string_view(left)), units, 0, 1) == 0;
            QVERIFY(passes || qint64(shared) < units);
            passed += passes;
            passedInVain += passes && qint64(shared) < units;
        }
        QVERIFY2(passedInVain < passed / 4, qPrintable(QStringLiteral("%1 of %2").arg(passedInVain).arg(passed)));
    }

    void halfSurrogatePairs()
    {
        const QString high(QChar(0xD83D));
        const QString low(QChar(0xDE00));
        const QStringList left{high, low, high + low, QStringLiteral("a ") + low, QString()};
        const QStringList right{low + high, high + QStringLiteral(" b"), high + QChar(0xDE01),
                                QStringLiteral(" A ") + low};
        Random random(3);
        for (int round = 0; round < 200; ++round) {
            TextSessionOptions options = randomOptions(random);
            options.unimportantText.append(round % 2 == 0 ? high : QStringLiteral("^$"));
            QCOMPARE(dump(compareTextLines(left, right, options)), dump(plain::compare(left, right, options)));
        }
    }

    void rowsOutsideTheTextHaveNone()
    {
        const TextLines lines = toTextLines(split("a"));
        QCOMPARE(dump(withTexts({{Modified, 1, 9}}, lines, lines, {})), "~ 1 9 [a] []\n");
    }

    void countsTheRows()
    {
        TextSessionOptions options;
        options.unimportantText = {QStringLiteral("#")};
        const DiffCounts counts = countRows(compareTextLines(split("a|b2|c|#"), split("a|b3|x|y"), options));
        QCOMPARE(counts, (DiffCounts{2, 1, 1, 4, 4}));
        QCOMPARE(counts.differences(), 4);
    }

    void cancelledRunsAreEmpty()
    {
        QStringList left;
        QStringList right;
        for (int line = 0; line < 30000; ++line) {
            left.append(QString::number(line % 7));
            right.append(QString::number(line % 5));
        }
        const CancelFlag cancel;
        cancel.cancel();
        QVERIFY(compareTextLines(left, right, {}, cancel).isEmpty());
        QVERIFY(diffLinesAligned(left, right, {}, cancel).isEmpty());
        QVERIFY(intraLineChanges(left.join(u' '), right.join(u'-'), cancel).isEmpty());
        Progress progress;
        QVERIFY(compareTexts(toTextLines(left), toTextLines(right), {}, cancel, progress).isEmpty());
    }

    /// Such an expression tries each of the ways to divide a run of letters, whose number doubles with each letter.
    void anExpressionThatRunsAwayGivesUp()
    {
        TextSessionOptions options;
        options.unimportantText = split("(a+)+$|stamp");
        const QString slow = QString(60, u'a') + u'!';
        const TextLines leftLines = toTextLines(split("same") + QStringList(slow + u'1') + split("aaa|stamp 1"));
        const TextLines rightLines = toTextLines(split("same") + QStringList(slow + u'2') + split("aaaa|stamp 2"));
        Progress progress;
        CompareRemarks remarks;
        const auto rows = compareTexts(leftLines, rightLines, options, {}, progress, &remarks);
        const DiffCounts counts = countRows(rows);
        QVERIFY(counts.differences() > 0); // the slow lines count
        QVERIFY(remarks.expressionsGivenUp >= 2);
        QCOMPARE(rows.first().kind, Equal);
        QCOMPARE(rows.last().kind, Equal);              // by the other expression
        QCOMPARE(rows.at(rows.size() - 2).kind, Equal); // where the slow one can be decided
        options.unimportantText = split("stamp");
        const auto plain = compareTexts(leftLines, rightLines, options, {}, progress, &remarks);
        QCOMPARE(remarks.expressionsGivenUp, 0);
        QVERIFY(countRows(plain).differences() > counts.differences());
    }

    void slowExpressionsAreLeftOutAtOnceAndCancelledOneByOne()
    {
        TextSessionOptions options;
        for (int expression = 0; expression < 40; ++expression)
            options.unimportantText.append(QStringLiteral("(a+)+(?#%1)$").arg(expression));
        QStringList lines;
        for (int line = 0; line < 5000; ++line)
            lines.append(QString::number(line) + QString(60, u'a') + u'!');
        for (const bool cancels : {false, true}) {
            const CancelFlag cancel;
            QStringList told;
            Progress progress(
                [&](const ProgressState &state) {
                    if (state.item.isEmpty())
                        return;
                    told.append(state.item);
                    if (cancels)
                        cancel.cancel();
                },
                std::chrono::milliseconds(0));
            CompareRemarks remarks;
            const TextLines text = toTextLines(lines);
            QCOMPARE(compareTexts(text, text, options, cancel, progress, &remarks).isEmpty(), cancels);
            QCOMPARE(told, cancels ? options.unimportantText.first(1) : options.unimportantText);
            if (!cancels)
                QCOMPARE(remarks.expressionsGivenUp, 3 * 40); // of the 40 times 5,000 searches
        }
    }

    void progressCountsBothPhases()
    {
        QStringList left;
        for (int line = 0; line < 90000; ++line)
            left.append(QString::number(line));
        QStringList right = left;
        right[45000] = QStringLiteral("changed");
        ProgressState last{0, 0, 0, {}};
        int told = 0;
        Progress progress(
            [&](const ProgressState &state) {
                QVERIFY(state.phase == last.phase ? state.done >= last.done : state.phase == last.phase + 1);
                QCOMPARE(state.total, state.phase == 0 ? 180000 : 90000);
                QVERIFY(state.done <= state.total);
                last = state;
                ++told;
            },
            std::chrono::milliseconds(0));
        QCOMPARE(compareTexts(toTextLines(left), toTextLines(right), {}, {}, progress).size(), 90001);
        QVERIFY(told > 1);
        QCOMPARE(last.phase, 1);
    }
};

VELMORA_TEST(LineDiffEngineTest)
#include "line_diff_engine_test.moc"
