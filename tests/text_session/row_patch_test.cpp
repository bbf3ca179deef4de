#include "settings/options/text_session_options.h"
#include "support/test_main.h"
#include "text/engine/line_diff_engine.h"
#include "text/view/row_patch.h"

#include <QRandomGenerator>
#include <QTest>

using namespace velmora;

namespace {

QByteArray randomText(QRandomGenerator &random, int lines)
{
    QByteArray text;
    for (int k = 0; k < lines; ++k)
        text += "line " + QByteArray::number(random.bounded(6)) + " of the text" + (random.bounded(3) ? "\n" : "\r\n");
    return text;
}

/// The plain form of `DiffDocument::unimportantRows`.
std::vector<qint32> unimportantRows(const DiffDocument &document)
{
    std::vector<qint32> rows;
    for (qsizetype row = 0; row < document.rowCount(); ++row) {
        const bool lacksALine = document.lineNumber(row, Side::Left) < 1 || document.lineNumber(row, Side::Right) < 1;
        const bool differs = document.text(row, Side::Left) != document.text(row, Side::Right);
        if (document.kind(row) == Equal && (lacksALine || differs))
            rows.push_back(qint32(row));
    }
    return rows;
}

/// The plain form of `DiffDocument::lineEndRows`.
std::vector<LineEndRow> lineEndRows(const DiffDocument &document, const EditSnapshot &left, const EditSnapshot &right)
{
    std::vector<LineEndRow> rows;
    for (qsizetype row = 0; row < document.rowCount(); ++row) {
        const qint32 lines[] = {document.lineNumber(row, Side::Left), document.lineNumber(row, Side::Right)};
        if (lines[0] >= 1 && lines[1] >= 1 && left.lineEnd(lines[0] - 1) != right.lineEnd(lines[1] - 1))
            rows.push_back({qint32(row), left.lineEnd(lines[0] - 1), right.lineEnd(lines[1] - 1)});
    }
    return rows;
}

/// Every line of a side in its order, and no other.
void verifyCovers(const DiffDocument &document, Side side)
{
    qint32 last = 0;
    for (qsizetype row = 0; row < document.rowCount(); ++row) {
        if (document.lineNumber(row, side) >= 1)
            QCOMPARE(document.lineNumber(row, side), ++last);
    }
    QCOMPARE(qsizetype(last), document.source(side).count());
}

} // namespace

class RowPatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsARowListWholeUnderRandomEditsOfBothSides()
    {
        QRandomGenerator random(77);
        const TextSessionOptions options;
        Progress nobody;
        const TextLines left = TextLines::split(randomText(random, 30));
        const TextLines right = TextLines::split(randomText(random, 30));
        EditBuffer buffers[] = {EditBuffer(left), EditBuffer(right)};
        const QList<AlignedRow> rows = compareTexts(left, right, options, {}, nobody);
        std::shared_ptr<const DiffDocument> document = std::make_shared<DiffDocument>(
            rows, buffers[0].snapshot(), buffers[1].snapshot(),
            differingLineEnds(rows, {left, LineEndStyle::Mixed}, {right, LineEndStyle::Mixed}, options));
        std::size_t foundUnimportant = 0;
        for (int round = 0; round < 1500; ++round) {
            const Side side = random.bounded(2) ? Side::Left : Side::Right;
            EditBuffer &buffer = buffers[side == Side::Right];
            LineChange change;
            const int action = random.bounded(10);
            if (action == 0 && buffer.canUndo()) {
                change = buffer.undo();
            } else if (action == 1 && buffer.canRedo()) {
                change = buffer.redo();
            } else if (action < 4 || buffer.count() == 0) {
                change = buffer.insertLines(random.bounded(int(buffer.count()) + 1), QStringLiteral("line 3 of\nnew"));
            } else {
                const qsizetype line = random.bounded(int(buffer.count()));
                const qsizetype last = std::min<qsizetype>(line + random.bounded(4), buffer.count() - 1);
                const QString typed = QStringLiteral("x\ny,z, ,\n").split(u',').at(random.bounded(4));
                change = buffer.replace({line, random.bounded(5)}, {last, random.bounded(9)}, typed);
            }
            document = patchDocument(*document, {buffers[0].snapshot(), buffers[1].snapshot()}, side, change, options);
            verifyCovers(*document, Side::Left);
            verifyCovers(*document, Side::Right);
            if (QTest::currentTestFailed())
                return;
            QCOMPARE(document->unimportantRows(), unimportantRows(*document));
            QCOMPARE(document->lineEndRows(), lineEndRows(*document, *buffers[0].snapshot(), *buffers[1].snapshot()));
            foundUnimportant += document->unimportantRows().size();
            for (qsizetype row = 0; row < document->rowCount(); ++row) {
                if (document->kind(row) == Equal)
                    QCOMPARE(document->text(row, Side::Left).remove(u' '),
                             document->text(row, Side::Right).remove(u' '));
                if (document->kind(row) == Modified)
                    QVERIFY(document->text(row, Side::Left) != document->text(row, Side::Right));
            }
        }
        QVERIFY(foundUnimportant > 1000);
    }

    void typingIntoAChangedLineSharesTheRows()
    {
        const TextSessionOptions options;
        Progress nobody;
        const TextLines left = TextLines::split("a\nsome line of text\nc\n");
        const TextLines right = TextLines::split("a\nsome line of test\nc\n");
        EditBuffer buffer(right);
        const EditBuffer other(left);
        const DiffDocument before(compareTexts(left, right, options, {}, nobody), other.snapshot(), buffer.snapshot());
        LineChange change = buffer.replace({1, 16}, {1, 16}, QStringLiteral("x"));
        const auto typed = patchDocument(before, {other.snapshot(), buffer.snapshot()}, Side::Right, change, options);
        QCOMPARE(typed->kind(1), Modified);
        QVERIFY(typed->rows().isSharedWith(before.rows()));
        QCOMPARE(typed->text(1, Side::Right), QStringLiteral("some line of tesxt"));

        change = buffer.replace({1, 0}, {1, 18}, QStringLiteral("some line of text"));
        const auto equal = patchDocument(*typed, {other.snapshot(), buffer.snapshot()}, Side::Right, change, options);
        QCOMPARE(equal->kind(1), Equal);
    }
};

VELMORA_TEST(RowPatchTest)
#include "row_patch_test.moc"
