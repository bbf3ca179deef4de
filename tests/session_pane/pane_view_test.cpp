#include "session/pane/pane_editor.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_pane.h"
#include "support/test_main.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include <array>

using namespace velmora;

namespace {

constexpr int threePanes = 3;

/// Three texts by a plain table of the lines in each row. Rows are different where a line is missing or another one.
class TableDocument final : public PaneDocument {
public:
    using Rows = std::vector<std::array<qint32, threePanes>>;

    TableDocument(Rows rows, const PaneTexts &texts, qint64 widest)
        : PaneDocument({texts.begin(), texts.end()}, 4, widest), m_rows(std::move(rows))
    {}

    std::shared_ptr<const PaneDocument> withTabWidth(int columns) const override
    {
        auto other = std::make_shared<TableDocument>(*this);
        other->setTabWidth(columns);
        return other;
    }

    /// The document after an edit: new lines stand in rows of their own.
    static std::shared_ptr<const PaneDocument> patched(const PaneDocument &before, const PaneTexts &texts,
                                                       PaneIndex pane, const LineChange &change)
    {
        Rows rows;
        qint32 next = 1;
        const auto own = std::size_t(pane.number());
        const auto addNew = [&](qint32 end) {
            for (; next < end; ++next)
                rows.emplace_back(std::array<qint32, threePanes>{-1, -1, -1})[own] = next;
        };
        const qsizetype kept = std::min(change.removed, change.inserted);
        for (std::array<qint32, threePanes> row : static_cast<const TableDocument &>(before).m_rows) {
            const qint32 line = row[own] - 1;
            if (line >= change.first + change.removed)
                row[own] += qint32(change.inserted - change.removed);
            else if (line >= change.first + kept)
                row[own] = -1;
            if (row[own] >= 1) {
                addNew(row[own]);
                next = row[own] + 1;
            }
            rows.push_back(row);
        }
        addNew(qint32(texts[own]->count() + 1));
        return std::make_shared<TableDocument>(std::move(rows), texts, patchedWidth(before, texts, pane, change));
    }

    [[nodiscard]] qsizetype rowCount() const override { return qsizetype(m_rows.size()); }
    [[nodiscard]] qint32 lineNumber(qsizetype row, PaneIndex pane) const override
    {
        return m_rows[std::size_t(row)][std::size_t(pane.number())];
    }
    [[nodiscard]] bool isEqual(qsizetype row) const override
    {
        const auto same = [&](int a, int b) {
            return lineNumber(row, a) >= 1 && lineNumber(row, b) >= 1 && text(row, a) == text(row, b);
        };
        return same(0, 1) && same(1, 2);
    }
    [[nodiscard]] std::vector<TextRowState> states(bool /*countsMinor*/) const override
    {
        std::vector<TextRowState> states;
        for (qsizetype row = 0; row < rowCount(); ++row)
            states.push_back(isEqual(row) ? TextRowState::Equal : TextRowState::Modified);
        return states;
    }
    [[nodiscard]] bool hasSameStates(const PaneDocument &other, bool countsMinor) const override
    {
        return states(countsMinor) == other.states(countsMinor);
    }

private:
    Rows m_rows;
};

/// Lines of a real text.
QByteArray realText()
{
    QFile file(QStringLiteral(VELMORA_SOURCE_DIR "/src/session/pane/pane_view.cpp"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage imageOf(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    widget.render(&image);
    return image;
}

/// A view of texts that can be edited.
class Shown {
public:
    Shown(const std::vector<QByteArray> &texts, const QList<PanePair> &pairs, const RowPatcher &patcher,
          const std::function<std::shared_ptr<const PaneDocument>(const PaneTexts &)> &documentOf)
        : view(int(texts.size()), pairs), editor(view.scene(), &view)
    {
        view.arrangeInRow();
        view.resize(1000, 400);
        view.show();
        std::vector<std::optional<TextLines>> lines;
        PaneTexts snapshots;
        for (const QByteArray &text : texts)
            lines.emplace_back(TextLines::split(text));
        editor.setTexts(lines, patcher);
        for (int pane = 0; pane < view.paneCount(); ++pane) {
            snapshots.push_back(editor.buffer(pane).snapshot());
            view.pane(pane).setEditor(&editor);
        }
        editor.setEnabled(true);
        view.scene().setDocument(documentOf(snapshots));
    }

    [[nodiscard]] const PaneDocument &document() { return *view.scene().document(); }
    [[nodiscard]] const TextCaret &caret() { return view.scene().caret(); }
    void put(PaneIndex pane, TextPosition at) { view.scene().setCaret({pane, at, at}); }

    PaneView view;
    PaneEditor editor;
};

} // namespace

class PaneViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onePaneShowsAndEditsAText()
    {
        const QByteArray text = realText();
        QVERIFY(text.count('\n') > 100);
        Shown v({text}, {}, patchPlainDocument,
                [](const PaneTexts &texts) { return std::make_shared<PlainDocument>(texts.front()); });
        TextPane &pane = v.view.pane(0);
        const QImage atTop = imageOf(pane);
        QTest::keyClick(&pane, Qt::Key_PageDown);
        QVERIFY(v.caret().position.row > 5 && imageOf(pane) != atTop);
        QTest::keyClick(&pane, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(imageOf(pane), atTop);

        const QString firstLine = v.document().text(0, 0);
        QTest::keyClick(&pane, Qt::Key_End);
        QTest::keyClick(&pane, Qt::Key_Return);
        QTest::keyClicks(&pane, QStringLiteral("new line"));
        QCOMPARE(v.document().rowCount(), text.count('\n') + 2); // the last one is behind the last line end
        QCOMPARE(v.document().text(1, 0), QStringLiteral("new line"));
        QCOMPARE(v.caret().position, (TextPosition{1, 8}));
        QCOMPARE(pane.describeCurrentRow(), QStringLiteral("Line 2: new line"));
        QVERIFY(imageOf(pane) != atTop);
        while (v.editor.buffer(0).canUndo())
            QTest::keyClick(&pane, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(v.editor.buffer(0).snapshot()->toLines().bytes(), std::string_view(text.constData(), text.size()));
        QCOMPARE(v.document().text(0, 0), firstLine);
        v.put(0, {0, 0});
        QCOMPARE(imageOf(pane), atTop);
    }

    void threePanesShareTheirRowsAndAreEditedEachForItself()
    {
        // The first and the last pane each change a line of their own, and both line 5; the last one lacks line 8.
        QList<QByteArray> lines = realText().split('\n').first(60);
        const QByteArray base = lines.join('\n') + '\n';
        lines[2] += " // first";
        lines[4] += " // first";
        const QByteArray first = lines.join('\n') + '\n';
        lines[2].chop(9);
        lines[4].replace("first", "last");
        lines.removeAt(7);
        const QByteArray last = lines.join('\n') + '\n';
        TableDocument::Rows rows;
        for (qint32 line = 1; line <= 60; ++line)
            rows.push_back({line, line, line < 8 ? line : line == 8 ? -1 : line - 1});
        Shown v({first, base, last}, {{0, 1}, {1, 2}}, TableDocument::patched,
                [&rows](const PaneTexts &texts) { return std::make_shared<TableDocument>(rows, texts, 120); });
        PaneScene &scene = v.view.scene();
        QCOMPARE(scene.layout().blockCount(), 3);

        // The pane between is marked where it differs from either neighbour.
        const auto marksIn = [&](qsizetype pair, qsizetype row, PaneIndex pane) {
            const RowChanges *found = scene.changes(pair).changesOf(row);
            return found ? scene.changes(pair).changesIn(*found, pane).size() : -1;
        };
        QVERIFY(marksIn(0, 2, 0) > 0);
        QCOMPARE(marksIn(1, 2, 2), 0);
        QVERIFY(marksIn(0, 4, 0) > 0 && marksIn(1, 4, 2) > 0);
        scene.search().setQuery({QStringLiteral("// first")});
        QTRY_VERIFY(!scene.search().isSearching());
        QCOMPARE(scene.search().matches().of(0).size(), std::size_t(2));
        QVERIFY(scene.search().matches().of(1).empty() && scene.search().matches().of(2).empty());
        scene.search().setQuery({});

        // The caret: keys move it in the pane that has the focus, and steps lead it from difference to difference.
        TextPane &pane = v.view.pane(2);
        pane.setFocus();
        v.put(2, {5, 0});
        QTest::keyClick(&pane, Qt::Key_Down);
        QTest::keyClick(&pane, Qt::Key_Down);
        QCOMPARE(v.caret(), (TextCaret{2, {7, 0}, {7, 0}}));
        QVERIFY(!v.document().cell(7, 2).source && v.document().cell(7, 1).own);
        scene.step(false);
        QCOMPARE(v.caret().position.row, 4);
        QCOMPARE(v.caret().pane, PaneIndex(2));

        // Editing one pane.
        v.put(2, {4, 0});
        scene.scrollTo({}, 0);
        std::array<QImage, threePanes> before;
        for (int k = 0; k < threePanes; ++k)
            before[std::size_t(k)] = imageOf(v.view.pane(k));
        QTest::keyClicks(&pane, QStringLiteral("typed "));
        QVERIFY(v.document().text(4, 2).startsWith(QStringLiteral("typed ")));
        QVERIFY2(imageOf(v.view.pane(0)) == before[0], "nothing is new for the pane that it is not compared with");
        QVERIFY(imageOf(pane) != before[2]);
        QTest::keyClick(&pane, Qt::Key_Return);
        QCOMPARE(v.document().rowCount(), 61);
        QCOMPARE(v.document().lineNumber(5, 2), 6);
        QCOMPARE(v.document().lineNumber(5, 0), -1);
        QCOMPARE(v.document().lineNumber(60, 2), 60);
        QVERIFY(!v.editor.buffer(0).canUndo() && !v.editor.buffer(1).canUndo());
        while (v.editor.buffer(2).canUndo())
            v.editor.undo(2);
        QCOMPARE(v.editor.buffer(2).snapshot()->toLines().bytes(), std::string_view(last.constData(), last.size()));

        // Lines go from any pane to any other, unless something stands against it.
        const qsizetype row = v.document().rowOfLine(0, 3);
        QVERIFY(v.editor.copyRows(0, 2, {row, 1}));
        QCOMPARE(v.document().text(row, 2), v.document().text(row, 0));
        v.editor.setObstacle(1, QStringLiteral("the base stays as it is"));
        QVERIFY(!v.editor.copyRows(0, 1, {row, 1}) && v.document().text(row, 1) != v.document().text(row, 0));
        QVERIFY(v.view.pane(1).isLocked() && !pane.isLocked());
    }
};

VELMORA_TEST(PaneViewTest)
#include "pane_view_test.moc"
