#include "session/diff_colours.h"
#include "support/test_main.h"
#include "text/view/diff_pane.h"
#include "text/view/diff_view.h"
#include "text/view/hidden_characters.h"
#include "text/view/intra_line_changes.h"
#include "text/view/line_detail.h"
#include "text/view/overview_strip.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace velmora;

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

/// Rows pair line k with line k: '=' equal, '~' modified; '+' and '-' have one line.
std::shared_ptr<const DiffDocument> documentOf(const QString &picture, const QByteArray &left, const QByteArray &right)
{
    QList<AlignedRow> rows;
    qint32 leftLine = 0;
    qint32 rightLine = 0;
    for (const QChar sign : picture) {
        if (sign == u'+')
            rows.append({Added, -1, ++rightLine});
        else if (sign == u'-')
            rows.append({Removed, ++leftLine, -1});
        else
            rows.append({sign == u'~' ? Modified : Equal, ++leftLine, ++rightLine});
    }
    return std::make_shared<DiffDocument>(std::move(rows), sourceOf(left), sourceOf(right));
}

/// Gives a view its size and lays it out.
void show(DiffView &view, int width, int height)
{
    view.resize(width, height);
    view.show();
}

QImage imageOf(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    widget.render(&image);
    return image;
}

QString caretOf(DiffView &view)
{
    const TextCaret &caret = view.scene().caret();
    const auto text = [](TextPosition at) { return QStringLiteral("%1:%2").arg(at.row).arg(at.unit); };
    return caret.hasSelection() ? text(caret.anchor) + u'>' + text(caret.position) : text(caret.position);
}

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
        DiffView view;
        show(view, 900, 600);
        view.scene().setDocument(std::make_shared<DiffDocument>(rows, left, right));
        const auto fetchedFor = [&](auto change) {
            change();
            left->fetched = 0;
            right->fetched = 0;
            imageOf(view);
            return left->fetched + right->fetched;
        };
        // A line is asked for to draw it, to see whether an equal row is the same text, and for its changed characters.
        const qint64 inSight = 2 * (view.scene().layout().rowsPerPage(600) + 1);
        const qint64 allowed = 4 * inSight;
        const qint64 first = fetchedFor([] {});
        QVERIFY2(first >= inSight / 2 && first <= allowed, qPrintable(QString::number(first)));
        QVERIFY(fetchedFor([&] { view.scene().scrollToTop(500'000); }) <= allowed);
        QVERIFY(fetchedFor([&] { view.scene().setFilter(RowFilter::Differences); }) <= allowed);
        QVERIFY(fetchedFor([&] { view.scene().goToBlock(99'999); }) <= allowed);
    }

    void showsAnyPartOfALongLineAsIfItWereShort()
    {
        constexpr qsizetype offset = 512 * 4000;
        QByteArray longLine;
        for (int k = 0; longLine.size() < 4'000'000; ++k)
            longLine += "\"key" + QByteArray::number(k) + "\":" + QByteArray::number(k * 7919) + ',';
        const QByteArray part = longLine.mid(offset, 400);
        DiffView longView;
        show(longView, 900, 300);
        DiffView shortView;
        show(shortView, 900, 300);
        longView.scene().setDocument(documentOf(QStringLiteral("="), longLine, longLine));
        shortView.scene().setDocument(documentOf(QStringLiteral("="), part, part));
        imageOf(longView);
        longView.scene().scrollTo({}, offset);
        QCOMPARE(longView.scene().column(), offset);
        QCOMPARE(imageOf(longView.pane(Side::Right)), imageOf(shortView.pane(Side::Right)));

        // Places are found on it as they are on the short one.
        LineRenderer &renderer = longView.scene().renderer(Side::Left);
        const qreal x = renderer.xOf(0, offset + 100);
        QCOMPARE(renderer.unitAt(0, x), offset + 100);
        QCOMPARE(x - renderer.xOf(0, offset), shortView.scene().renderer(Side::Left).xOf(0, 100));
        QCOMPARE(renderer.length(0), longLine.size());
    }

    // Scrolling -------------------------------------------------------------------------------------------------------

    void bothPanesScrollTogether()
    {
        DiffView view;
        show(view, 900, 300);
        const QByteArray wide = QByteArray(500, 'x') + '\n';
        view.scene().setDocument(documentOf(QString(100, u'='), wide.repeated(100), wide.repeated(100)));
        auto *vertical = view.findChildren<QScrollBar *>().at(0);
        auto *horizontal = view.findChildren<QScrollBar *>().at(1);
        if (vertical->orientation() == Qt::Horizontal)
            std::swap(vertical, horizontal);
        vertical->setValue(40);
        horizontal->setValue(60);
        QCOMPARE(view.scene().top().index, 40);
        QCOMPARE(view.scene().column(), 60);
        view.scene().scrollTo({1000, 0}, 100'000);
        QCOMPARE(vertical->value(), vertical->maximum());
        QCOMPARE(horizontal->value(), horizontal->maximum());

        const auto wheel = [&view](QPoint angle, Qt::KeyboardModifiers modifiers = {}) {
            QWheelEvent event(QPointF(50, 50), view.mapToGlobal(QPointF(50, 50)), {}, angle, Qt::NoButton, modifiers,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&view, &event);
        };
        view.scene().scrollTo({}, 0);
        wheel({0, -120});
        QCOMPARE(view.scene().top().index, 3);
        for (int k = 0; k < 4; ++k)
            wheel({0, -30}); // a finer wheel comes as far
        QCOMPARE(view.scene().top().index, 6);
        wheel({0, -120}, Qt::ShiftModifier);
        QCOMPARE(view.scene().top().index, 6);
        QVERIFY(view.scene().column() > 0);
        const qreal size = view.fontPointSize();
        wheel({0, 120}, Qt::ControlModifier);
        QCOMPARE(view.fontPointSize(), size + 1);
    }

    void theOverviewShowsAndLeadsToEveryPlace()
    {
        DiffView view;
        show(view, 900, 400);
        QString picture(100'000, u'=');
        picture[50'000] = u'~';
        const QByteArray text = QByteArray("x\n").repeated(100'000);
        view.scene().setDocument(documentOf(picture, text, text));
        auto *strip = view.findChild<OverviewStrip *>();
        const QImage image = imageOf(*strip);
        int marked = -1;
        for (int y = 20; y < image.height() && marked < 0; ++y) {
            if (image.pixel(5, y) != image.pixel(5, image.height() - 1))
                marked = y;
        }
        QVERIFY(std::abs(marked - image.height() / 2) <= 2); // one row of a hundred thousand is seen
        QTest::mouseClick(strip, Qt::LeftButton, {}, QPoint(10, marked));
        const RowRange inSight = view.scene().layout().inSight(view.scene().top(), view.scene().viewportHeight());
        QVERIFY(std::abs(inSight.first - 50'000) < 1000);
    }

    void keepsTheCaretInSightWhenTheFilterChanges()
    {
        DiffView view;
        show(view, 900, 300);
        QString picture(1000, u'=');
        for (int row = 0; row < 1000; row += 10)
            picture[row] = u'~';
        const QByteArray text = QByteArray("x\n").repeated(1000);
        view.scene().setDocument(documentOf(picture, text, text));
        view.scene().goToBlock(50);
        view.scene().setFilter(RowFilter::Differences);
        const RowLayout &layout = view.scene().layout();
        const auto caretIsInSight = [&] {
            const RowRange inSight = layout.inSight(view.scene().top(), view.scene().viewportHeight());
            return inSight.contains(layout.indexOf(view.scene().caret().position.row));
        };
        QCOMPARE(view.scene().caret().position.row, 500);
        QVERIFY(caretIsInSight());
        view.scene().setFilter(RowFilter::Identical);
        QCOMPARE(view.scene().caret().position.row, 501);
        QVERIFY(caretIsInSight());
        view.scene().setFilter(RowFilter::All);
        QVERIFY(caretIsInSight());
    }

    // Caret and selection ---------------------------------------------------------------------------------------------

    void movesTheCaretByKeys()
    {
        DiffView view;
        show(view, 900, 300);
        const QByteArray left = "alpha beta\n\tx\n" + QStringLiteral("e\u0301😀z\n").toUtf8();
        view.scene().setDocument(documentOf(QStringLiteral("==+="), left, "alpha beta\n\tx\nnew\nend\n"));
        QWidget &pane = view.pane(Side::Left);
        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(&pane, key, modifiers);
            return caretOf(view);
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
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(documentOf(QStringLiteral("=-+~"), "first line\nonly left\nchanged\n",
                                            "first line\nonly right\nchanges\n"));
        DiffPane &left = view.pane(Side::Left);
        left.selectAll();
        left.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("first line\nonly left\nchanged"));
        DiffPane &right = view.pane(Side::Right);
        right.selectAll();
        right.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("first line\nonly right\nchanges"));
        view.scene().setCaret({Side::Left, {3, 3}, {0, 6}}); // backwards
        left.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("line\nonly left\ncha"));
        view.scene().setFilter(RowFilter::Identical);
        left.selectAll();
        left.copy();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("first line"));
    }

    void selectsByMouse()
    {
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(documentOf(QStringLiteral("=="), "int some_name = 3;\nnext\n", "a\nb\n"));
        imageOf(view);
        DiffPane &pane = view.pane(Side::Left);
        const int height = view.scene().layout().rowHeight();
        LineRenderer &renderer = view.scene().renderer(Side::Left);
        const auto at = [&](qsizetype row, qsizetype unit) {
            return QPoint(pane.textArea().left() + 5 + int(renderer.xOf(row, unit)) + 1,
                          int(row) * height + height / 2);
        };
        QTest::mouseDClick(&pane, Qt::LeftButton, {}, at(0, 7));
        QCOMPARE(view.scene().selectedText(), QStringLiteral("some_name"));
        QTest::mousePress(&pane, Qt::LeftButton, {}, at(0, 7)); // the third click
        QCOMPARE(view.scene().selectedText(), QStringLiteral("int some_name = 3;"));
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, at(0, 7));
        QTest::mouseClick(&pane, Qt::LeftButton, {}, at(1, 0)); // a press on the selection would drag it
        QTest::mousePress(&pane, Qt::LeftButton, {}, at(0, 4));
        QTest::mouseMove(&pane, at(1, 2));
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, at(1, 2));
        QCOMPARE(view.scene().selectedText(), QStringLiteral("some_name = 3;\nne"));
        QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, at(0, 8));
        QCOMPARE(view.scene().selectedText(), QStringLiteral("some"));
    }

    void aClickIntoADifferenceMakesItTheCurrentOne()
    {
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(
            documentOf(QStringLiteral("=~==~~="), "1\n2\n3\n4\n5\n6\n7\n", "1\na\n3\n4\nb\nc\n7\n"));
        imageOf(view);
        QSignalSpy changes(&view.scene(), &DiffScene::currentBlockChanged);
        const int height = view.scene().layout().rowHeight();
        QTest::mouseClick(&view.pane(Side::Right), Qt::LeftButton, {}, QPoint(200, 5 * height + 2));
        QCOMPARE(view.scene().currentBlock(), 1);
        QTest::mouseClick(&view.pane(Side::Right), Qt::LeftButton, {}, QPoint(200, 2 * height + 2));
        QCOMPARE(view.scene().currentBlock(), 1);
        QCOMPARE(changes.size(), 1);
    }

    void describesTheCurrentLineToAssistiveTools()
    {
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(documentOf(QStringLiteral("=+"), "one\n", "one\ntwo\n"));
        QAccessibleInterface *left = QAccessible::queryAccessibleInterface(&view.pane(Side::Left));
        QAccessibleInterface *right = QAccessible::queryAccessibleInterface(&view.pane(Side::Right));
        QVERIFY(left && right);
        QVERIFY(left->text(QAccessible::Name) != right->text(QAccessible::Name));
        view.scene().setCaret({Side::Right, {1, 0}, {1, 0}});
        QCOMPARE(right->text(QAccessible::Value), QStringLiteral("Line 2, added: two"));
        QCOMPARE(left->text(QAccessible::Value), QStringLiteral("No line here, added"));
        view.scene().goToBlock(0);
        QCOMPARE(right->text(QAccessible::Description),
                 QStringLiteral("Difference 1 of 1, added: no line on the left, right line 2"));

        QAccessibleTextInterface *text = right->textInterface();
        QVERIFY(text);
        QCOMPARE(text->text(0, text->characterCount()), QStringLiteral("two"));
        text->setSelection(0, 1, 3);
        QCOMPARE(view.scene().selectedText(), QStringLiteral("wo"));
        QCOMPARE(text->selectionCount(), 1);
        QCOMPARE(text->cursorPosition(), 3);
        text->setCursorPosition(1);
        QVERIFY(!view.scene().caret().hasSelection());
        QCOMPARE(text->offsetAtPoint(text->characterRect(2).center()), 2);
        QVERIFY(right->state().readOnly);
    }

    // Changed characters ----------------------------------------------------------------------------------------------

    void findsChangedCharactersOfShortAndLongRows()
    {
        const auto document = documentOf(QStringLiteral("~"), "int value = 1;\n", "int value = 22;\n");
        const RowChanges small = findRowChanges(*document, 0);
        QCOMPARE(small.left, (QList<CharRange>{{12, 1}}));
        QCOMPARE(small.right, (QList<CharRange>{{12, 2}}));

        // Too long to match character by character: what both ends have in common is no change.
        const QByteArray body = QStringLiteral("ä€😀").repeated(100'000).toUtf8();
        const auto longRow = documentOf(QStringLiteral("~"), body + "12" + body, body + "3" + body);
        const qint32 before = 4 * 100'000;
        const RowChanges large = findRowChanges(*longRow, 0);
        QCOMPARE(large.left, (QList<CharRange>{{before, 2}}));
        QCOMPARE(large.right, (QList<CharRange>{{before, 1}}));

        // Characters that share bytes are not cut apart.
        const auto cut = documentOf(QStringLiteral("~"), body + QStringLiteral("é").toUtf8() + body,
                                    body + QStringLiteral("è").toUtf8() + body);
        QCOMPARE(findRowChanges(*cut, 0).left, (QList<CharRange>{{before, 1}}));
    }

    void goesToTheFirstChangedCharacterOfADistantPlace()
    {
        const QByteArray before(3'000'000, 'x');
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(documentOf(QStringLiteral("=~"), "a\n" + before + "old" + before + '\n',
                                            "a\n" + before + "new" + before + '\n'));
        const auto changeIsInSight = [&view] {
            const qint64 column = view.scene().column();
            return column < 3'000'000 && column + view.scene().columnsPerPage() > 3'000'003;
        };
        view.scene().goToBlock(0);
        QTRY_VERIFY(changeIsInSight());

        // A person who scrolls meanwhile is left alone.
        view.scene().setDocument(documentOf(QStringLiteral("=~"), "a\n" + before + "old" + before + '\n',
                                            "a\n" + before + "new" + before + '\n'));
        QSignalSpy arrived(&view.scene().changes(), &IntraLineChanges::arrived);
        view.scene().goToBlock(0);
        view.scene().scrollTo({}, 77);
        QVERIFY(arrived.wait());
        QCOMPARE(view.scene().column(), 77);
    }

    void worksOutLongRowsOnAWorker()
    {
        QByteArray left;
        QByteArray right;
        for (int k = 0; k < 400; ++k) {
            left += "word" + QByteArray::number(k) + ' ';
            right += "word" + QByteArray::number(k % 7 == 0 ? k + 1 : k) + ' ';
        }
        const auto document = documentOf(QStringLiteral("~~"), left + '\n' + "a1\n", right + '\n' + "a2\n");
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
        changes.setDocument(documentOf(QStringLiteral("~"), "x\n", "y\n"));
        QTest::qWait(0);
        changes.beginFrame(0, 0);
        QCOMPARE(changes.changesOf(0)->left, (QList<CharRange>{{0, 1}}));
    }

    void showsTheCurrentLinesOneAboveTheOther()
    {
        DiffView view;
        show(view, 900, 300);
        LineDetail detail(view.scene());
        detail.resize(800, detail.height());
        view.scene().setDocument(documentOf(QStringLiteral("=~+"), "same\nan old line\n", "same\na new line\nmore\n"));
        const int height = view.scene().layout().rowHeight();
        const auto backgrounds = [&](qsizetype row) {
            view.scene().setCaret({Side::Left, {row, 0}, {row, 0}});
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
        DiffView view;
        show(view, 900, 300);
        const QString tricky = QStringLiteral("ab\u202ecd\u2066ef\U000E0041gh");
        view.scene().setDocument(documentOf(QStringLiteral("="), tricky.toUtf8(), tricky.toUtf8()));
        LineRenderer &renderer = view.scene().renderer(Side::Left);
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
        view.pane(Side::Left).selectAll();
        QCOMPARE(view.scene().selectedText(), tricky);
    }

    // Word wrap and folded rows ---------------------------------------------------------------------------------------

    void wrapsLongLinesBesideTheOtherSide()
    {
        DiffView view;
        show(view, 900, 300);
        const QByteArray longLine = QByteArray("word ").repeated(60);
        view.scene().setDocument(
            documentOf(QStringLiteral("=~=+"), "a\n" + longLine + "\nz\n", "a\nshort\nz\n" + longLine + "\n"));
        QVERIFY(view.scene().maximumColumn() > 0);
        view.scene().setWraps(true);
        QCOMPARE(view.scene().maximumColumn(), 0);
        const RowLayout &layout = view.scene().layout();
        const qsizetype lines = layout.linesAt(1);
        QVERIFY(lines >= 4 && lines == layout.linesAt(3));
        QCOMPARE(layout.linesAt(2), 1);
        QCOMPARE(layout.yOf(2, {}), qint64(lines + 1) * layout.rowHeight());

        // The caret goes through the wrapped line part by part and keeps its place on the screen.
        DiffPane &pane = view.pane(Side::Left);
        view.scene().setCaret({Side::Left, {0, 1}, {0, 1}});
        for (qsizetype part = 0; part < lines; ++part) {
            QTest::keyClick(&pane, Qt::Key_Down);
            QCOMPARE(view.scene().caret().position.row, 1);
            const LineRenderer::Place place =
                view.scene().renderer(Side::Left).placeOf(1, view.scene().caret().position.unit);
            QCOMPARE(place.part, part);
            QVERIFY(std::abs(place.x - view.scene().renderer(Side::Left).cellWidth()) < 1);
        }
        QTest::keyClick(&pane, Qt::Key_Down);
        QCOMPARE(caretOf(view), QStringLiteral("2:1"));

        // A click finds the character that it hits.
        const QPoint inThird(pane.textArea().left() + 8, (1 + 2) * layout.rowHeight() + 3);
        QTest::mouseClick(&pane, Qt::LeftButton, {}, inThird);
        const LineRenderer::Place hit =
            view.scene().renderer(Side::Left).placeOf(1, view.scene().caret().position.unit);
        QCOMPARE(hit.part, 2);
    }

    void neverWrapsTheLongestLines()
    {
        DiffView view;
        show(view, 900, 300);
        const QByteArray longest(3'000'000, 'x');
        view.scene().setDocument(documentOf(QStringLiteral("=="), longest + "\nshort\n", longest + "\nshort\n"));
        view.scene().setWraps(true);
        QCOMPARE(view.scene().layout().linesAt(0), 1);
        QVERIFY(view.scene().maximumColumn() > 2'999'000);
        view.scene().setCaret({Side::Left, {0, 2'000'000}, {0, 2'000'000}});
        view.scene().showCaret();
        QVERIFY(view.scene().column() < 2'000'000 && view.scene().column() > 1'999'000);
        QCOMPARE(view.scene().scrolledX(view.scene().document()->cell(1, Side::Left), Side::Left), 0);
    }

    void opensFoldedRowsByMouseAndKey()
    {
        QString picture(100, u'=');
        picture[50] = u'~';
        const QByteArray text = QByteArray("x\n").repeated(100);
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(documentOf(picture, text, text));
        view.scene().setFilter(RowFilter::Differences);
        const RowLayout &layout = view.scene().layout();
        QCOMPARE(layout.count(), 9);
        DiffPane &pane = view.pane(Side::Left);
        pane.selectAll();
        QCOMPARE(view.scene().selectedText().count(u'x'), 100); // what is folded is selected, too
        QTest::mouseClick(&pane, Qt::LeftButton, {}, QPoint(200, layout.rowHeight() / 2));
        QCOMPARE(layout.count(), 47 + 7 + 1);
        QTest::keyClick(&pane, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(&pane, Qt::Key_Home);
        QCOMPARE(view.scene().caret().position.row, 54);
        QVERIFY(pane.describeCurrentRow().contains(QStringLiteral("46")));
        QTest::keyClick(&pane, Qt::Key_Left);
        QCOMPARE(caretOf(view), QStringLiteral("53:1"));
        QTest::keyClick(&pane, Qt::Key_Right);
        QTest::keyClick(&pane, Qt::Key_Return);
        QCOMPARE(layout.count(), 100);
        QCOMPARE(caretOf(view), QStringLiteral("54:0"));

        // A line that is gone to is shown.
        view.scene().setFilter(RowFilter::All);
        view.scene().setFilter(RowFilter::Differences);
        QCOMPARE(layout.count(), 9);
        view.scene().goToLine(Side::Right, 10);
        QVERIFY(layout.isShown(9));
        QCOMPARE(caretOf(view), QStringLiteral("9:0"));
    }

    void goesOnFromTheCaretWithoutACurrentDifference()
    {
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(
            documentOf(QStringLiteral("=~=~=~="), "1\n2\n3\n4\n5\n6\n7\n", "1\na\n3\nb\n5\nc\n7\n"));
        QCOMPARE(view.scene().nextBlock(), 0);
        view.scene().setCaret({Side::Left, {4, 0}, {4, 0}}); // as after the difference there was merged
        QCOMPARE(view.scene().currentBlock(), -1);
        QCOMPARE(view.scene().nextBlock(), 2);
        QCOMPARE(view.scene().previousBlock(), 1);
        view.scene().goToBlock(2);
        QCOMPARE(view.scene().nextBlock(), 2);
        QCOMPARE(view.scene().previousBlock(), 1);
    }

    void stopsAtMinorDifferencesWhenTheyCount()
    {
        DiffView view;
        show(view, 900, 300);
        view.scene().setDocument(documentOf(QStringLiteral("===~"), "a\nb \nc\nd\n", "a\nb\nc\nx\n"));
        QCOMPARE(view.scene().layout().blockCount(), 1);
        view.scene().setCountsMinor(true);
        QCOMPARE(view.scene().layout().blockCount(), 2);
        view.scene().goToBlock(0);
        QCOMPARE(caretOf(view), QStringLiteral("1:0"));
        view.scene().setCountsMinor(false);
        QCOMPARE(view.scene().currentBlock(), -1);
        QCOMPARE(view.scene().layout().blockCount(), 1);
    }
};

VELMORA_TEST(DiffViewTest)
#include "diff_view_test.moc"
