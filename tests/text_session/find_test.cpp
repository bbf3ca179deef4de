#include "row_picture.h"
#include "session/pane/text_replace.h"
#include "session/pane/text_search.h"
#include "session_fixture.h"
#include "support/test_main.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

using namespace velmora;
using namespace velmora::test;

namespace {

/// "row:unit+length" of each match.
QString listed(const std::vector<TextMatch> &matches)
{
    QStringList list;
    for (const TextMatch &match : matches)
        list.append(word("%1:%2+%3").arg(match.row).arg(match.unit).arg(match.length));
    return list.join(u' ');
}

/// A session on the screen that compares two texts and has its find bar open.
class FindFixture : public SessionFixture {
public:
    FindFixture(const QByteArray &leftText, const QByteArray &rightText)
    {
        compareTexts(leftText, rightText);
        session.show();
        session.onFind();
    }

    void lookFor(const QString &text) { child<QLineEdit>("findText")->setText(text); }
    void lookForExpression(const QString &text)
    {
        for (QCheckBox *box : session.findChildren<QCheckBox *>())
            box->setChecked(box->text() == word("Regular expression"));
        lookFor(text);
    }
    [[nodiscard]] QString found() const { return label("findPosition"); }
};

} // namespace

class FindTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Such an expression tries each of the ways to divide a run of letters, whose number doubles with each letter.
    void anExpressionThatRunsAwayGivesUpLineByLine()
    {
        const QByteArray slow = QByteArray(60, 'a') + "!\n";
        FindFixture f("aaa\n" + slow + "b aa\n" + slow, "x\n");
        const SearchQuery query{word("(a+)+$"), false, false, true};
        const TextMatches matches = findMatches(*f.scene().document(), query);
        QCOMPARE(matches.linesGivenUp, 2);
        QCOMPARE(matches.of(Side::Left).size(), std::size_t(2));
        f.lookForExpression(query.text);
        QTRY_VERIFY(f.found().endsWith(word("too slow an expression for 2 lines")));
    }

    void findsInTheLinesOfEachSide_data()
    {
        QTest::addColumn<SearchQuery>("query");
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::newRow("nothing") << SearchQuery{} << QString() << QString();
        QTest::newRow("any case") << SearchQuery{word("cat")} << word("0:0+3 0:4+3 1:3+3 1:7+3") << word("0:0+3 2:0+3");
        QTest::newRow("case") << SearchQuery{word("Cat"), true} << word("0:0+3") << word("0:0+3");
        QTest::newRow("words") << SearchQuery{word("cat"), false, true} << word("0:0+3 0:4+3") << word("0:0+3 2:0+3");
        QTest::newRow("expression") << SearchQuery{word("c.t\\b"), false, false, true} << word("0:0+3 0:4+3 1:3+3")
                                    << word("0:0+3 2:0+3");
        QTest::newRow("empty matches") << SearchQuery{word("x*"), false, false, true} << QString() << QString();
        QTest::newRow("no expression") << SearchQuery{word("(cat"), false, false, true} << QString() << QString();
        QTest::newRow("not overlapping") << SearchQuery{word("aa")} << word("2:0+2") << QString();
        QTest::newRow("signs of expressions") << SearchQuery{word("(*)"), false, false} << word("2:4+3") << QString();
    }

    void findsInTheLinesOfEachSide()
    {
        QFETCH(SearchQuery, query);
        const DiffDocument document({{Modified, 1, 1}, {Equal, 2, -1}, {Modified, 3, 2}},
                                    sourceOf("Cat cat\nbobcat cats\naaa (*)\n"), sourceOf("Cat\ncat\n"));
        const TextMatches matches = findMatches(document, query);
        QTEST(listed(matches.of(Side::Left)), "left");
        QTEST(listed(matches.of(Side::Right)), "right"); // a line shown for the other side is not searched
    }

    void leadsFromMatchToMatch()
    {
        FindFixture f("one\ntwo one\nthree\nOne\n", "one\nthree\n");
        PaneScene &scene = f.scene();
        const auto found = [&] { return word("%1 %2").arg(f.found()).arg(scene.caret().selectionStart().row); };
        f.lookFor(word("one"));
        QTRY_COMPARE(found(), word("1 of 3 0"));
        QCOMPARE(scene.selectedText(), word("one"));
        f.session.onFindNext();
        QCOMPARE(found(), word("2 of 3 1"));
        f.session.onFindNext();
        f.session.onFindNext(); // behind the last comes the first
        QCOMPARE(found(), word("1 of 3 0"));
        f.session.onFindPrev();
        QCOMPARE(found(), word("3 of 3 3"));

        // Rows that are not shown are passed over.
        f.session.onShowIdentical();
        f.session.onFindNext();
        QCOMPARE(found(), word("1 of 3 0"));
        f.session.onFindNext();
        QCOMPARE(found(), word("1 of 3 0"));
        f.session.onShowAll();

        // More letters stay where the search began, if they can.
        f.lookFor(word("t"));
        QTRY_COMPARE(f.found(), word("1 of 2"));
        f.lookFor(word("thr"));
        QTRY_COMPARE(found(), word("1 of 1 2"));
        f.lookFor(word("thrx"));
        QTRY_COMPARE(f.found(), word("No match"));
        f.session.onFindNext();

        f.session.onFindClose();
        QVERIFY(scene.search().matches().of(Side::Left).empty());
    }

    void looksForTheSameInTheNextResult()
    {
        FindFixture f("one\n", "one\n");
        f.lookFor(word("one"));
        QTRY_COMPARE(f.found(), word("1 of 1"));
        f.file("a", "one\none\n");
        f.session.onReloadBoth();
        f.wait();
        QTRY_COMPARE(f.found(), word("Matches: 2"));
        f.lookForExpression(word("(o"));
        QVERIFY(f.found().startsWith(word("Not a regular expression: ")));
    }

    void replacesByExpressionsAndPlainly_data()
    {
        QTest::addColumn<SearchQuery>("query");
        QTest::addColumn<QString>("with");
        QTest::addColumn<QByteArray>("expected");
        const auto plain = [](const char *text) { return SearchQuery{QLatin1String(text), true, false, false}; };
        const auto expression = [](const char *text) { return SearchQuery{QLatin1String(text), true, false, true}; };
        QTest::newRow("plain") << plain("a.c") << "\\1$1" << QByteArray("x=1\r\n\\1$1 abc\nlast");
        QTest::newRow("groups") << expression("(\\w)=(\\d)") << "$2=\\1\\$\\0"
                                << QByteArray("1=x$x=1\r\na.c abc\nlast");
        QTest::newRow("parts lines") << expression("[= ]") << "\\n" << QByteArray("x\r\n1\r\na.c\nabc\nlast");
        QTest::newRow("parts the last line") << expression("s") << "\\n" << QByteArray("x=1\r\na.c abc\nla\nt");
        QTest::newRow("last line") << expression("st$") << "\\t$" << QByteArray("x=1\r\na.c abc\nla\t$");
        QTest::newRow("none") << expression("(z") << "y" << QByteArray();
        QTest::newRow("no match") << expression("(\\w+)+!") << "y" << QByteArray();
    }

    void replacesByExpressionsAndPlainly()
    {
        QFETCH(SearchQuery, query);
        QFETCH(QString, with);
        QFETCH(QByteArray, expected);
        const TextLines text = TextLines::split("x=1\r\na.c abc\nlast");
        Progress nobody;
        const ReplacedText result = replaceMatches(*EditBuffer(text).snapshot(), query, with, {}, nobody);
        EditBuffer buffer(text);
        buffer.replaceLines(result.first, result.removed, result.lines, {});
        const TextLines replaced = buffer.snapshot()->toLines();
        QCOMPARE(QByteArray(replaced.bytes().data(), qsizetype(replaced.bytes().size())),
                 expected.isEmpty() ? QByteArray("x=1\r\na.c abc\nlast") : expected);
        QCOMPARE(result.matches > 0, !expected.isEmpty());
    }

    void aReplacementThatRunsAwayLeavesTheLineAndSaysSo()
    {
        FindFixture f(QByteArray(60, 'a') + "!\naaa\n", "x\n");
        f.child<QAction>("replaceAction")->trigger();
        f.lookForExpression(word("(a+)+$"));
        f.child<QLineEdit>("replaceText")->setText(word("b"));
        QTRY_VERIFY(f.child<QPushButton>("replaceAll")->isEnabled());
        f.child<QPushButton>("replaceAll")->click();
        QTRY_VERIFY(f.status().contains(word("too slow for 1 lines")));
        QCOMPARE(f.text(Side::Left, 0) + f.text(Side::Left, 1), QString(60, u'a') + word("!b"));
    }

    void replacesOneAfterTheOtherOrAllAsOneStep()
    {
        FindFixture f("one\ntwo one\none one\n", "one\n");
        f.child<QAction>("replaceAction")->trigger();
        auto *with = f.child<QLineEdit>("replaceText");
        f.lookFor(word("one"));
        QTRY_COMPARE(f.found(), word("1 of 4"));
        with->setFocus();
        QTest::keyClicks(with, word("1\\n"));
        QTest::keyClick(with, Qt::Key_Return);
        QTRY_COMPARE(f.found(), word("1 of 3")); // on to the next one
        QCOMPARE(f.text(Side::Left, 0), word("1\\n"));
        const TextPosition next = f.scene().caret().position;
        QCOMPARE(f.scene().document()->lineNumber(next.row, Side::Left), 2);
        QCOMPARE(next.unit, 7);
        f.child<QPushButton>("replaceAll")->click();
        QTRY_VERIFY(f.status().startsWith(word("Replaced matches: 3 | Compare done")));
        QCOMPARE(f.text(Side::Left, 2), word("1\\n 1\\n"));
        QCOMPARE(f.text(Side::Right, 0), word("one"));
        f.session.edit(EditCommand::UndoLeft);
        QCOMPARE(f.text(Side::Left, 2), word("one one"));
        QCOMPARE(f.text(Side::Left, 0), word("1\\n"));
    }

    void opensWithTheSelectionAndClosesByEscape()
    {
        FindFixture f("one two\n", "one two\n");
        f.session.onFindClose();
        f.session.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.session));
        TextPane &pane = f.pane(Side::Left);
        pane.setFocus();
        f.scene().setCaret({Side::Left, {0, 4}, {0, 7}});
        QTest::keyClick(&pane, Qt::Key_F, Qt::ControlModifier);
        auto *text = f.child<QLineEdit>("findText");
        QVERIFY(text->hasFocus());
        QCOMPARE(text->text(), word("two"));
        QTRY_COMPARE(f.found(), word("1 of 1"));
        QTest::keyClick(text, Qt::Key_Escape);
        QVERIFY(!text->isVisible());
        QVERIFY(pane.hasFocus());
    }

    void goesToALine()
    {
        SessionFixture f;
        f.session.onGotoLine(); // nothing to go to, nothing to ask
        QVERIFY(f.dialogs.asked().isEmpty());
        f.compareTexts(numberedLines(300, ""), "new\n" + numberedLines(300, ""));
        f.dialogs.answerNumber(250);
        f.session.onGotoLine();
        QCOMPARE(f.dialogs.asked().last().title, word("Go to line"));
        QCOMPARE(f.question(), word("Line number (1 - 300):"));
        PaneScene &scene = f.scene();
        QCOMPARE(scene.document()->text(scene.caret().position.row, Side::Left), word("250"));
        QVERIFY(scene.layout().inSight(scene.top(), scene.viewportHeight()).contains(scene.caret().position.row));

        scene.setCaret({Side::Right, {0, 0}, {0, 0}});
        f.dialogs.answerNumber(301);
        f.session.onGotoLine();
        QCOMPARE(f.question(), word("Line number (1 - 301):"));
        QCOMPARE(scene.document()->text(scene.caret().position.row, Side::Right), word("300"));
    }
};

VELMORA_TEST(FindTest)
#include "find_test.moc"
