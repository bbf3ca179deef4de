#include "session/diff_colours.h"
#include "session/frame/notice_bar.h"
#include "session/frame/notice_card.h"
#include "session_fixture.h"
#include "support/test_main.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

bool warns(SessionFixture &f)
{
    const auto *bar = f.session.findChild<NoticeBar *>(word("verdictBar"));
    return bar->palette().color(QPalette::Window) == diffColour(DiffColour::Modified);
}

} // namespace

/// What a comparison shows and says, and how one goes through it.
class TextResultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What is said ----------------------------------------------------------------------------------------------------

    void reportsRowsNotBlocks()
    {
        SessionFixture f;
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        QSignalSpy messages(&f.session, &SessionWidget::statusMessage);
        const QString left = f.file("a.txt", "one\n" + numberedLines(5, "old value ") + "two\nthree\n");
        const QString right = f.file("b.txt", "one\n" + numberedLines(5, "new value ") + "two\nmore\nthree\n");
        f.compare(left, right);
        const auto said = [](const QSignalSpy &spy, int which) { return spy.at(which).first().toString(); };
        QCOMPARE(f.status(),
                 word("Compare done: 6 diffs (added 1, removed 0, modified 5) | Left: 8 lines, Right: 9 lines"));
        QCOMPARE(said(messages, 0), word("Comparing..."));
        QCOMPARE(said(messages, int(messages.size()) - 1), f.status());
        QCOMPARE(f.position(), word("Diff 0/2"));
        QCOMPARE(titles.size(), 1);
        QCOMPARE(said(titles, 0), word("a.txt <-> b.txt"));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first(), (QVariantList{left, right}));
    }

    void comparesAMissingSideAsAnEmptyText()
    {
        SessionFixture f;
        const QString file = f.file("a", "1\n2\n3\n");
        f.compare(file, f.path("missing"));
        QCOMPARE(f.status(),
                 word("Compare done: 3 diffs (added 0, removed 3, modified 0) | Left: 3 lines, Right: 0 lines"));
        QCOMPARE(f.format(), word("Left: UTF-8 [LF] | Right: Missing [-]"));
        QVERIFY(!f.session.view().notice(Side::Right).isHidden());

        f.compare(QString(), file);
        QCOMPARE(f.status(),
                 word("Compare done: 3 diffs (added 3, removed 0, modified 0) | Left: 0 lines, Right: 3 lines"));
        QVERIFY(!f.session.view().notice(Side::Left).isHidden());
        QVERIFY(f.session.view().notice(Side::Right).isHidden());
    }

    void obeysTheChosenEncoding()
    {
        SessionFixture f;
        const QString left = f.file("a", "\xa4\xa4\xa4\xe5\n"); // Big5
        const QString right = f.file("b", "\xEF\xBB\xBF中文\r\n");
        f.setOptions(R"({"leftEncoding": "Big5", "rightEncoding": "auto", "sameAsLeftFileFormat": false})");
        f.compare(left, right);
        QCOMPARE(f.format(), word("Left: Big5 [LF] | Right: UTF-8 BOM [CRLF]"));
        QCOMPARE(f.diffs(), 0);

        // Another choice is taken up at once and says what it could not read.
        auto *encoding = f.child<QComboBox>("leftEncoding");
        encoding->setCurrentIndex(encoding->findText(word("UTF-8")));
        Q_EMIT encoding->activated(encoding->currentIndex());
        f.wait();
        QVERIFY2(f.format().contains(word("undecodable, first in line 1")), qPrintable(f.format()));
        QCOMPARE(f.session.options().value(word("leftEncoding")).toString(), word("UTF-8"));
        QCOMPARE(f.session.options().value(word("rightEncoding")).toString(), word("auto"));
    }

    void theRightSideFollowsTheLeftUntilItIsChosen()
    {
        SessionFixture f;
        auto *right = f.child<QComboBox>("rightEncoding");
        const auto chosen = [&] {
            return f.child<QComboBox>("leftEncoding")->currentText() + u'|' + right->currentText();
        };
        f.setOptions(R"({"leftEncoding": "GB18030"})");
        QCOMPARE(chosen(), word("GB18030|GB18030"));
        right->setCurrentIndex(right->findText(word("Shift-JIS")));
        Q_EMIT right->activated(right->currentIndex());
        QCOMPARE(chosen(), word("GB18030|Shift-JIS"));
        QCOMPARE(f.session.options().value(word("sameAsLeftFileFormat")).toBool(), false);
    }

    void appliesReplacementRulesToTheComparisonOnly()
    {
        SessionFixture f;
        f.setOptions(R"({"leftReplaceFind": ["colour"], "leftReplaceWith": ["color"]})");
        f.compareTexts("a colour\n", "a color\n");
        QCOMPARE(f.diffs(), 0);
        QCOMPARE(f.text(Side::Left, 0), word("a colour"));
    }

    // The verdict -----------------------------------------------------------------------------------------------------

    void saysThatNothingDiffers()
    {
        SessionFixture f;
        const QString left = f.file("a", "x y\n");
        f.compare(left, left);
        QCOMPARE(f.banner(), word("The texts are identical"));
        f.compare(left, f.file("utf16", QByteArray::fromHex("fffe7800200079000a00")));
        QCOMPARE(f.banner(), word("The texts are identical; only their encodings differ"));
        f.compare(left, f.file("b", "x  y\n"));
        const QString rules = word("No differences under the rules of this comparison, which ignore: white space | ");
        QCOMPARE(f.banner(), rules + word("1 row differs only in that"));
        QCOMPARE(f.position(), word("Diff 0/0"));
        QVERIFY(!warns(f));

        // Bar, banner and foot agree when such rows count, as they do after one click.
        const QString counts = f.status();
        auto *offer = f.child<QPushButton>("verdictBarAction");
        QTest::mouseClick(offer, Qt::LeftButton);
        QCOMPARE(f.banner(), rules + word("1 row differs only in what is ignored, and counts here"));
        QCOMPARE(f.position(), word("Diff 0/1"));
        QCOMPARE(f.label("blocksLabel"), word("1 row in 1 block"));
        QCOMPARE(f.status(), counts + word(" | 1 unimportant row counts, too"));
        QTest::mouseClick(offer, Qt::LeftButton);
        QCOMPARE(f.status(), counts);
        f.compare(left, f.file("c", "x z\n"));
        QCOMPARE(f.banner(), QString());
        QVERIFY(offer->isHidden());
    }

    /// Line ends and two of three kinds of white space were left out of the list, and no test saw it.
    void namesAllThatIsIgnored()
    {
        SessionFixture f;
        f.setOptions(R"({"importantLeadingWhitespace": false, "importantEmbeddedWhitespace": true})");
        f.setOptions(R"({"importantTrailingWhitespace": false, "importantCharacterCase": false})");
        f.setOptions(R"({"compareLineEndings": false, "ignoreBlankLines": true, "unimportantText": ["x"]})");
        f.compareTexts("a\n", "A\r\n");
        QVERIFY2(f.banner().contains(word("which ignore: leading white space, trailing white space, letter case, line "
                                          "ends, blank lines, unimportant text")),
                 qPrintable(f.banner()));
    }

    void warnsOfIndentationWhereItHasMeaning()
    {
        SessionFixture f;
        for (const auto &[suffix, type] :
             {std::pair(".py", "Python"), std::pair(".yml", "YAML"), std::pair(".txt", "")}) {
            f.compare(f.file(u'a' + word(suffix), "if x:\n    y()\nz\n"),
                      f.file(u'b' + word(suffix), "if x:\n  y()\nZ \n"));
            const bool isWarning = *type != '\0';
            const QString warning =
                word("1 row that counts as equal is indented differently, which has meaning in %1").arg(word(type));
            QCOMPARE(f.banner(), isWarning ? warning : QString());
            QCOMPARE(!f.child<QPushButton>("verdictBarAction")->isHidden(), isWarning);
            QCOMPARE(warns(f), isWarning);
        }
    }

    void lineEndsAreDifferencesOfTheirOwn()
    {
        SessionFixture f;
        const auto found = [&f] {
            QStringList said{f.position(), f.label("blocksLabel")};
            return (said + f.status().split(word(" | ")).mid(2)).join(u'|');
        };
        auto compare = [&f, number = 0](const QByteArray &left, const QByteArray &right) mutable {
            const QString name = QString::number(++number);
            f.compare(f.file(u'a' + name, left), f.file(u'b' + name, right));
        };
        compare("a\nb\nc\n", "a\r\nb\r\nc\r\n");
        QCOMPARE(f.diffs(), 0);
        QCOMPARE(found(), word("Diff 0/1|3 rows in 1 block|Line ends differ in 3 rows"));
        compare("a\nb\nc", "a\nb\nc\n");
        QCOMPARE(found(), word("Diff 0/1|1 row in 1 block|The last line feed is missing on the left"));
        QCOMPARE(f.banner(),
                 word("The lines are equal, their ends are not. | The last line feed is missing on the left"));

        QVERIFY(warns(f));
        compare("a\nb", "a\nb\nc\n"); // the last line of one side is not in the last row
        QCOMPARE(found(), word("Diff 0/2|2 rows in 2 blocks|The last line feed is missing on the left"));

        // One difference all through two versions, wherever lines are changed; each new place is one more.
        compare("a\nb\nc\nd\nsame\ne\n", "a\r\nB1\r\nc\r\nd\r\nsame\ne\r\n");
        QCOMPARE(found(), word("Diff 0/3|4 rows in 3 blocks|Line ends differ in 4 rows"));
        QCOMPARE(f.banner(), word("Line ends differ in 4 rows"));
        QList<qsizetype> stops;
        for (int k = 0; k < 3; ++k) {
            f.session.onNextDiff();
            stops.append(f.scene().caret().position.row);
        }
        QCOMPARE(stops, (QList<qsizetype>{0, 1, 6}));

        // Copying one ends it.
        compare("a\nb\n", "a\r\nb\r\n");
        f.session.onNextDiff();
        f.session.onCopyLeftToRight();
        QCOMPARE(f.position(), word("Diff 0/0"));
    }

    // Navigation ------------------------------------------------------------------------------------------------------

    void stepsThroughDifferences()
    {
        SessionFixture f;
        QByteArray changed = numberedLines(200);
        changed.replace("line 50\n", "").replace("line 120\n", "line 120\nnew\nnew 2\n");
        f.compareTexts(numberedLines(200), changed);
        PaneScene &scene = f.scene();
        QCOMPARE(f.position(), word("Diff 0/2"));
        QCOMPARE(scene.top(), RowPlace());
        f.session.onNextDiff();
        QCOMPARE(f.position(), word("Diff 1/2"));
        QVERIFY(scene.top().index > 20 && scene.top().index < 49);
        f.session.onNextDiff();
        f.session.onNextDiff(); // stays at the last
        QCOMPARE(f.position(), word("Diff 2/2"));
        f.session.onPrevDiff();
        f.session.onPrevDiff();
        QCOMPARE(f.position(), word("Diff 1/2"));

        f.session.onShowDifferences();
        QCOMPARE(scene.layout().count(), 18); // three differences with their context and three folded stretches
        f.session.onNextDiff();
        QCOMPARE(f.position(), word("Diff 2/2"));
        f.session.onShowIdentical();
        QCOMPARE(scene.layout().count(), 199);
        f.session.onShowAll();
        QCOMPARE(scene.layout().count(), 202);

        // The same files keep the place, others start anew, and every result starts at no difference.
        scene.scrollToTop(100);
        f.session.onReloadBoth();
        f.wait();
        QCOMPARE(scene.top().index, 100);
        QCOMPARE(f.position(), word("Diff 0/2"));
        f.compare(f.path("a"), f.file("c", changed));
        QCOMPARE(scene.top(), RowPlace());
    }

    void answersToKeys()
    {
        SessionFixture f;
        f.session.show();
        f.session.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.session));
        QByteArray changed = numberedLines(50);
        changed.replace("line 10\n", "").replace("line 30\n", "");
        f.session.setPaths({f.file("a", numberedLines(50)), f.file("b", changed), {}});
        QTest::keyClick(&f.session, Qt::Key_F5);
        f.wait();
        QCOMPARE(f.position(), word("Diff 0/2"));
        QWidget &pane = f.pane(Side::Left);
        pane.setFocus();
        QTest::keyClick(&pane, Qt::Key_F8);
        QTest::keyClick(&pane, Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(f.position(), word("Diff 2/2"));
        QTest::keyClick(&pane, Qt::Key_F8, Qt::ShiftModifier);
        QCOMPARE(f.position(), word("Diff 1/2"));
        QTest::keyClick(&pane, Qt::Key_F6);
        QVERIFY(f.pane(Side::Right).hasFocus());
        QTest::keyClick(&f.pane(Side::Right), Qt::Key_F6);
        QVERIFY(pane.hasFocus());
        const qreal size = f.session.view().fontPointSize();
        QTest::keyClick(&pane, Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(f.session.view().fontPointSize() > size);
        QTest::keyClick(&pane, Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(f.session.view().fontPointSize(), size);

        f.session.setPaths({f.file("c", numberedLines(300'000)), f.file("d", numberedLines(300'000)), {}});
        QTest::keyClick(&pane, Qt::Key_F5);
        QVERIFY(f.session.isComparing());
        QTest::keyClick(&pane, Qt::Key_Escape);
        QCOMPARE(f.status(), word("Cancelling..."));
        f.wait();

        const QAction &next = *f.child<QAction>("nextAction");
        for (const QKeySequence &key : next.shortcuts())
            QVERIFY(next.toolTip().contains(key.toString(QKeySequence::NativeText)));
    }

    void keysWorkWhereverTheFocusIsButInATextField()
    {
        SessionFixture f;
        QWidget window;
        auto *row = new QHBoxLayout(&window);
        auto *list = new QListWidget;
        auto *field = new QLineEdit;
        row->addWidget(list);
        row->addWidget(field);
        row->addWidget(&f.session);
        const auto leave = qScopeGuard([&f] { f.session.setParent(nullptr); });
        f.compareTexts("a\nb\nc\n", "x\nb\ny\n");
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        list->setFocus();
        QTest::keyClick(list, Qt::Key_F8);
        QCOMPARE(f.position(), word("Diff 1/2"));
        field->setFocus();
        QTest::keyClick(field, Qt::Key_F8);
        QCOMPARE(f.position(), word("Diff 1/2"));
    }

    void fitsIntoASmallWindow()
    {
        SessionFixture f;
        f.compareTexts("a\n", "b\n");
        f.session.show();
        f.session.onFind();
        const auto *encoding = f.child<QComboBox>("leftEncoding");
        const auto *path = f.child<QLineEdit>("leftPathEdit");
        const auto isBelow = [&f] {
            return f.child<QLabel>("formatLabel")->y() >= f.child<QLabel>("statusLabel")->geometry().bottom();
        };
        const int letter = f.session.fontMetrics().averageCharWidth();
        for (const int letters : {160, 60, 160}) {
            f.session.resize(letters * letter, 500);
            const bool isSmall = letters == 60;
            QTRY_VERIFY(encoding->isVisible() == !isSmall && isBelow() == isSmall);
            QTRY_VERIFY(path->width() > 15 * path->fontMetrics().averageCharWidth());
            const auto boxes = f.session.findChildren<QCheckBox *>();
            for (const QCheckBox *box : boxes)
                QTRY_VERIFY(box->width() >= box->sizeHint().width());
            QCOMPARE(boxes.size(), 3);
        }
    }
};

VELMORA_TEST(TextResultsTest)
#include "text_results_test.moc"
