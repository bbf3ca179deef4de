#include "merge/engine/conflict_markers.h"
#include "merge/model/marked_result.h"
#include "merge/model/merge_rows.h"
#include "support/test_main.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace velmora;

namespace {

TextLines lines(const QByteArray &text)
{
    return TextLines::split(text);
}

ChunkMerge chunksOf(const TextLines &left, const TextLines &base, const TextLines &right)
{
    Progress nobody;
    return mergeChunks(base, left, right, {}, {}, nobody);
}

/// A merge that is decided and edited, its text and its rows.
class Merge {
public:
    Merge(const QByteArray &left, const QByteArray &base, const QByteArray &right)
        : Merge(lines(left), lines(base), lines(right), chunksOf(lines(left), lines(base), lines(right)))
    {}
    Merge(const TextLines &left, const TextLines &base, const TextLines &right, const ChunkMerge &merge)
        : texts(left, base, right),
          parts(partsOf(merge)),
          buffer(resultOf(texts, parts.all())),
          rows(mergeRows(texts, parts, *buffer.snapshot(), {}))
    {}

    void follow(const LineChange &change, qsizetype near = -1)
    {
        const PartsChange changed = parts.follow(change, buffer.latestStep(), near);
        rows = patchedRows(rows, texts, parts, *buffer.snapshot(), changed, change.inserted - change.removed);
    }
    void take(const std::vector<qsizetype> &chosen, MergeChoice choice)
    {
        MergePlan plan = parts.plan(texts, *buffer.snapshot(), chosen, choice);
        parts.expect(plan);
        follow(buffer.replaceLines(plan.firstLine, plan.removedLines, plan.lines, {plan.firstLine, 0}));
    }
    void putIn(qsizetype part, SourceLine line, qsizetype resultLine)
    {
        MergePlan plan = parts.planToPutIn(texts, *buffer.snapshot(), part, line, resultLine);
        parts.expect(plan);
        follow(buffer.replaceLines(plan.firstLine, plan.removedLines, plan.lines, {plan.firstLine, 0}));
    }
    [[nodiscard]] QByteArray text() const
    {
        const TextLines all = buffer.snapshot()->toLines();
        return {all.bytes().data(), qsizetype(all.bytes().size())};
    }
    /// "b" for what comes from the base and so on, "?" for what is open; capital letters for a person's decisions.
    [[nodiscard]] QByteArray choices() const
    {
        QByteArray all;
        for (const MergePart &part : parts.all()) {
            const char letter = "?blrxyhz"[int(part.choice)];
            all += part.isByPerson ? QChar::fromLatin1(letter).toUpper().toLatin1() : letter;
        }
        return all;
    }
    /// What is wrong with it, nothing when all is well.
    [[nodiscard]] QByteArray fault() const;

    MergeTexts texts;
    MergeParts parts;
    EditBuffer buffer;
    MergeRows rows;
};

QByteArray Merge::fault() const
{
    const EditSnapshot &result = *buffer.snapshot();
    std::array<qsizetype, mergeSourceCount> next{};
    for (qsizetype k = 0; k < parts.count(); ++k) {
        const MergePart &part = parts.at(k);
        for (std::size_t text = 0; text < next.size(); ++text) {
            if (part.lines[text].first != std::exchange(next[text], part.lines[text].end()))
                return "the parts leave lines of a text out";
        }
        std::vector<std::string_view> wanted;
        for (const MergeSource source : sourcesOf(part.choice)) {
            for (qsizetype line = part.of(source).first; line < part.of(source).end(); ++line)
                wanted.push_back(texts.text(source).line(line));
        }
        const bool isFree = part.choice == MergeChoice::ByHand || part.choice == MergeChoice::LineByLine;
        if (!isFree && qsizetype(wanted.size()) != part.resultCount)
            return "a part has another number of lines than its choice";
        for (std::size_t line = 0; line < wanted.size() && !isFree; ++line) {
            if (result.bytes(parts.resultStart(k) + qsizetype(line)) != wanted[line])
                return "the result has other lines than were chosen";
        }
    }
    for (std::size_t text = 0; text < next.size(); ++text) {
        if (next[text] != texts.text(MergeSource(text)).count())
            return "the parts end before a text does";
    }
    if (parts.resultStart(parts.count()) != result.count())
        return "the parts do not cover the result";
    for (qsizetype line = 0; line + 1 < result.count(); ++line) {
        if (result.lineEnd(line) == LineEnd::None)
            return "two lines of the result run into one another";
    }
    const MergeRows fresh = mergeRows(texts, parts, result, {});
    if (rows.rows != fresh.rows || rows.firstOfPart != fresh.firstOfPart)
        return "the rows are not those that a fresh layout has";
    std::array<qint32, mergePaneCount> number{};
    for (const MergeRow &row : rows.rows) {
        for (std::size_t pane = 0; pane < mergePaneCount; ++pane) {
            if (row.lines[pane] != -1 && row.lines[pane] != ++number[pane])
                return "the rows have lines twice, or in another order";
        }
    }
    if (number[resultPane] != result.count() || number[0] != next[0] || number[1] != next[1] || number[2] != next[2])
        return "the rows leave lines out";
    return {};
}

QByteArray randomText(QRandomGenerator &random, const QByteArray &from)
{
    QByteArray text;
    for (const QByteArray &line : from.split('\n')) {
        const quint32 dice = random.bounded(10U);
        if (dice != 0 && !line.isEmpty())
            text += line + '\n';
        if (dice < 2)
            text += QByteArray(1, char('a' + random.bounded(4))) + '\n';
    }
    if (random.bounded(3U) == 0)
        text.chop(1);
    return text;
}

} // namespace

class MergePartsTest final : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void anyStepsKeepAllLinesAndAreUndone()
    {
        QRandomGenerator random(20261122);
        for (int round = 0; round < 400; ++round) {
            const QByteArray base = randomText(random, "a\nb\nc\nd\na\nb\nc\nd\na\nb");
            const QByteArray left = randomText(random, base);
            const QByteArray right = randomText(random, base);
            Merge merge(left, base, right);
            QCOMPARE(merge.fault(), QByteArray());
            const QByteArray firstText = merge.text();
            const std::vector<MergePart> firstParts = merge.parts.all();
            for (int step = 0; step < 12; ++step) {
                takeStep(merge, random);
                const QByteArray fault = merge.fault() + " in round " + QByteArray::number(round);
                QVERIFY2(fault.startsWith(" in"), fault.constData());
            }
            while (merge.buffer.canRedo())
                merge.follow(merge.buffer.redo());
            const QByteArray lastText = merge.text();
            const std::vector<MergePart> lastParts = merge.parts.all();
            while (merge.buffer.canUndo())
                merge.follow(merge.buffer.undo());
            QCOMPARE(merge.text(), firstText);
            QVERIFY(merge.parts.all() == firstParts);
            QCOMPARE(merge.fault(), QByteArray());
            while (merge.buffer.canRedo())
                merge.follow(merge.buffer.redo());
            QCOMPARE(merge.text(), lastText);
            QVERIFY(merge.parts.all() == lastParts);
            QCOMPARE(merge.fault(), QByteArray());
        }
    }

    void editsMarkWhatTheyTouch_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("choices");
        QTest::newRow("changed on the left") << 1 << 0 << "x" << QByteArray("bHb?brb");
        QTest::newRow("a line that is the same") << 0 << 0 << "x" << QByteArray("Hlb?brb");
        QTest::newRow("one of several that are the same") << 6 << 1 << "\n" << QByteArray("blb?brbH");
    }
    void editsMarkWhatTheyTouch()
    {
        QFETCH(int, line);
        QFETCH(int, unit);
        QFETCH(QString, typed);
        Merge merge("1\nL\n3\nl\n5\n6\n7\n8\n", "1\n2\n3\n4\n5\n6\n7\n8\n", "1\n2\n3\nr\n5\nR\n7\n8\n");
        QCOMPARE(merge.choices(), QByteArray("blb?brb"));
        merge.follow(merge.buffer.replace({line, unit}, {line, unit}, typed));
        QTEST(merge.choices(), "choices");
        QCOMPARE(merge.fault(), QByteArray());
    }

    void linesTypedIntoAnOpenConflictDecideIt()
    {
        Merge merge("1\nl\n3\n", "1\n2\n3\n", "1\nr\n3\n");
        QCOMPARE(merge.parts.openConflicts(), 1);
        merge.follow(merge.buffer.insertLines(1, QStringLiteral("mine")), 1);
        QCOMPARE(merge.parts.openConflicts(), 0);
        QCOMPARE(merge.choices(), QByteArray("bHb"));
        merge.follow(merge.buffer.undo());
        QCOMPARE(merge.parts.openConflicts(), 1);
        // Lines that are removed all around it do not.
        merge.follow(merge.buffer.replace({0, 0}, {1, 1}, QString()));
        QCOMPARE(merge.parts.openConflicts(), 1);
    }

    void bothSidesAreTakenWithoutAnEndOfTheirLastLines()
    {
        Merge merge("1\nl", "1\n2", "1\nr");
        merge.take({1}, MergeChoice::RightThenLeft);
        QCOMPARE(merge.text(), QByteArray("1\nr\nl"));
        merge.take({1}, MergeChoice::LeftThenRight);
        QCOMPARE(merge.text(), QByteArray("1\nl\nr"));
        merge.follow(merge.buffer.undo());
        QCOMPARE(merge.text(), QByteArray("1\nr\nl"));
    }

    void lineByLineSettlesTouchingChangesAndOffersWhatItLeavesOut()
    {
        Merge merge("one\ntwo left\nthree\n", "one\ntwo\nthree\n", "one\ntwo\nthree right\nnew\n");
        QCOMPARE(merge.choices(), QByteArray("b?"));
        merge.take({1}, MergeChoice::LineByLine);
        QCOMPARE(merge.text(), QByteArray("one\ntwo left\nthree right\n"));
        const SourceLine left{MergeSource::Right, 3};
        QCOMPARE(merge.parts.at(1).leftOut, QList<SourceLine>{left});
        merge.putIn(1, left, 3);
        QCOMPARE(merge.text(), QByteArray("one\ntwo left\nthree right\nnew\n"));
        QCOMPARE(merge.parts.at(1).leftOut, QList<SourceLine>());
        merge.follow(merge.buffer.undo());
        QCOMPARE(merge.parts.at(1).leftOut, QList<SourceLine>{left});
        merge.follow(merge.buffer.insertLines(2, QStringLiteral("by hand")));
        QCOMPARE(merge.parts.at(1).leftOut, QList<SourceLine>{left});
        Merge conflict("the second left\n", "the second\n", "the second right\n");
        conflict.take({0}, MergeChoice::LineByLine);
        QCOMPARE(conflict.choices(), QByteArray("?"));
        QCOMPARE(conflict.fault(), QByteArray());
    }

    void markersAreReadAndWritten_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("left");
        QTest::addColumn<QByteArray>("base");
        QTest::addColumn<QByteArray>("right");
        QTest::newRow("merge") << QByteArray("1\n<<<<<<< ours\nl\n=======\nr\n>>>>>>> theirs\n3\n")
                               << QByteArray("1\nl\n3\n") << QByteArray("1\n3\n") << QByteArray("1\nr\n3\n");
        QTest::newRow("diff3, one side empty")
            << QByteArray("<<<<<<< a\n||||||| b\n2\n=======\nr\n>>>>>>> c\n=======\n") << QByteArray("=======\n")
            << QByteArray("2\n=======\n") << QByteArray("r\n=======\n");
        QTest::newRow("CRLF") << QByteArray("<<<<<<<\r\nl\r\n|||||||\r\n2\r\n=======\r\nr\r\n>>>>>>>\r\n")
                              << QByteArray("l\r\n") << QByteArray("2\r\n") << QByteArray("r\r\n");
        for (const char *broken : {"no marker\n", "<<<<<<<\nl\n=======\nr\n", "<<<<<<<\nl\n>>>>>>>\n",
                                   "<<<<<<<\n<<<<<<<\n=======\n>>>>>>>\n", "<<<<<<<\n=======\n=======\n>>>>>>>\n"})
            QTest::newRow(broken) << QByteArray(broken) << QByteArray() << QByteArray() << QByteArray();
    }
    void markersAreReadAndWritten()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, left);
        const std::optional<MarkedMerge> read = readConflictMarkers(lines(text));
        QCOMPARE(read.has_value(), !left.isEmpty());
        QCOMPARE(hasConflictMarkers(lines(text)), read.has_value());
        if (!read)
            return;
        const auto bytes = [](const TextLines &of) {
            return QByteArray(of.bytes().data(), qsizetype(of.bytes().size()));
        };
        QCOMPARE(bytes(read->left), left);
        QTEST(bytes(read->base), "base");
        QTEST(bytes(read->right), "right");
        const Merge merge(read->left, read->base, read->right, read->merge);
        QCOMPARE(merge.fault(), QByteArray());
        QCOMPARE(merge.parts.openConflicts(), 1);
        const TextLines written = withConflictMarkers(merge.texts, merge.parts.all(), *merge.buffer.snapshot(),
                                                      {read->leftLabel, read->baseLabel, read->rightLabel});
        if (read->hasBase)
            QCOMPARE(bytes(written), text);
        else
            QVERIFY(readConflictMarkers(written)->merge.chunks == read->merge.chunks);
    }

private:
    static void takeStep(Merge &merge, QRandomGenerator &random)
    {
        constexpr MergeChoice choices[] = {MergeChoice::Base,          MergeChoice::Left,
                                           MergeChoice::Right,         MergeChoice::LeftThenRight,
                                           MergeChoice::RightThenLeft, MergeChoice::LineByLine};
        const qsizetype partCount = merge.parts.count();
        const auto line = [&] { return qsizetype(random.bounded(int(merge.buffer.count()) + 1)); };
        switch (random.bounded(7)) {
        case 0:
        case 1: {
            std::vector<qsizetype> chosen;
            for (qsizetype part = 0; part < partCount; ++part) {
                if (random.bounded(3) == 0)
                    chosen.push_back(part);
            }
            if (!chosen.empty())
                merge.take(chosen, choices[random.bounded(int(std::size(choices)))]);
            break;
        }
        case 2: {
            const EditPosition start{line(), random.bounded(2)};
            const EditPosition end{line(), random.bounded(2)};
            merge.follow(merge.buffer.replace(start, end, random.bounded(2) ? QStringLiteral("x\ny") : QString()));
            break;
        }
        case 3: {
            const EditPosition at{line(), 0};
            merge.follow(merge.buffer.replace(at, at, QStringLiteral("t"), EditBuffer::Merge::Typing));
            merge.follow(
                merge.buffer.replace({at.line, 1}, {at.line, 1}, QStringLiteral("u"), EditBuffer::Merge::Typing));
            break;
        }
        case 4:
            merge.follow(merge.buffer.insertLines(line(), QStringLiteral("n\nm")),
                         partCount > 0 ? random.bounded(int(partCount)) : -1);
            break;
        case 5:
            if (merge.buffer.canUndo())
                merge.follow(merge.buffer.undo());
            break;
        default:
            if (merge.buffer.canRedo())
                merge.follow(merge.buffer.redo());
        }
    }
};

VELMORA_TEST(MergePartsTest)
#include "merge_parts_test.moc"
