#include "support/test_main.h"
#include "text_syntax/syntax_pictures.h"

#include <QRandomGenerator>

#include <ctime>

using namespace velmora;
using test::library;

namespace {

/// What is wrong with the tokens of a line of that length; empty when nothing is.
QString complaint(const std::vector<SyntaxToken> &tokens, qsizetype length)
{
    qsizetype behind = 0;
    for (const SyntaxToken &token : tokens) {
        if (token.start < behind)
            return QStringLiteral("a token begins before %1").arg(behind);
        if (token.length <= 0 || token.role == SyntaxRole::Text)
            return QStringLiteral("a token at %1 says nothing").arg(token.start);
        behind = token.start + token.length;
    }
    return behind > length ? QStringLiteral("a token goes beyond the line") : QString();
}

/// Pieces that begin, end and escape something in one language or another.
QStringList hostilePieces()
{
    const char *const written =
        "\"|'|`|\\|/*|*/|//|${|$(|}|)|{|(|[|]|<a |>|<<E|R\"(|r##\"|#|$$|$a$|\"\"\"|&|;|:|=|- |**|"
        "<script>| |1.|\t|word|é|😀";
    return QString::fromUtf8(written).split(u'|') +
           QStringList{QStringLiteral("|"), QString(QChar(0xD800)), QString(QChar(0))};
}

double processorSeconds(const SyntaxDefinition &definition, const QString &line)
{
    double best = 1e9;
    for (int round = 0; round < 3; ++round) {
        const std::clock_t start = std::clock();
        static_cast<void>(colourLine(definition, {}, line));
        best = std::min(best, double(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return best;
}

} // namespace

class SyntaxScannerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anyInputGivesTokensInOrder()
    {
        QRandomGenerator random(20);
        const QStringList pieces = hostilePieces();
        for (const QString &name : library().names()) {
            const auto definition = library().named(name);
            SyntaxState state;
            for (int k = 0; k < 1500; ++k) {
                QString line;
                for (int piece = random.bounded(24); piece > 0; --piece)
                    line += pieces.at(random.bounded(int(pieces.size())));
                const ColouredLine coloured = colourLine(*definition, state, line);
                const QString wrong = complaint(coloured.tokens, line.size());
                QVERIFY2(wrong.isEmpty(), qPrintable(name + u' ' + wrong + u' ' + line));
                QCOMPARE(stateBehind(*definition, state, line), coloured.end);
                QVERIFY(coloured.end.open.size() < 64);
                state = coloured.end;
            }
        }
    }

    void timeGrowsWithTheLine()
    {
        for (const QString &name : library().names()) {
            const auto definition = library().named(name);
            for (const QString &first : hostilePieces()) {
                for (const QString &second : {QString(), QStringLiteral("a "), QStringLiteral("\\\""), first + u'-'}) {
                    const QString piece = first + second;
                    const QString line = piece.repeated(longestColouredLine / piece.size());
                    const double whole = processorSeconds(*definition, line);
                    if (whole < 0.004)
                        continue;
                    const double part = processorSeconds(*definition, line.first(line.size() / 16));
                    // The clock of some systems goes in steps of a sixtieth of a second.
                    QVERIFY2(whole < 64 * part + 0.02, qPrintable(QStringLiteral("%1: %2 takes %3 s, a 16th of it %4 s")
                                                                      .arg(name, piece)
                                                                      .arg(whole)
                                                                      .arg(part)));
                }
            }
        }
    }

    void anEndlessLineIsColouredAtItsStart()
    {
        const auto definition = library().named(QStringLiteral("C/C++"));
        const QString line = QStringLiteral("/*") + QString(2 * longestColouredLine, u'x');
        const ColouredLine coloured = colourLine(*definition, {}, line);
        QCOMPARE(coloured.tokens, (std::vector<SyntaxToken>{{0, longestColouredLine, SyntaxRole::Comment}}));
        QCOMPARE(coloured.end, SyntaxState());

        const SyntaxState inComment = stateBehind(*definition, {}, u"/* open");
        QCOMPARE(stateBehind(*definition, inComment, line), inComment);
    }

    void aStateOfAnotherDefinitionIsTheStart()
    {
        const auto shell = library().named(QStringLiteral("Shell"));
        const auto diff = library().named(QStringLiteral("Diff"));
        const SyntaxState open = stateBehind(*shell, {}, u"cat <<END $(x ${y \"z");
        QVERIFY(!open.open.isEmpty());
        QCOMPARE(colourLine(*diff, open, u"+added").tokens, (std::vector<SyntaxToken>{{0, 6, SyntaxRole::Inserted}}));
    }

    void hereDocumentsFollowInTheirOrder()
    {
        const auto shell = library().named(QStringLiteral("Shell"));
        SyntaxState state;
        for (const char *line : {"cat <<A <<-B", "B", "A", "A"}) {
            QVERIFY(line[0] == 'c' || !state.open.isEmpty());
            state = stateBehind(*shell, state, QString::fromLatin1(line));
        }
        QCOMPARE(state.open.size(), 1);
        QCOMPARE(stateBehind(*shell, state, u"\tB"), SyntaxState());
    }

    void nestingBeyondReasonEndsWell()
    {
        const auto rust = library().named(QStringLiteral("Rust"));
        SyntaxState state = stateBehind(*rust, {}, QStringLiteral("/* ").repeated(5000));
        QVERIFY(state.open.size() < 64);
        state = stateBehind(*rust, state, QStringLiteral("*/ ").repeated(5000));
        QCOMPARE(state, SyntaxState());
    }
};

VELMORA_TEST(SyntaxScannerTest)
#include "syntax_scanner_test.moc"
