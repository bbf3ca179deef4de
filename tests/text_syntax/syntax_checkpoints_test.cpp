#include "support/test_main.h"
#include "text/syntax/syntax_checkpoints.h"
#include "text_syntax/syntax_pictures.h"

#include <QRandomGenerator>

using namespace velmora;

namespace {

using Lines = std::vector<std::string>;

SyntaxText textOf(const Lines &lines)
{
    return {qsizetype(lines.size()), [&lines](qsizetype line) { return std::string_view(lines[std::size_t(line)]); }};
}

std::vector<SyntaxState> statesOf(const SyntaxDefinition &definition, const Lines &lines)
{
    std::vector<SyntaxState> states(1);
    for (const std::string &line : lines)
        states.push_back(stateBehind(definition, states.back(), colouredPart(line)));
    return states;
}

Lines randomLines(QRandomGenerator &random, int count)
{
    const std::array<std::string, 6> choices = {"a", "a", "a", "/*", "*/", "R\"(x"};
    Lines lines;
    for (int k = 0; k < count; ++k)
        lines.push_back(choices[random.bounded(quint32(choices.size()))]);
    return lines;
}

} // namespace

class SyntaxCheckpointsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void statesAreThoseOfTheWholeTextAfterEveryEdit()
    {
        const auto definition = test::library().named(QStringLiteral("C/C++"));
        QRandomGenerator random(7);
        for (int round = 0; round < 60; ++round) {
            Lines lines = randomLines(random, random.bounded(700));
            SyntaxCheckpoints checkpoints;
            for (int edit = 0; edit < 40; ++edit) {
                const qsizetype wanted = random.bounded(int(lines.size()) + 1);
                const std::vector<SyntaxState> states = statesOf(*definition, lines);
                checkpoints.extend(*definition, textOf(lines), wanted);
                QVERIFY(checkpoints.reaches(wanted));
                for (qsizetype line = 0; line <= qsizetype(lines.size()); ++line) {
                    const auto &before = checkpoints.before(line);
                    QVERIFY(before.line <= line);
                    QCOMPARE(before.state, states[std::size_t(before.line)]);
                }
                const int first = random.bounded(int(lines.size()) + 1);
                const int removed = random.bounded(std::min(int(lines.size()) - first, 150) + 1);
                const Lines added = randomLines(random, random.bounded(3) * random.bounded(70));
                lines.erase(lines.begin() + first, lines.begin() + first + removed);
                lines.insert(lines.begin() + first, added.begin(), added.end());
                checkpoints.edit(first, removed, qsizetype(added.size()));
            }
        }
    }

    void anEditThatChangesNothingBehindItIsSoonOver()
    {
        const auto definition = test::library().named(QStringLiteral("C/C++"));
        Lines lines(100'000, "int x;");
        SyntaxCheckpoints checkpoints;
        const qsizetype all = checkpoints.extend(*definition, textOf(lines), 100'000);
        QVERIFY(all >= 99'000 * 7);
        QCOMPARE(checkpoints.extend(*definition, textOf(lines), 100'000), 0);

        lines[500] = "int y; /* here */";
        checkpoints.edit(500, 1, 1);
        QVERIFY(checkpoints.extend(*definition, textOf(lines), 100'000) < 2000);

        lines[500] = "int y; /* from here";
        checkpoints.edit(500, 1, 1);
        QVERIFY(checkpoints.extend(*definition, textOf(lines), 100'000) > 99'000 * 7);
        QCOMPARE(checkpoints.before(99'999).state.open.size(), 1);
    }

    void readingStopsWhenItShould()
    {
        const auto definition = test::library().named(QStringLiteral("C/C++"));
        const Lines lines(10'000, "int x;");
        SyntaxCheckpoints checkpoints;
        QVERIFY(checkpoints.extend(*definition, textOf(lines), 10'000, 1000) < 2000);
        QVERIFY(!checkpoints.reaches(10'000));
        const CancelFlag cancel;
        cancel.cancel();
        QCOMPARE(checkpoints.extend(*definition, textOf(lines), 10'000, 1'000'000, cancel), 0);
    }

    void onlyTheStartOfAnEndlessLineIsRead()
    {
        std::string line = "x"; // the limit falls within a character
        while (line.size() < 20'000'000)
            line += "\xE4\xB8\xAD";
        const QString part = colouredPart(line);
        QVERIFY(part.size() > longestColouredLine);
        QVERIFY(part.size() < longestColouredLine + 10);
        QVERIFY(!part.contains(QChar::ReplacementCharacter));
    }
};

VELMORA_TEST(SyntaxCheckpointsTest)
#include "syntax_checkpoints_test.moc"
