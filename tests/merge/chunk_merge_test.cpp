#include "merge/engine/chunk_merge.h"
#include "merge/engine/line_numbers.h"
#include "support/test_main.h"
#include "text_engine/sequences.h"

#include <QDirIterator>
#include <QFile>
#include <QHash>

#include <algorithm>
#include <array>

using namespace velmora;
using namespace velmora::test;

namespace {

using Values = std::vector<qint32>;

/// One line for each value, of which some end otherwise, the last one perhaps not at all.
TextLines linesOf(const Values &values, bool lastEnds = true)
{
    QByteArray text;
    for (const qint32 value : values)
        text +=
            QByteArray(value % 3 == 2 ? "word " : "") + QByteArray::number(value) + (value % 5 == 4 ? "\r\n" : "\n");
    if (!lastEnds)
        text.chop(1);
    return TextLines::split(text);
}

ChunkMerge merged(const TextLines &base, const TextLines &left, const TextLines &right, bool joinTouching = true)
{
    Progress progress;
    return mergeChunks(base, left, right, {.joinTouching = joinTouching}, {}, progress);
}

/// What a merge makes of the three texts; conflicts as both sides in brackets.
QByteArray textOf(const ChunkMerge &merge, const TextLines &left, const TextLines &right)
{
    QByteArray text;
    for (const MergeChunk &chunk : merge.chunks) {
        const std::string_view fromLeft = bytesOf(left, chunk.left);
        const std::string_view fromRight = bytesOf(right, chunk.right);
        if (chunk.kind == ChunkKind::Conflict)
            text.append('<').append(fromLeft).append('|').append(fromRight).append('>');
        else
            text.append(chunk.kind == ChunkKind::Right ? fromRight : fromLeft);
    }
    return text;
}

QByteArray bytes(const TextLines &text)
{
    return QByteArray(text.bytes().data(), qsizetype(text.bytes().size()));
}

MergeChunk swapped(MergeChunk chunk)
{
    std::swap(chunk.left, chunk.right);
    if (chunk.kind == ChunkKind::Left || chunk.kind == ChunkKind::Right)
        chunk.kind = chunk.kind == ChunkKind::Left ? ChunkKind::Right : ChunkKind::Left;
    return chunk;
}

/// Empty when the chunks cover all three texts in order and each is what its kind says, so that no line of a text is
/// missing from a merge unless the other one has deleted or replaced it.
QByteArray wrongIn(const ChunkMerge &merge, const TextLines &base, const TextLines &left, const TextLines &right)
{
    MergeChunk end;
    for (const MergeChunk &chunk : merge.chunks) {
        if (chunk.base.first != end.base.end() || chunk.left.first != end.left.end() ||
            chunk.right.first != end.right.end())
            return "a line is left out or covered twice";
        const auto b = bytesOf(base, chunk.base);
        const auto l = bytesOf(left, chunk.left);
        const auto r = bytesOf(right, chunk.right);
        const auto kind = l == r   ? b == l ? ChunkKind::Unchanged : ChunkKind::Both
                          : b == r ? ChunkKind::Left
                          : b == l ? ChunkKind::Right
                                   : ChunkKind::Conflict;
        if (kind != chunk.kind || (&chunk != &merge.chunks.front() && chunk.kind == end.kind))
            return "the kind of a chunk is wrong";
        end = chunk;
    }
    const bool whole =
        end.base.end() == base.count() && end.left.end() == left.count() && end.right.end() == right.count();
    return whole ? "" : "the end of a text is left out";
}

/// What every merge must do; empty when it does.
QByteArray brokenLaw(const TextLines &base, const TextLines &left, const TextLines &right)
{
    for (const bool joinTouching : {true, false}) {
        const ChunkMerge merge = merged(base, left, right, joinTouching);
        if (const QByteArray wrong = wrongIn(merge, base, left, right); !wrong.isEmpty())
            return wrong;
        const ChunkMerge other = merged(base, right, left, joinTouching);
        if (!std::ranges::equal(merge.chunks, other.chunks, {}, {}, swapped))
            return "left and right swapped give something else";
        if (textOf(merged(base, left, base, joinTouching), left, base) != bytes(left) ||
            textOf(merged(base, base, right, joinTouching), base, right) != bytes(right) ||
            textOf(merged(base, left, left, joinTouching), left, left) != bytes(left))
            return "what one text alone has changed does not come out as it is";
    }
    return {};
}

/// `text` with some of its lines removed, repeated elsewhere, or changed.
QByteArray editedBytes(Random &random, const QByteArray &text)
{
    QList<QByteArray> lines = text.split('\n');
    for (quint64 change = random.below(9) + 1; change > 0; --change) {
        const auto at = qsizetype(random.below(quint64(lines.size())));
        const auto length = qsizetype(random.below(4));
        if (change % 3 == 0)
            lines.remove(at, std::min(length, lines.size() - at));
        else if (change % 3 == 1)
            lines[at] += " changed";
        else
            lines =
                lines.mid(0, at) + lines.mid(qsizetype(random.below(quint64(lines.size()))), length) + lines.mid(at);
        if (lines.isEmpty())
            lines.append(QByteArray());
    }
    return lines.join('\n');
}

/// Lines of which some hold a line feed. `other` has the same bytes in as many lines, some of them cut elsewhere.
TextLines putTogether(const Values &values, bool other)
{
    TextLinesBuilder builder;
    for (const qint32 value : values) {
        const QByteArray rest = QByteArray::number(value);
        if (value % 7 == 0) {
            builder.append(other ? "one" : "one\ntwo", LineEnd::Lf);
            builder.append(other ? "two\nthree" : "three", LineEnd::Lf);
        }
        builder.append({rest.constData(), size_t(rest.size())}, value % 5 == 4 ? LineEnd::CrLf : LineEnd::Lf);
    }
    return builder.take();
}

/// Whether two lines have the same number where they are equal, and nowhere else.
bool areNumbered(const std::array<const TextLines *, 3> &texts, bool withEnds)
{
    const NumberedTexts numbered = LineNumbering(*texts[0], withEnds, {}).with(*texts[1], *texts[2], {});
    QHash<QByteArray, qint32> numbers;
    for (size_t text = 0; text < texts.size(); ++text) {
        if (numbered.texts[text].size() != size_t(texts[text]->count()))
            return false;
        for (qsizetype index = 0; index < texts[text]->count(); ++index) {
            const std::string_view line = withEnds ? bytesOf(*texts[text], {index, 1}) : texts[text]->line(index);
            const qint32 number = numbered.texts[text][size_t(index)];
            if (numbers.emplace(QByteArray(line.data(), qsizetype(line.size())), number).value() != number)
                return false;
        }
    }
    return numbers.size() == numbered.count;
}

Values split(const char *text)
{
    Values values;
    for (; *text; ++text)
        values.push_back(*text);
    return values;
}

/// The chunks as "kind:base,left,right" of lines that are single characters.
QByteArray picture(const char *base, const char *left, const char *right, bool joinTouching = true)
{
    const auto part = [](const char *text, LineRange range) { return QByteArray(text + range.first, range.count); };
    constexpr std::array kinds{'=', 'L', 'R', 'B', '!'};
    constexpr std::array marks{"", "*", "2"};
    QByteArray result;
    for (const MergeChunk &chunk :
         merged(linesOf(split(base)), linesOf(split(left)), linesOf(split(right)), joinTouching).chunks) {
        result += QByteArray(result.isEmpty() ? "" : " ") + kinds[size_t(chunk.kind)] + marks[size_t(chunk.mark)] +
                  ':' + part(base, chunk.base);
        if (chunk.kind != ChunkKind::Unchanged)
            result += ',' + part(left, chunk.left) + ',' + part(right, chunk.right);
    }
    return result;
}

} // namespace

class ChunkMergeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void linesHaveTheNumbersOfAPlainMap()
    {
        Random random(11);
        for (int round = 0; round < 200; ++round) {
            const Values base = random.sequence(300, round % 2 == 0 ? 40 : 4000);
            const Values left = random.edited(base, int(random.below(12)), 4000);
            const TextLines baseLines = putTogether(base, false);
            // The same bytes in other lines, and a last line without an end.
            const TextLines right = putTogether(base, true);
            const TextLines leftLines = round % 3 == 0 ? putTogether(left, false) : linesOf(left, round % 3 == 1);
            for (const bool withEnds : {true, false}) {
                QVERIFY(areNumbered({&baseLines, &leftLines, &right}, withEnds));
                QVERIFY(areNumbered({&leftLines, &baseLines, &baseLines}, withEnds));
            }
        }
    }

    void lawsHoldForAllShortTexts()
    {
        const std::vector<Values> all = allSequences(2, 4);
        std::vector<TextLines> texts;
        texts.reserve(all.size());
        for (const Values &values : all)
            texts.push_back(linesOf(values));
        for (const TextLines &base : texts) {
            for (const TextLines &left : texts) {
                for (const TextLines &right : texts) {
                    const QByteArray broken = brokenLaw(base, left, right);
                    const QByteArray shown = bytes(base) + "|\n" + bytes(left) + "|\n" + bytes(right);
                    QVERIFY2(broken.isEmpty(), (broken + ":\n" + shown).constData());
                }
            }
        }
    }

    /// Some long enough for frequent lines and for a search that gives up.
    void lawsHoldForEditedTexts()
    {
        Random random(7);
        for (int round = 0; round < 400; ++round) {
            const qint32 length = round % 100 == 0 ? 4000 : 60;
            const auto alphabet = qint32(2 + random.below(round % 3 == 0 ? 4 : 200));
            const Values values = random.sequence(length, alphabet);
            const auto edited = [&] {
                return linesOf(random.edited(values, qint32(random.below(12)), alphabet), random.below(4) != 0);
            };
            const QByteArray broken = brokenLaw(linesOf(values), edited(), edited());
            QVERIFY2(broken.isEmpty(), (broken + " in round " + QByteArray::number(round)).constData());
        }
    }

    void lawsHoldForEditedFiles()
    {
        Random random(3);
        int files = 0;
        QDirIterator sources(QStringLiteral(VELMORA_SOURCE_DIR "/src/merge"), QDir::Files,
                             QDirIterator::Subdirectories);
        while (sources.hasNext()) {
            QFile file(sources.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray base = file.readAll();
            const QByteArray left = editedBytes(random, base);
            const QByteArray right = editedBytes(random, base);
            const QByteArray broken =
                brokenLaw(TextLines::split(base), TextLines::split(left), TextLines::split(right));
            QVERIFY2(broken.isEmpty(), (broken + ": " + file.fileName().toUtf8()).constData());
            ++files;
        }
        QVERIFY(files > 10);
    }

    void chunks()
    {
        QCOMPARE(picture("abcde", "aBcde", "abcdE"), "=:a L:b,B,b =:cd R:e,e,E");
        QCOMPARE(picture("abc", "aBc", "aBc"), "=:a B:b,B,B =:c");
        QCOMPARE(picture("abc", "aXc", "aYc"), "=:a !:b,X,Y =:c");
        // One deletes what the other changes.
        QCOMPARE(picture("abc", "ac", "aYc"), "=:a !:b,,Y =:c");
        // They touch: one conflict, or one change after the other.
        QCOMPARE(picture("abcd", "aBcd", "abCd"), "=:a !:bc,Bc,bC =:d");
        QCOMPARE(picture("abcd", "aBcd", "abCd", false), "=:a L:b,B,b R:c,c,C =:d");
        QCOMPARE(picture("abcd", "aXYd", "abZd", false), "=:a L:b,X,b !:c,Y,Z =:d");
        QCOMPARE(picture("ab", "aXb", "aYb", false), "=:a !:,X,Y =:b");
        QCOMPARE(picture("ab", "aXb", "aB", false), "=:a L:,X, R:b,b,B");
        // Suspicious: inserted by both at one place, and in two places.
        QCOMPARE(picture("ab", "aXb", "aXb"), "=:a B*:,X,X =:b");
        QCOMPARE(picture("abc", "aXbc", "abXc"), "=:a L2:,X, =:b R2:,,X =:c");
        // As far down as it goes, but beside the other text's change.
        QCOMPARE(picture("xabay", "xababay", "xabay"), "=:xaba L:,ba, =:y");
        QCOMPARE(picture("", "", ""), "");
    }

    void endsOfLinesCountWhenAsked()
    {
        const TextLines base = TextLines::split("a\nb\nc\n");
        const TextLines left = TextLines::split("a\r\nb\r\nc");
        const TextLines right = TextLines::split("a\nB\nc\n");
        Progress progress;
        const auto conflicts = [&](bool ends) {
            return mergeChunks(base, left, right, {.compareLineEnds = ends}, {}, progress).conflicts();
        };
        QCOMPARE(conflicts(true), 1);
        QCOMPARE(conflicts(false), 0);
    }

    void cancelling()
    {
        const CancelFlag cancel;
        cancel.cancel();
        Progress progress;
        const TextLines text = linesOf({1, 2, 3});
        QVERIFY(mergeChunks(text, linesOf({1}), text, {}, cancel, progress).chunks.empty());
    }
};

VELMORA_TEST(ChunkMergeTest)

#include "chunk_merge_test.moc"
