#include "edit_fixture.h"
#include "row_picture.h"
#include "session/pane/pane_editor.h"
#include "support/test_main.h"
#include "text/view/row_patch.h"

#include <QDropEvent>
#include <QMimeData>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The middle of the character at a place.
QPoint pointOf(EditFixture &f, Side side, TextPosition at)
{
    TextPane &pane = f.pane(side);
    const RowLayout &layout = f.scene().layout();
    const qreal x = f.scene().renderer(side).xOf(f.scene().document()->cell(at.row, side).line, at.unit);
    const qint64 y = layout.yOf(layout.indexOf(at.row), f.scene().top()) + layout.rowHeight() / 2;
    return {pane.textArea().left() + 6 + int(x), int(y)};
}

/// A drag that comes over a widget and ends there.
void dragAndDrop(QWidget &target, QPoint point, const QMimeData &data)
{
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &enter);
    QDropEvent drop(point, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &drop);
}

} // namespace

class TextDraggingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void movesTheSelectionWithinASide()
    {
        PaneScene scene(2);
        scene.setDocument(documentOf("===", "alpha\nbeta\ngamma\n", "alpha\nbeta\ngamma\n"));
        PaneEditor editor(scene, nullptr);
        const TextLines text = TextLines::split("alpha\nbeta\ngamma\n");
        editor.setTexts({text, text}, diffPatcher({}));
        editor.setEnabled(true);
        const auto lines = [&editor] {
            const TextLines now = editor.buffer(Side::Left).snapshot()->toLines();
            return QString::fromUtf8(now.bytes());
        };
        scene.setCaret({Side::Left, {0, 0}, {1, 0}});
        QVERIFY(editor.moveSelection(Side::Left, {scene.document()->rowOfLine(Side::Left, 3), 5}));
        QCOMPARE(lines(), word("beta\ngammaalpha\n\n"));
        QCOMPARE(scene.selectedText(), word("alpha\n"));
        QVERIFY(!editor.moveSelection(Side::Left, scene.caret().position)); // into itself
        editor.undo(Side::Left);
        QCOMPARE(lines(), word("alpha\nbeta\ngamma\n"));
        QVERIFY(!editor.buffer(Side::Left).canUndo()); // it was one step
    }

    void takesTextFromElsewhere()
    {
        EditFixture f("alpha\nbeta\n", "alpha\nbeta\n");
        QMimeData data;
        data.setText(word("new "));
        dragAndDrop(f.pane(Side::Right), pointOf(f, Side::Right, {1, 0}), data);
        QCOMPARE(f.picture(), word("=alpha|alpha,~beta|new beta"));
        QCOMPARE(f.scene().selectedText(), word("new "));
        QCOMPARE(f.session.view().activeSide(), Side::Right);
        f.session.edit(EditCommand::UndoRight);
        QVERIFY(!f.session.hasUnsavedChanges());

        // A locked side says why it takes nothing.
        f.session.setEditingEnabled(false);
        dragAndDrop(f.pane(Side::Left), pointOf(f, Side::Left, {0, 2}), data);
        QVERIFY(!f.session.hasUnsavedChanges());
        QVERIFY2(f.status().contains(word("locked")), qPrintable(f.status()));
    }

    void leavesFilesToTheWindow()
    {
        EditFixture f("a\n", "b\n");
        QMimeData data;
        data.setText(f.right);
        data.setUrls({QUrl::fromLocalFile(f.right)});
        QDragEnterEvent enter({100, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QCoreApplication::sendEvent(&f.pane(Side::Left), &enter);
        QVERIFY(!enter.isAccepted());
    }

    void aClickOnTheSelectionEndsIt()
    {
        EditFixture f("alpha beta\n", "alpha beta\n");
        f.scene().setCaret({Side::Left, {0, 0}, {0, 5}});
        const QPoint inside = pointOf(f, Side::Left, {0, 2});
        QTest::mousePress(&f.pane(Side::Left), Qt::LeftButton, {}, inside);
        QVERIFY(f.scene().caret().hasSelection()); // it may become a drag
        QTest::mouseRelease(&f.pane(Side::Left), Qt::LeftButton, {}, inside);
        QVERIFY(!f.scene().caret().hasSelection());
        QCOMPARE(f.scene().caret().position, (TextPosition{0, 2}));
    }
};

VELMORA_TEST(TextDraggingTest)
#include "text_dragging_test.moc"
