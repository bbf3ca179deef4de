#include "core/hidden_characters.h"
#include "row_picture.h"
#include "session/diff_colours.h"
#include "support/test_main.h"
#include "text/view/diff_pane.h"
#include "text/view/diff_view.h"
#include "text/view/intra_line_changes.h"
#include "text/view/line_detail.h"
#include "text/view/overview_strip.h"
#include "text/view/word_changes.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace velmora;
using velmora::test::rowsOf;

namespace {

/// Counts how often lines are asked for.
class CountingSource final : public LineSource {
public:
    explicit CountingSource(TextLines lines) : m_lines(std::move(lines)) {}

    [[nodiscard]] qsizetype count() const override { return m_lines.count(); }
    [[nodiscard]] std::string_view bytes(qsizetype line) const override
    {
        ++fetched;
        return m_lines.line(line);
    }

    mutable std::atomic<qint64> fetched = 0;

private:
    TextLines m_lines;
};

std::shared_ptr<const LineSource> sourceOf(const QByteArray &text)
{
    return std::make_shared<TextLinesSource>(TextLines::split(text));
}

std::shared_ptr<const DiffDocument> documentOf(const QByteArray &picture, const QByteArray &left,
                                               const QByteArray &right)
{
    return std::make_shared<DiffDocument>(rowsOf(picture), sourceOf(left), sourceOf(right));
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
        const auto text = [](TextPosition at) { return QStringLiteral("%1:%2").arg(at.row).arg(at.unit); };
        const TextCaret &now = scene.caret();
        return now.hasSelection() ? text(now.anchor) + u'>' + text(now.position) : text(now.position);
    }
    [[nodiscard]] RowRange inSight() const { return layout.inSight(scene.top(), scene.viewportHeight()); }

    DiffView view;
    DiffScene &scene = view.scene();
    const RowLayout &layout = scene.layout();
    DiffPane &left = view.pane(Side::Left);
    DiffPane &right = view.pane(Side::Right);
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
        auto left = std::make_shared<CountingSource>(TextLines::split(text));
        auto right = std::make_shared<CountingSource>(TextLines::split(text));
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
        QByteArray picture(100'000, '=');
        picture[50'000] = '~';
        const QByteArray text = QByteArray("x\n").repeated(100'000);
        Shown v(picture, text, text);
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
        QByteArray picture(1000, '=');
        for (int row = 0; row < 1000; row += 10)
            picture[row] = '~';
        const QByteArray text = QByteArray("x\n").repeated(1000);
        Shown v(picture, text, text);
        v.scene.goToBlock(50);
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
        const QByteArray left = "alpha beta\n\tx\n" + QStringLiteral("e\u0301😀z\n").toUtf8();
        Shown v("==+=", left, "alpha beta\n\tx\nnew\nend\n");
        QWidget &pane = v.left;
        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(&pane, key, modifiers);
            return v.caret();
        };
        QCOMPARE(press(Qt::Key_Right, Qt::ControlModifier), QStringLiteral("0:6"));
        QCOMPARE(press(Qt::Key_End), QStringLiteral("0:10"));
        QCOMPARE(press(Qt::Key_Right), QStringLiteral("1:0"));
        QCOMPARE(press(Qt::Key_Left), QStringLiteral("0:10"));
        QCOMPARE(press(Qt::Key_Down), QStringLiteral("1:2"));
        QCOMPARE(press(Qt::Key_Down), QStringLiteral("2:0")); // only the right side has a line here
        QCOMPARE(press(Qt::Key_Up), QStringLiteral("1:2"));
        QCOMPARE(press(Qt::Key_Up), QStringLiteral("0:10")); // the place that it came from
        QCOMPARE(press(Qt::Key_End, Qt::ControlModifier), QStringLiteral("3:5"));
        QCOMPARE(press(Qt::Key_Left), QStringLiteral("3:4"));
        QCOMPARE(press(Qt::Key_Left), QStringLiteral("3:2")); // a surrogate pair is one step
        QCOMPARE(press(Qt::Key_Left), QStringLiteral("3:0")); // so is a letter with its accent
        QCOMPARE(press(Qt::Key_Home, Qt::ControlModifier), QStringLiteral("0:0"));
        QCOMPARE(press(Qt::Key_Left), QStringLiteral("0:0"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ShiftModifier), QStringLiteral("0:0>3:0"));
    }

    void copiesWhatIsSelected()
    {
        Shown v("=-+~", "first line\nonly left\nchanged\n", "first line\nonly right\nchanges\n");
        DiffPane &left = v.left;
        left.selectAll();
        left.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("first line\nonly left\nchanged"));
        DiffPane &right = v.right;
        right.selectAll();
        right.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("first line\nonly right\nchanges"));
        v.scene.setCaret({Side::Left, {3, 3}, {0, 6}}); // backwards
        left.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("line\nonly left\ncha"));
        v.scene.setFilter(RowFilter::Identical);
        left.selectAll();
        left.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("first line"));
    }

    void selectsByMouse()
    {
        Shown v("==", "int some_name = 3;\nnext\n", "a\nb\n");
        imageOf(v.view);
        DiffPane &pane = v.left;
        const int height = v.layout.rowHeight();
        LineRenderer &renderer = v.scene.renderer(Side::Left);
        const auto at = [&](qsizetype row, qsizetype unit) {
            return QPoint(pane.textArea().left() + 5 + int(renderer.xOf(row, unit)) + 1,
                          int(row) * height + height / 2);
        };
        QTest::mouseDClick(&pane, Qt::LeftButton, {}, at(0, 7));
        QCOMPARE(v.scene.selectedText(), QStringLiteral("some_name"));
        QTest::mousePress(&pane, Qt::LeftButton, {}, at(0, 7)); // the third click
        QCOMPARE(v.scene.selectedText(), QStringLiteral("int some_name = 3;"));
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, at(0, 7));
        QTest::mouseClick(&pane, Qt::LeftButton, {}, at(1, 0)); // a press on the selection would drag it
        QTest::mousePress(&pane, Qt::LeftButton, {}, at(0, 4));
        QTest::mouseMove(&pane, at(1, 2));
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, at(1, 2));
        QCOMPARE(v.scene.selectedText(), QStringLiteral("some_name = 3;\nne"));
        QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, at(0, 8));
        QCOMPARE(v.scene.selectedText(), QStringLiteral("some"));
    }

    void aClickIntoADifferenceMakesItTheCurrentOne()
    {
        Shown v("=~==~~=", "1\n2\n3\n4\n5\n6\n7\n", "1\na\n3\n4\nb\nc\n7\n");
        imageOf(v.view);
        QSignalSpy changes(&v.scene, &DiffScene::currentBlockChanged);
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
        QCOMPARE(right->text(QAccessible::Value), QStringLiteral("Line 2, added: two"));
        QCOMPARE(left->text(QAccessible::Value), QStringLiteral("No line here, added"));
        v.scene.goToBlock(0);
        QCOMPARE(right->text(QAccessible::Description),
                 QStringLiteral("Difference block 1 of 1, added: no line on the left, right line 2"));

        QAccessibleTextInterface *text = right->textInterface();
        QVERIFY(text);
        QCOMPARE(text->text(0, text->characterCount()), QStringLiteral("two"));
        text->setSelection(0, 1, 3);
        QCOMPARE(v.scene.selectedText(), QStringLiteral("wo"));
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
        const QByteArray body = QStringLiteral("ä€😀").repeated(100'000).toUtf8();
        const auto longRow = documentOf("~", body + "12" + body, body + "3" + body);
        const qint32 before = 4 * 100'000;
        const RowChanges large = findRowChanges(*longRow, 0);
        QCOMPARE(large.left, (QList<CharRange>{{before, 2}}));
        QCOMPARE(large.right, (QList<CharRange>{{before, 1}}));

        // Characters that share bytes are not cut apart.
        const auto cut =
            documentOf("~", body + QStringLiteral("é").toUtf8() + body, body + QStringLiteral("è").toUtf8() + body);
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
        const auto taken = [](QString text) {
            const QString before = text;
            QStringList list;
            const auto hidden = takeHiddenCharacters(text);
            for (const HiddenCharacter &character : hidden) {
                list.append(QStringLiteral("%1:%2").arg(QString::number(character.unit),
                                                        hiddenCharacterCode(character.character)));
            }
            if (text.size() != before.size())
                list.append(QStringLiteral("length changed"));
            return list.join(u' ');
        };
        QCOMPARE(taken(QStringLiteral("a\tb 漢字\u3000é 😀 \u2764\ufe0f عربي")), QString());
        QCOMPARE(taken(QStringLiteral("\x01\r\x7f\u0085\u009c")), QStringLiteral("0:SOH 1:CR 2:DEL 3:NEL 4:9C"));
        QCOMPARE(taken(QStringLiteral("x\u202ey\u2066\u2028\u00a0\u202f\u2009\u00ad\ufeff")),
                 QStringLiteral("1:RLO 3:LRI 4:LS 5:NBSP 6:NNBS 7:2009 8:SHY 9:BOM"));
        QCOMPARE(taken(QStringLiteral("a\U000E0041\u200d\u3164")), QStringLiteral("1:E0041 3:ZWJ 4:3164"));
    }

    void boxesLeaveTheOrderOfTheirNeighboursAlone()
    {
        const QString tricky = QStringLiteral("ab\u202ecd\u2066ef\U000E0041gh");
        Shown v("=", tricky.toUtf8(), tricky.toUtf8());
        LineRenderer &renderer = v.scene.renderer(Side::Left);
        const qreal cell = renderer.cellWidth();
        // Each character stands on the grid behind the one before it, boxes as wide as they say.
        qint64 column = 0;
        for (qsizetype unit = 0; unit < tricky.size(); ++unit) {
            if (tricky.at(unit).isLowSurrogate())
                continue;
            const qreal x = renderer.xOf(0, unit);
            QVERIFY2(std::abs(x - qreal(column) * cell) < 1, qPrintable(QStringLiteral("%1: %2").arg(unit).arg(x)));
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
        DiffPane &pane = v.left;
        v.put(Side::Left, {0, 1});
        for (qsizetype part = 0; part < lines; ++part) {
            QTest::keyClick(&pane, Qt::Key_Down);
            QCOMPARE(v.scene.caret().position.row, 1);
            const LineRenderer::Place place = v.scene.renderer(Side::Left).placeOf(1, v.scene.caret().position.unit);
            QCOMPARE(place.part, part);
            QVERIFY(std::abs(place.x - v.scene.renderer(Side::Left).cellWidth()) < 1);
        }
        QTest::keyClick(&pane, Qt::Key_Down);
        QCOMPARE(v.caret(), QStringLiteral("2:1"));

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
        QCOMPARE(v.scene.scrolledX(v.scene.document()->cell(1, Side::Left), Side::Left), 0);
    }

    void opensFoldedRowsByMouseAndKey()
    {
        QByteArray picture(100, '=');
        picture[50] = '~';
        const QByteArray text = QByteArray("x\n").repeated(100);
        Shown v(picture, text, text);
        v.scene.setFilter(RowFilter::Differences);
        QCOMPARE(v.layout.count(), 9);
        DiffPane &pane = v.left;
        pane.selectAll();
        QCOMPARE(v.scene.selectedText().count(u'x'), 100); // what is folded is selected, too
        QTest::mouseClick(&pane, Qt::LeftButton, {}, QPoint(200, v.layout.rowHeight() / 2));
        QCOMPARE(v.layout.count(), 47 + 7 + 1);
        QTest::keyClick(&pane, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(&pane, Qt::Key_Home);
        QCOMPARE(v.scene.caret().position.row, 54);
        QVERIFY(pane.describeCurrentRow().contains(QStringLiteral("46")));
        QTest::keyClick(&pane, Qt::Key_Left);
        QCOMPARE(v.caret(), QStringLiteral("53:1"));
        QTest::keyClick(&pane, Qt::Key_Right);
        QTest::keyClick(&pane, Qt::Key_Return);
        QCOMPARE(v.layout.count(), 100);
        QCOMPARE(v.caret(), QStringLiteral("54:0"));

        // A line that is gone to is shown.
        v.scene.setFilter(RowFilter::All);
        v.scene.setFilter(RowFilter::Differences);
        QCOMPARE(v.layout.count(), 9);
        v.scene.goToLine(Side::Right, 10);
        QVERIFY(v.layout.isShown(9));
        QCOMPARE(v.caret(), QStringLiteral("9:0"));
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
                made += QStringLiteral("one;two(é😀 ").mid(random.bounded(9), random.bounded(1, 4));
            return made;
        };
        for (int round = 0; round < 2000; ++round) {
            const QString left = text();
            const QString right = text();
            const WordChanges changes = wordChanges(left, right);
            QCOMPARE(without(left, changes.left), without(right, changes.right));
            const QList<qint32> starts = changeStarts({changes.left, changes.right}, Side::Left);
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
        QCOMPARE(v.scene.nextBlock(), 0);
        v.put(Side::Left, {4, 0}); // as after the difference there was merged
        QCOMPARE(v.scene.currentBlock(), -1);
        QCOMPARE(v.scene.nextBlock(), 2);
        QCOMPARE(v.scene.previousBlock(), 1);
        v.scene.goToBlock(2);
        QCOMPARE(v.scene.nextBlock(), -1);
        QCOMPARE(v.scene.previousBlock(), 1);
        v.put(Side::Left, {2, 0}); // away from the current difference
        QCOMPARE(v.scene.nextBlock(), 1);
        QCOMPARE(v.scene.previousBlock(), 0);
        v.put(Side::Left, {6, 0});
        QCOMPARE(v.scene.nextBlock(), -1);
    }
};

VELMORA_TEST(DiffViewTest)
#include "diff_view_test.moc"
