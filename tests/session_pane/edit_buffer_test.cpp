#include "session/pane/edit_buffer.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <array>
#include <tuple>

using namespace velmora;
using namespace velmora::test;

namespace {

EditBuffer bufferOf(const QByteArray &text)
{
    return EditBuffer(TextLines::split(text));
}

QByteArray bytesOf(const EditBuffer &buffer)
{
    const TextLines lines = buffer.snapshot()->toLines();
    return {lines.bytes().data(), qsizetype(lines.bytes().size())};
}

/// The plain form: one string of lines that end in line feeds.
struct Model {
    QString text;

    [[nodiscard]] qsizetype offset(EditPosition at) const
    {
        qsizetype start = 0;
        for (qsizetype line = 0; line < at.line; ++line)
            start = text.indexOf(u'\n', start) + 1;
        return start + at.unit;
    }
};

} // namespace

class EditBufferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithAPlainStringUnderRandomEdits()
    {
        QRandomGenerator random(20240611);
        const QString letters = word("ab\u00e9\u4e2d");
        EditBuffer buffer = bufferOf("one\ntwo\n\nfour\nfive\n");
        Model model{word("one\ntwo\n\nfour\nfive\n")};
        QStringList states{model.text};
        const auto randomPlace = [&] {
            const qsizetype count = buffer.count();
            const bool hasEnd = count == 0 || buffer.snapshot()->lineEnd(count - 1) != LineEnd::None;
            const qsizetype line = random.bounded(int(count + (hasEnd ? 1 : 0)));
            return line == count ? EditPosition{line, 0}
                                 : EditPosition{line, random.bounded(int(buffer.snapshot()->text(line).size()) + 1)};
        };
        for (int round = 0; round < 2000; ++round) {
            EditPosition start = randomPlace();
            EditPosition end = random.bounded(2) ? start : randomPlace();
            if (end < start)
                std::swap(start, end);
            if (end.line > start.line + 2)
                end = {start.line, buffer.snapshot()->text(start.line).size()};
            QString text;
            for (int k = random.bounded(5); k > 0; --k)
                text += random.bounded(4) ? letters.at(random.bounded(int(letters.size()))) : QChar(u'\n');
            const qsizetype from = model.offset(start);
            model.text.replace(from, model.offset(end) - from, text);
            states.append(model.text);
            const LineChange change = buffer.replace(start, end, text);
            QCOMPARE(QString::fromUtf8(bytesOf(buffer)), model.text);
            QCOMPARE(model.offset(change.caret), from + text.size());
            if (round % 50 == 49) { // some steps back, and all of them forth again
                const int back = 1 + random.bounded(20);
                for (int k = 1; k <= back; ++k) {
                    buffer.undo();
                    QCOMPARE(QString::fromUtf8(bytesOf(buffer)), states.at(states.size() - 1 - k));
                }
                for (int k = 0; k < back; ++k)
                    buffer.redo();
                QCOMPARE(QString::fromUtf8(bytesOf(buffer)), model.text);
            }
        }
        while (buffer.canUndo())
            buffer.undo();
        QCOMPARE(QString::fromUtf8(bytesOf(buffer)), states.first());
        QVERIFY(!buffer.isModified());
    }

    void movesTextInOneStep()
    {
        QRandomGenerator random(77);
        const QByteArray text = "one\ntwo 2\n\nfour \xE4\xB8\xAD\nfive\n";
        for (int round = 0; round < 1000; ++round) {
            EditBuffer buffer = bufferOf(text);
            const Model before{QString::fromUtf8(text)};
            std::array<EditPosition, 3> places;
            for (EditPosition &place : places) {
                place.line = random.bounded(6); // the last one is that behind the last line end
                if (place.line < 5)
                    place.unit = random.bounded(int(buffer.snapshot()->text(place.line).size()) + 1);
            }
            std::sort(places.begin(), places.end());
            const bool forward = random.bounded(2) != 0;
            const auto [start, end, to] =
                forward ? std::tuple(places[0], places[1], places[2]) : std::tuple(places[1], places[2], places[0]);
            if (start == end || to == start || to == end)
                continue;
            const QString moved = before.text.mid(before.offset(start), before.offset(end) - before.offset(start));
            QString expected = before.text;
            const qsizetype target = before.offset(to) - (forward ? moved.size() : 0);
            expected.remove(before.offset(start), moved.size()).insert(target, moved);
            const EditBuffer::Moved done = buffer.move(start, end, to);
            const Model after{QString::fromUtf8(bytesOf(buffer))};
            QCOMPARE(after.text, expected);
            QCOMPARE(after.offset(done.start), target);
            QCOMPARE(after.offset(done.change.caret), target + moved.size());
            buffer.undo();
            QCOMPARE(bytesOf(buffer), text);
            QVERIFY(!buffer.canUndo());
            buffer.redo();
            QCOMPARE(QString::fromUtf8(bytesOf(buffer)), expected);
        }
    }

    void keepsEachLinesEndAndGivesNewLinesTheUsualOne()
    {
        struct Case {
            const char *name;
            QByteArray text;
            int line;
            int unit;
            QByteArray expected;
        };
        const Case cases[] = {
            {"lf", "ab\ncd\n", 0, 1, "a\nb\ncd\n"},
            {"crlf", "ab\r\ncd\r\n", 1, 2, "ab\r\ncd\r\n\r\n"},
            {"mixed, as the line has it", "ab\ncd\r\nef\n", 1, 1, "ab\nc\r\nd\r\nef\n"},
            {"the last line has none", "a\nb\r\ncd", 2, 1, "a\nb\r\nc\r\nd"},
            {"a lone carriage return at the end", "ab\ncd\r", 1, 1, "ab\nc\nd\r"},
            {"one line without end", "abcd", 0, 2, "ab\ncd"},
            {"carriage returns inside a line", "a\rb\r\r\nc\n", 0, 1, "a\r\n\rb\r\r\nc\n"},
        };
        for (const auto &[name, text, line, unit, expected] : cases) {
            EditBuffer buffer = bufferOf(text);
            buffer.replace({line, unit}, {line, unit}, word("\n"));
            QVERIFY2(bytesOf(buffer) == expected, name);
            buffer.undo();
            QVERIFY2(bytesOf(buffer) == text, name);
        }
    }

    void insertsWholeLinesAlsoBehindALastOneWithoutEnd()
    {
        EditBuffer empty;
        QCOMPARE(empty.insertLines(0, word("x\ry\r\n")).inserted, 2);
        QCOMPARE(bytesOf(empty), QByteArray("x\ny\n"));

        EditBuffer unended = bufferOf("a\r\nb");
        const LineChange change = unended.insertLines(2, word("c"));
        QCOMPARE(bytesOf(unended), QByteArray("a\r\nb\r\nc"));
        QCOMPARE(change.caret, (EditPosition{2, 1}));
        unended.undo();
        QCOMPARE(bytesOf(unended), QByteArray("a\r\nb"));
    }

    void copiesLinesBetweenTexts()
    {
        struct Case {
            const char *name;
            QByteArray source;
            int from;
            int fromCount;
            QByteArray target;
            int first;
            int count;
            QByteArray expected;
        };
        const Case cases[] = {
            {"takes the target's line ends", "x\ny\n", 0, 2, "a\r\nb\r\n", 1, 1, "a\r\nx\r\ny\r\n"},
            {"a line end is the difference", "a\nb\n", 0, 1, "a\r\nb\n", 0, 1, "a\nb\n"},
            {"only the last line end differs", "a\nb", 1, 1, "a\nb\n", 1, 1, "a\nb"},
            {"the same the other way", "a\nb\n", 1, 1, "a\nb", 1, 1, "a\nb\n"},
            {"unended into the middle", "x", 0, 1, "a\nb\n", 0, 1, "x\nb\n"},
            {"the same text, unended, into the middle", "a", 0, 1, "a\nb\n", 0, 1, "a\nb\n"},
            {"behind an unended line", "a\nb\n", 1, 1, "a", 1, 0, "a\nb\n"},
            {"nothing: removes", "a\n", 1, 0, "a\nb\nc\n", 1, 2, "a\n"},
            {"everything into nothing", "a\nb", 0, 2, "", 0, 0, "a\nb"},
        };
        for (const auto &[name, source, from, fromCount, target, first, count, expected] : cases) {
            EditBuffer buffer = bufferOf(target);
            buffer.copyLines(first, count, *bufferOf(source).snapshot(), from, fromCount);
            QVERIFY2(bytesOf(buffer) == expected, name);
            buffer.undo();
            QVERIFY2(bytesOf(buffer) == target, name);
        }
    }

    void mergesTypingIntoOneStepAndKnowsWhatIsSaved()
    {
        using Merge = EditBuffer::Merge;
        EditBuffer buffer = bufferOf("line\n");
        qsizetype unit = 4;
        const auto type = [&](const QString &text) {
            for (const QChar letter : text) {
                buffer.replace({0, unit}, {0, unit}, letter, Merge::Typing);
                ++unit;
            }
        };
        type(word(" one"));
        buffer.markClean();
        type(word(" two"));
        QVERIFY(buffer.isModified());
        buffer.undo();
        QCOMPARE(bytesOf(buffer), QByteArray("line one\n")); // what was saved begins a step
        QVERIFY(!buffer.isModified());
        buffer.undo();
        QCOMPARE(bytesOf(buffer), QByteArray("line\n"));
        QVERIFY(buffer.isModified());
        QVERIFY(!buffer.canUndo());
        unit = 0;
        type(word("x"));
        QVERIFY(!buffer.canRedo());
        unit = 3; // elsewhere: a step of its own
        type(word("y"));
        buffer.undo();
        QCOMPARE(bytesOf(buffer), QByteArray("xline\n"));
        QVERIFY2(buffer.isModified(), "the saved state can no longer be reached");
    }

    void anUndoDuringASaveLeavesTheFileAhead()
    {
        EditBuffer buffer = bufferOf("a\n");
        buffer.replace({0, 0}, {0, 0}, word("x"));
        buffer.beginSave();
        buffer.undo();
        buffer.replace({0, 0}, {0, 0}, word("z")); // nothing leads back to what is being saved
        buffer.endSave(true);
        buffer.undo();
        QVERIFY2(buffer.isModified(), "the file holds another text");
    }

    void aSnapshotStaysAsItWas()
    {
        EditBuffer buffer = bufferOf("a\nb\nc\n");
        const auto before = buffer.snapshot();
        buffer.replace({0, 0}, {2, 1}, word("z"));
        QCOMPARE(before->count(), 3);
        QCOMPARE(before->text(1), word("b"));
        QVERIFY(before->holdsSameAs(TextLines::split("a\nb\nc\n")));
        QVERIFY(!before->holdsSameAs(TextLines::split("a\nb\nc")));
        QVERIFY(!before->holdsSameAs(buffer.snapshot()->toLines()));
    }
};

VELMORA_TEST(EditBufferTest)
#include "edit_buffer_test.moc"
