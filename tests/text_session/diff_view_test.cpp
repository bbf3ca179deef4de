#include "core/hidden_characters.h"
#include "row_picture.h"
#include "session/diff_colours.h"
#include "session/pane/intra_line_changes.h"
#include "session/pane/text_pane.h"
#include "session/pane/word_changes.h"
#include "support/files.h"
#include "support/test_main.h"
#include "text/view/diff_view.h"
#include "text/view/line_detail.h"
#include "text/view/overview_strip.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace velmora;
using namespace velmora::test;

namespace {

/// So many lines "x" on both sides; rows n, 2n and so on count as different.
std::shared_ptr<const DiffDocument> everyNth(int count, int n)
{
    QByteArray picture(count, '=');
    for (int row = n; row < count; row += n)
        picture[row] = '~';
    const QByteArray text = QByteArray("x\n").repeated(count);
    return documentOf(picture, text, text);
}

QImage imageOf(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    widget.render(&image);
    return image;
}

/// A view on the screen, and its parts.
class Shown {
public:
    explicit Shown(const std::shared_ptr<const DiffDocument> &document = {}, QSize size = {900, 300})
    {
        view.resize(size);
        view.show();
        scene.setDocument(document);
    }
    Shown(const QByteArray &picture, const QByteArray &leftText, const QByteArray &rightText)
        : Shown(documentOf(picture, leftText, rightText))
    {}

    void put(Side side, TextPosition at) { scene.setCaret({side, at, at}); }
    [[nodiscard]] QString caret() const
    {
        const auto text = [](TextPosition at) { return word("%1:%2").arg(at.row).arg(at.unit); };
        const TextCaret &now = scene.caret();
        return now.hasSelection() ? text(now.anchor) + u'>' + text(now.position) : text(now.position);
    }
    [[nodiscard]] RowRange inSight() const { return layout.inSight(scene.top(), scene.viewportHeight()); }

    DiffView view;
    PaneScene &scene = view.scene();
    const RowLayout &layout = scene.layout();
    TextPane &left = view.pane(Side::Left);
    TextPane &right = view.pane(Side::Right);
};

} // namespace

class DiffViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Cost ------------------------------------------------------------------------------------------------------------

    void paintsOnlyTheLinesInSight()
    {
        constexpr int rowCount = 1'000'000;
        QByteArray text;
        QList<AlignedRow> rows;
        for (qint32 k = 1; k <= rowCount; ++k) {
            text += QByteArray::number(k) + '\n';
            rows.append({k % 10 == 0 ? Modified : Equal, k, k});
        }
        auto left = std::make_shared<CountingSource>(text);
        auto right = std::make_shared<CountingSource>(text);
        Shown v(std::make_shared<DiffDocument>(rows, left, right), {900, 600});
        const auto fetchedFor = [&](auto change) {
            change();
            left->fetched = 0;
            right->fetched = 0;
            imageOf(v.view);
            return left->fetched + right->fetched;
        };
        // A line is asked for to draw it, to see whether an equal row is the same text, and for its changed characters.
        const qint64 inSight = 2 * (v.layout.rowsPerPage(600) + 1);
        const qint64 allowed = 4 * inSight;
        const qint64 first = fetchedFor([] {});
        QVERIFY2(first >= inSight / 2 && first <= allowed, qPrintable(QString::number(first)));
        QVERIFY(fetchedFor([&] { v.scene.scrollToTop(500'000); }) <= allowed);
        QVERIFY(fetchedFor([&] { v.scene.setFilter(RowFilter::Differences); }) <= allowed);
        QVERIFY(fetchedFor([&] { v.scene.goToBlock(99'999); }) <= allowed);
    }

    void showsAnyPartOfALongLineAsIfItWereShort()
    {
        constexpr qsizetype offset = 512 * 4000;
        QByteArray longLine;
        for (int k = 0; longLine.size() < 4'000'000; ++k)
            longLine += "\"key" + QByteArray::number(k) + "\":" + QByteArray::number(k * 7919) + ',';
        const QByteArray part = longLine.mid(offset, 400);
        Shown whole("=", longLine, longLine);
        Shown alone("=", part, part);
        imageOf(whole.view);
        whole.scene.scrollTo({}, offset);
        QCOMPARE(whole.scene.column(), offset);
        QCOMPARE(imageOf(whole.right), imageOf(alone.right));

        // Places are found on it as they are on the short one.
        LineRenderer &renderer = whole.scene.renderer(Side::Left);
        const qreal x = renderer.xOf(0, offset + 100);
        QCOMPARE(renderer.unitAt(0, x), offset + 100);
        QCOMPARE(x - renderer.xOf(0, offset), alone.scene.renderer(Side::Left).xOf(0, 100));
        QCOMPARE(renderer.length(0), longLine.size());
    }

    // Scrolling -------------------------------------------------------------------------------------------------------

    void bothPanesScrollTogether()
    {
        const QByteArray wide = QByteArray(500, 'x') + '\n';
        Shown v(QByteArray(100, '='), wide.repeated(100), wide.repeated(100));
        auto *vertical = v.view.findChildren<QScrollBar *>().at(0);
        auto *horizontal = v.view.findChildren<QScrollBar *>().at(1);
        if (vertical->orientation() == Qt::Horizontal)
            std::swap(vertical, horizontal);
        vertical->setValue(40);
        horizontal->setValue(60);
        QCOMPARE(v.scene.top().index, 40);
        QCOMPARE(v.scene.column(), 60);
        v.scene.scrollTo({1000, 0}, 100'000);
        QCOMPARE(vertical->value(), vertical->maximum());
        QCOMPARE(horizontal->value(), horizontal->maximum());

        const auto wheel = [&v](QPoint angle, Qt::KeyboardModifiers modifiers = {}) {
            QWheelEvent event(QPointF(50, 50), v.view.mapToGlobal(QPointF(50, 50)), {}, angle, Qt::NoButton, modifiers,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&v.view, &event);
        };
        v.scene.scrollTo({}, 0);
        wheel({0, -120});
        QCOMPARE(v.scene.top().index, 3);
        for (int k = 0; k < 4; ++k)
            wheel({0, -30}); // a finer wheel comes as far
        QCOMPARE(v.scene.top().index, 6);
        wheel({0, -120}, Qt::ShiftModifier);
        QCOMPARE(v.scene.top().index, 6);
        QVERIFY(v.scene.column() > 0);
        const qreal size = v.view.fontPointSize();
        wheel({0, 120}, Qt::ControlModifier);
        QCOMPARE(v.view.fontPointSize(), size + 1);
    }

    void theOverviewShowsAndLeadsToEveryPlace()
    {
        Shown v(everyNth(100'000, 50'000));
        auto *strip = v.view.findChild<OverviewStrip *>();
        const QImage image = imageOf(*strip);
        int marked = -1;
        for (int y = 20; y < image.height() && marked < 0; ++y) {
            if (image.pixel(5, y) != image.pixel(5, image.height() - 1))
                marked = y;
        }
        QVERIFY(std::abs(marked - image.height() / 2) <= 2); // one row of a hundred thousand is seen
        QTest::mouseClick(strip, Qt::LeftButton, {}, QPoint(10, marked));
        QVERIFY(std::abs(v.inSight().first - 50'000) < 1000);
    }

    void keepsTheCaretInSightWhenTheFilterChanges()
    {
        Shown v(everyNth(1000, 10));
        v.scene.goToBlock(49);
        v.scene.setFilter(RowFilter::Differences);
        const auto caretIsInSight = [&v] {
            return v.inSight().contains(v.layout.indexOf(v.scene.caret().position.row));
        };
        QCOMPARE(v.scene.caret().position.row, 500);
        QVERIFY(caretIsInSight());
        v.scene.setFilter(RowFilter::Identical);
        QCOMPARE(v.scene.caret().position.row, 501);
        QVERIFY(caretIsInSight());
        v.scene.setFilter(RowFilter::All);
        QVERIFY(caretIsInSight());
    }

    // Caret and selection ---------------------------------------------------------------------------------------------

    void movesTheCaretByKeys()
    {
        const QByteArray left = "alpha beta\n\tx\n" + word("e\u0301😀z\n").toUtf8();
        Shown v("==+=", left, "alpha beta\n\tx\nnew\nend\n");
        const std::pair<const char *, const char *> keys[] = {
            {"Ctrl+Right", "0:6"}, {"End", "0:10"}, {"Right", "1:0"},
            {"Left", "0:10"},      {"Down", "1:2"}, {"Down", "2:0"}, // only the right side has a line here
            {"Up", "1:2"},         {"Up", "0:10"},                   // the place that it came from
            {"Ctrl+End", "3:5"},   {"Left", "3:4"}, {"Left", "3:2"}, // a surrogate pair is one step
            {"Left", "3:0"},                                         // so is a letter with its accent
            {"Ctrl+Home", "0:0"},  {"Left", "0:0"}, {"Shift+PgDown", "0:0>3:0"},
        };
        for (const auto &[key, place] : keys) {
            const QKeyCombination pressed = QKeySequence(word(key))[0];
            QTest::keyClick(&v.left, pressed.key(), pressed.keyboardModifiers());
            QCOMPARE(v.caret(), word(place));
        }
    }

    void copiesWhatIsSelected()
    {
        Shown v("=-+~=", "first line\nonly left\nchanged\nend\n", "first line\nonly right\nchanges\nend\n");
        const auto copied = [](TextPane &pane) {
            pane.copy();
            return QApplication::clipboard()->text();
        };
        v.left.selectAll();
        QCOMPARE(copied(v.left), word("first line\nonly left\nchanged\nend"));
        v.right.selectAll();
        QCOMPARE(copied(v.right), word("first line\nonly right\nchanges\nend"));
        v.scene.setCaret({Side::Left, {3, 3}, {0, 6}}); // backwards
        QCOMPARE(copied(v.left), word("line\nonly left\ncha"));
        v.scene.setFilter(RowFilter::Identical);
        v.left.selectAll();
        QCOMPARE(copied(v.left), word("first line\nend"));
    }

    void selectsByMouse()
    {
        Shown v("==", "int some_name = 3;\nnext\n", "a\nb\n");
        imageOf(v.view);
        TextPane &pane = v.left;
        const int height = v.layout.rowHeight();
        LineRenderer &renderer = v.scene.renderer(Side::Left);
        const auto at = [&](qsizetype row, qsizetype unit) {
            return QPoint(pane.textArea().left() + 5 + int(renderer.xOf(row, unit)) + 1,
                          int(row) * height + height / 2);
        };
        QTest::mouseDClick(&pane, Qt::LeftButton, {}, at(0, 7));
        QCOMPARE(v.scene.selectedText(), word("some_name"));
        QTest::mousePress(&pane, Qt::LeftButton, {}, at(0, 7)); // the third click
        QCOMPARE(v.scene.selectedText(), word("int some_name = 3;"));
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, at(0, 7));
        QTest::mouseClick(&pane, Qt::LeftButton, {}, at(1, 0)); // a press on the selection would drag it
        QTest::mousePress(&pane, Qt::LeftButton, {}, at(0, 4));
        QTest::mouseMove(&pane, at(1, 2));
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, at(1, 2));
        QCOMPARE(v.scene.selectedText(), word("some_name = 3;\nne"));
        QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, at(0, 8));
        QCOMPARE(v.scene.selectedText(), word("some"));
    }

    void aClickIntoADifferenceMakesItTheCurrentOne()
    {
        Shown v("=~==~~=", "1\n2\n3\n4\n5\n6\n7\n", "1\na\n3\n4\nb\nc\n7\n");
        imageOf(v.view);
        QSignalSpy changes(&v.scene, &PaneScene::currentBlockChanged);
        const int height = v.layout.rowHeight();
        QTest::mouseClick(&v.right, Qt::LeftButton, {}, QPoint(200, 5 * height + 2));
        QCOMPARE(v.scene.currentBlock(), 1);
        QTest::mouseClick(&v.right, Qt::LeftButton, {}, QPoint(200, 2 * height + 2));
        QCOMPARE(v.scene.currentBlock(), 1);
        QCOMPARE(changes.size(), 1);
    }

    void describesTheCurrentLineToAssistiveTools()
    {
        Shown v("=+", "one\n", "one\ntwo\n");
        QAccessibleInterface *left = QAccessible::queryAccessibleInterface(&v.left);
        QAccessibleInterface *right = QAccessible::queryAccessibleInterface(&v.right);
        QVERIFY(left && right);
        QVERIFY(left->text(QAccessible::Name) != right->text(QAccessible::Name));
        v.put(Side::Right, {1, 0});
        QCOMPARE(right->text(QAccessible::Value), word("Line 2, added: two"));
        QCOMPARE(left->text(QAccessible::Value), word("No line here, added"));
        v.scene.goToBlock(0);
        QCOMPARE(right->text(QAccessible::Description),
                 word("Difference block 1 of 1, added: no line on the left, right line 2"));

        QAccessibleTextInterface *text = right->textInterface();
        QVERIFY(text);
        QCOMPARE(text->text(0, text->characterCount()), word("two"));
        text->setSelection(0, 1, 3);
        QCOMPARE(v.scene.selectedText(), word("wo"));
        QCOMPARE(text->selectionCount(), 1);
        QCOMPARE(text->cursorPosition(), 3);
        text->setCursorPosition(1);
        QVERIFY(!v.scene.caret().hasSelection());
        QCOMPARE(text->offsetAtPoint(text->characterRect(2).center()), 2);
        QVERIFY(right->state().readOnly);
    }

    // Changed characters ----------------------------------------------------------------------------------------------

    void findsChangedCharactersOfShortAndLongRows()
    {
        const auto document = documentOf("~", "int value = 1;\n", "int value = 22;\n");
        const RowChanges small = findRowChanges(*document, 0);
        QCOMPARE(small.left, (QList<CharRange>{{12, 1}}));
        QCOMPARE(small.right, (QList<CharRange>{{12, 2}}));

        // Too long to match character by character: what both ends have in common is no change.
        const QByteArray body = word("ä€😀").repeated(100'000).toUtf8();
        const auto longRow = documentOf("~", body + "12" + body, body + "3" + body);
        const qint32 before = 4 * 100'000;
        const RowChanges large = findRowChanges(*longRow, 0);
        QCOMPARE(large.left, (QList<CharRange>{{before, 2}}));
        QCOMPARE(large.right, (QList<CharRange>{{before, 1}}));

        // Characters that share bytes are not cut apart.
        const auto cut = documentOf("~", body + word("é").toUtf8() + body, body + word("è").toUtf8() + body);
        QCOMPARE(findRowChanges(*cut, 0).left, (QList<CharRange>{{before, 1}}));
    }

    void goesToTheFirstChangedCharacterOfADistantPlace()
    {
        const QByteArray before(3'000'000, 'x');
        const auto document =
            documentOf("=~", "a\n" + before + "old" + before + '\n', "a\n" + before + "new" + before + '\n');
        Shown v(document);
        const auto changeIsInSight = [&v] {
            const qint64 column = v.scene.column();
            return column < 3'000'000 && column + v.scene.columnsPerPage() > 3'000'003;
        };
        v.scene.goToBlock(0);
        QTRY_VERIFY(changeIsInSight());

        // A person who scrolls meanwhile is left alone.
        v.scene.setDocument(document);
        QSignalSpy arrived(&v.scene.changes(), &IntraLineChanges::arrived);
        v.scene.goToBlock(0);
        v.scene.scrollTo({}, 77);
        QVERIFY(arrived.wait());
        QCOMPARE(v.scene.column(), 77);
    }

    void worksOutLongRowsOnAWorker()
    {
        QByteArray left;
        QByteArray right;
        for (int k = 0; k < 400; ++k) {
            left += "word" + QByteArray::number(k) + ' ';
            right += "word" + QByteArray::number(k % 7 == 0 ? k + 1 : k) + ' ';
        }
        const auto document = documentOf("~~", left + '\n' + "a1\n", right + '\n' + "a2\n");
        IntraLineChanges changes;
        changes.setDocument(document);
        QSignalSpy arrived(&changes, &IntraLineChanges::arrived);
        changes.beginFrame(0, 1);
        QVERIFY(!changes.changesOf(0));
        QVERIFY(changes.changesOf(1)); // a short one is known at once
        changes.endFrame();
        QVERIFY(arrived.wait());
        changes.beginFrame(0, 1);
        const RowChanges *found = changes.changesOf(0);
        QVERIFY(found);
        QCOMPARE(found->left, findRowChanges(*document, 0).left);
        QVERIFY(!found->left.isEmpty());

        // What a document that is gone had asked for is never shown for the next one.
        changes.setDocument(document);
        changes.beginFrame(0, 1);
        QVERIFY(!changes.changesOf(0));
        changes.endFrame();
        changes.setDocument(documentOf("~", "x\n", "y\n"));
        QTest::qWait(0);
        changes.beginFrame(0, 0);
        QCOMPARE(changes.changesOf(0)->left, (QList<CharRange>{{0, 1}}));
    }

    void showsTheCurrentLinesOneAboveTheOther()
    {
        Shown v("=~+", "same\nan old line\n", "same\na new line\nmore\n");
        LineDetail detail(v.scene);
        detail.resize(800, detail.height());
        const int height = v.layout.rowHeight();
        const auto backgrounds = [&](qsizetype row) {
            v.put(Side::Left, {row, 0});
            const QImage image = imageOf(detail);
            const auto background = [&image](int y) { return QColor(image.pixel(790, y)); };
            return QList<QColor>{background(height / 2), background(height * 3 / 2)};
        };
        const auto colours = [](DiffColour above, DiffColour below) {
            return QList<QColor>{diffColour(above), diffColour(below)};
        };
        QCOMPARE(backgrounds(0), colours(DiffColour::Background, DiffColour::Background));
        QCOMPARE(backgrounds(1), colours(DiffColour::Modified, DiffColour::Modified));
        QCOMPARE(backgrounds(2), colours(DiffColour::Filler, DiffColour::Added));
    }

    // Text as it is drawn ---------------------------------------------------------------------------------------------

    void takesCharactersWithoutAPictureOutOfTheText()
    {
        const std::pair<QString, const char *> texts[] = {
            {word("a\tb 漢字\u3000é 😀 \u2764\ufe0f عربي"), ""},
            {word("\x01\r\x7f\u0085\u009c"), "0:SOH 1:CR 2:DEL 3:NEL 4:9C"},
            {word("x\u202ey\u2066\u2028\u00a0\u202f\u2009\u00ad\ufeff"),
             "1:RLO 3:LRI 4:LS 5:NBSP 6:NNBS 7:2009 8:SHY 9:BOM"},
            {word("a\U000E0041\u200d\u3164"), "1:E0041 3:ZWJ 4:3164"},
        };
        for (const auto &[text, expected] : texts) {
            QString rest = text;
            QStringList taken;
            for (const HiddenCharacter &hidden : takeHiddenCharacters(rest))
                taken.append(QString::number(hidden.unit) + u':' + hiddenCharacterCode(hidden.character));
            QCOMPARE(taken.join(u' '), word(expected));
            QCOMPARE(rest.size(), text.size());
        }
    }

    void boxesLeaveTheOrderOfTheirNeighboursAlone()
    {
        const QString tricky = word("ab\u202ecd\u2066ef\U000E0041gh");
        Shown v("=", tricky.toUtf8(), tricky.toUtf8());
        LineRenderer &renderer = v.scene.renderer(Side::Left);
        const qreal cell = renderer.cellWidth();
        // Each character stands on the grid behind the one before it, boxes as wide as they say.
        qint64 column = 0;
        for (qsizetype unit = 0; unit < tricky.size(); ++unit) {
            if (tricky.at(unit).isLowSurrogate())
                continue;
            const qreal x = renderer.xOf(0, unit);
            QVERIFY2(std::abs(x - qreal(column) * cell) < 1, qPrintable(word("%1: %2").arg(unit).arg(x)));
            const char32_t character = tricky.at(unit).isHighSurrogate()
                                           ? QChar::surrogateToUcs4(tricky.at(unit), tricky.at(unit + 1))
                                           : tricky.at(unit).unicode();
            column += std::max(hiddenCharacterCells(character), 1);
        }
        const auto behindTag = renderer.next(0, 8, QTextLayout::SkipCharacters);
        QCOMPARE(behindTag, 10); // both halves of a pair are one step
        QCOMPARE(renderer.previous(0, 10, QTextLayout::SkipCharacters), 8);
        v.left.selectAll();
        QCOMPARE(v.scene.selectedText(), tricky);
    }

    // Word wrap and folded rows ---------------------------------------------------------------------------------------

    void wrapsLongLinesBesideTheOtherSide()
    {
        const QByteArray longLine = QByteArray("word ").repeated(60);
        Shown v("=~=+", "a\n" + longLine + "\nz\n", "a\nshort\nz\n" + longLine + "\n");
        QVERIFY(v.scene.maximumColumn() > 0);
        v.scene.setWraps(true);
        QCOMPARE(v.scene.maximumColumn(), 0);
        const qsizetype lines = v.layout.linesAt(1);
        QVERIFY(lines >= 4 && lines == v.layout.linesAt(3));
        QCOMPARE(v.layout.linesAt(2), 1);
        QCOMPARE(v.layout.yOf(2, {}), qint64(lines + 1) * v.layout.rowHeight());

        // The caret goes through the wrapped line part by part and keeps its place on the screen.
        TextPane &pane = v.left;
        v.put(Side::Left, {0, 1});
        for (qsizetype part = 0; part < lines; ++part) {
            QTest::keyClick(&pane, Qt::Key_Down);
            QCOMPARE(v.scene.caret().position.row, 1);
            const LineRenderer::Place place = v.scene.renderer(Side::Left).placeOf(1, v.scene.caret().position.unit);
            QCOMPARE(place.part, part);
            QVERIFY(std::abs(place.x - v.scene.renderer(Side::Left).cellWidth()) < 1);
        }
        QTest::keyClick(&pane, Qt::Key_Down);
        QCOMPARE(v.caret(), word("2:1"));

        // A click finds the character that it hits.
        const QPoint inThird(pane.textArea().left() + 8, (1 + 2) * v.layout.rowHeight() + 3);
        QTest::mouseClick(&pane, Qt::LeftButton, {}, inThird);
        const LineRenderer::Place hit = v.scene.renderer(Side::Left).placeOf(1, v.scene.caret().position.unit);
        QCOMPARE(hit.part, 2);
    }

    void neverWrapsTheLongestLines()
    {
        const QByteArray longest(3'000'000, 'x');
        Shown v("==", longest + "\nshort\n", longest + "\nshort\n");
        v.scene.setWraps(true);
        QCOMPARE(v.layout.linesAt(0), 1);
        QVERIFY(v.scene.maximumColumn() > 2'999'000);
        v.put(Side::Left, {0, 2'000'000});
        v.scene.showCaret();
        QVERIFY(v.scene.column() < 2'000'000 && v.scene.column() > 1'999'000);
        QCOMPARE(v.scene.scrolledX(v.scene.document()->cell(1, Side::Left)), 0);
    }

    void opensFoldedRowsByMouseAndKey()
    {
        Shown v(everyNth(100, 50));
        v.scene.setFilter(RowFilter::Differences);
        QCOMPARE(v.layout.count(), 9);
        TextPane &pane = v.left;
        pane.selectAll();
        QCOMPARE(v.scene.selectedText().count(u'x'), 100); // what is folded is selected, too
        QTest::mouseClick(&pane, Qt::LeftButton, {}, QPoint(200, v.layout.rowHeight() / 2));
        QCOMPARE(v.layout.count(), 47 + 7 + 1);
        QTest::keyClick(&pane, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(&pane, Qt::Key_Home);
        QCOMPARE(v.scene.caret().position.row, 54);
        QVERIFY(pane.describeCurrentRow().contains(word("46")));
        QTest::keyClick(&pane, Qt::Key_Left);
        QCOMPARE(v.caret(), word("53:1"));
        QTest::keyClick(&pane, Qt::Key_Right);
        QTest::keyClick(&pane, Qt::Key_Return);
        QCOMPARE(v.layout.count(), 100);
        QCOMPARE(v.caret(), word("54:0"));

        // A line that is gone to is shown.
        v.scene.setFilter(RowFilter::All);
        v.scene.setFilter(RowFilter::Differences);
        QCOMPARE(v.layout.count(), 9);
        v.scene.goToLine(Side::Right, 10);
        QVERIFY(v.layout.isShown(9));
        QCOMPARE(v.caret(), word("9:0"));
    }

    /// What both sides have outside their changes is the same text.
    void findsTheWordsThatDifferInLongLines()
    {
        QRandomGenerator random(7);
        const auto without = [](QString text, const QList<CharRange> &ranges) {
            for (qsizetype k = ranges.size(); k-- > 0;)
                text.remove(ranges.at(k).start, ranges.at(k).length);
            return text;
        };
        const auto text = [&random] {
            QString made;
            for (int k = random.bounded(30); k > 0; --k)
                made += word("one;two(é😀 ").mid(random.bounded(9), random.bounded(1, 4));
            return made;
        };
        for (int round = 0; round < 2000; ++round) {
            const QString left = text();
            const QString right = text();
            const WordChanges changes = wordChanges(left, right);
            QCOMPARE(without(left, changes.left), without(right, changes.right));
            const QList<qint32> starts = changeStarts(changes.left, changes.right);
            QVERIFY(std::is_sorted(starts.begin(), starts.end()));
            for (const CharRange &range : changes.left)
                QVERIFY(starts.contains(range.start));
        }
    }

    void stepsWithinALineLongerThanTheView()
    {
        QByteArray line;
        for (int k = 0; k < 5000; ++k)
            line += "v" + QByteArray::number(k) + "=f(" + QByteArray::number(k * 7) + ");";
        QByteArray other = line;
        QList<qsizetype> places;
        for (const char *name : {"v100=", "v2500=", "v2501=", "v4900="}) {
            places.append(other.indexOf(name));
            other[places.last()] = 'w';
        }
        Shown v("=~=~", "a\n" + line + "\nz\n1\n", "a\n" + other + "\nz\n2\n");
        v.scene.step(true);
        QTRY_VERIFY(v.scene.column() > 0); // the first change, as soon as it is known
        QList<qsizetype> reached;
        while (v.scene.caret().position.row == 1 && reached.size() < 9) {
            v.scene.step(true);
            reached.append(v.scene.caret().position.unit);
        }
        QCOMPARE(reached,
                 (QList<qsizetype>{places.at(1), places.at(3), 0})); // one of a pair in sight, then the next line
        QCOMPARE(v.scene.caret().position.row, 3);
        QVERIFY(!v.scene.canStep(true));
        v.put(Side::Left, {1, places.at(3)});
        v.scene.showCaret();
        v.scene.step(false);
        QCOMPARE(v.scene.caret().position.unit, places.at(2));
    }

    void stepsFromTheCaret()
    {
        Shown v("=~=~=~=", "1\n2\n3\n4\n5\n6\n7\n", "1\na\n3\nb\n5\nc\n7\n");
        const auto steps = [&v](qsizetype row) {
            if (row >= 0)
                v.put(Side::Left, {row, 0});
            return word("%1<%2>%3").arg(v.scene.previousBlock()).arg(v.scene.currentBlock()).arg(v.scene.nextBlock());
        };
        QCOMPARE(steps(-1), word("-1<-1>0"));
        QCOMPARE(steps(4), word("1<-1>2")); // as after the difference there was merged
        v.scene.goToBlock(2);
        QCOMPARE(steps(-1), word("1<2>-1"));
        QCOMPARE(steps(2), word("0<2>1")); // away from the current difference
        QCOMPARE(steps(6), word("2<2>-1"));
    }
};

VELMORA_TEST(DiffViewTest)
#include "diff_view_test.moc"
