#include "filetypes/table/columns_model.h"
#include "filetypes/table/row_card.h"
#include "filetypes/table/row_card_model.h"
#include "filetypes/table/table_colours.h"
#include "filetypes/table/table_compare_widget.h"
#include "filetypes/table/table_grid.h"
#include "filetypes/table/table_model.h"
#include "filetypes/table/table_scene.h"
#include "session/diff_colours.h"
#include "support/contrast.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

using namespace velmora;
using namespace velmora::test;

namespace {

class TableFixture {
public:
    TableFixture()
    {
        session.resize(1100, 500);
        session.show();
    }

    QString file(const char *name, const QByteArray &bytes) const
    {
        const QString path = folder.filePath(word(name));
        if (!makeFile(path, bytes))
            qFatal("cannot write %s", name);
        return path;
    }
    /// Compares two tables; false when that does not come to its end.
    bool compare(const QByteArray &left, const QByteArray &right)
    {
        session.setPaths({file("left.csv", left), file("right.csv", right), {}});
        return compareAgain();
    }
    bool compareAgain()
    {
        QSignalSpy finished(&session, &SessionWidget::comparisonFinished);
        trigger("compareAction");
        return finished.wait(20'000);
    }
    void trigger(const char *action) { session.findChild<QAction *>(QLatin1String(action))->trigger(); }
    [[nodiscard]] QString label(const char *name) const
    {
        return session.findChild<QLabel *>(QLatin1String(name))->text();
    }
    [[nodiscard]] QComboBox *box(const char *name) const { return session.findChild<QComboBox *>(QLatin1String(name)); }
    [[nodiscard]] TableGrid *grid(const char *name) const
    {
        return session.findChild<TableGrid *>(QLatin1String(name));
    }
    /// The rows of a grid: number, then each cell with the first letter of its colour.
    [[nodiscard]] QString shown(const char *name) const
    {
        static constexpr char letters[] = "=CMLR.";
        const QAbstractItemModel &model = *grid(name)->model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QString line = model.headerData(row, Qt::Vertical).toString() + u':';
            for (int column = 0; column < model.columnCount(); ++column) {
                const QModelIndex index = model.index(row, column);
                line += u' ' + QChar::fromLatin1(letters[index.data(TableModel::ColourRole).toInt()]) +
                        index.data().toString();
            }
            rows.append(line);
        }
        return rows.join(u'|');
    }

    QTemporaryDir folder;
    RecordingHost host;
    ScriptedDialogs dialogs;
    TableCompareWidget session{host};
};

} // namespace

class TableSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsCountsNumbersAndColours()
    {
        TableFixture table;
        QSignalSpy titles(&table.session, &SessionWidget::tabTitleChanged);
        QVERIFY(table.compare("a,b\n1,2\nx,y\n7,8", "a,b\n1,3\nx,y\n7,8\n9,\"l\nm\"\n"));
        QCOMPARE(table.label("statusLabel"),
                 word("Same: 2  |  Modified: 1  |  Left only: 0  |  Right only: 1  |  Total rows: 4"));
        QCOMPARE(table.shown("leftGrid"), word("2: M1 C2|3: =x =y|4: =7 =8|: . ."));
        QCOMPARE(table.shown("rightGrid"), word("2: M1 C3|3: =x =y|4: =7 =8|5: R9 Rl↵m"));
        QCOMPARE(titles.last().first().toString(), word("left.csv <-> right.csv"));
        QCOMPARE(table.box("keyBox")->count(), 3);
    }

    void pairsByKeyFromTheNextComparisonOn()
    {
        TableFixture table;
        QVERIFY(table.compare("id,v\n1,a\n2,b\n1,c\n3,d\n", "id,v\n3,d\n1,c\n2,b\n"));
        const QString byOrder = table.label("statusLabel");
        table.box("keyBox")->setCurrentIndex(1);
        QVERIFY(!table.session.isReading());
        QCOMPARE(table.label("statusLabel"), byOrder);
        QVERIFY(table.compareAgain());
        QCOMPARE(table.label("statusLabel"),
                 word("Same: 3  |  Modified: 0  |  Left only: 0  |  Right only: 0  |  Total rows: 3"));
        QCOMPARE(table.label("duplicatesBarText"),
                 word("Left out, since a later row has the same key: 1 (rows 2) on the left."));
        QCOMPARE(table.session.options().value(word("keyName")).toString(), word("id"));

        TableCompareWidget later(table.host);
        later.setPaths(table.session.paths());
        later.setOptions(table.session.options());
        QSignalSpy finished(&later, &SessionWidget::comparisonFinished);
        later.start();
        QVERIFY(finished.wait(20'000));
        QCOMPARE(later.scene().document()->alignment.counts.same, 3);
        // A table without that column is aligned in its order.
        QVERIFY(table.compare("id\n1\n", "id\n1\n"));
        table.box("keyBox")->setCurrentIndex(1);
        table.session.findChild<QAbstractButton *>(word("headerBox"))->click();
        QVERIFY(table.compareAgain());
        QCOMPARE(table.box("keyBox")->count(), 1);
        QCOMPARE(table.session.scene().rowAt(0), 0);
    }

    void proposesAKey()
    {
        TableFixture table;
        QVERIFY(table.compare("t,id\nx,1\nx,2\nx,3\nx,4\n", "t,id\nx,4\nx,3\nx,2\nx,1\n"));
        QSignalSpy finished(&table.session, &SessionWidget::comparisonFinished);
        QTest::mouseClick(table.session.findChild<QPushButton *>(word("proposalBarAction")), Qt::LeftButton);
        QVERIFY(finished.wait(20'000));
        QCOMPARE(table.box("keyBox")->currentText(), word("id"));
        QVERIFY(table.label("statusLabel").startsWith(word("Same: 4 ")));
        QVERIFY(table.session.findChild<QWidget *>(word("proposalBar"))->isHidden());
    }

    void pairsColumnsByNameOnRequest()
    {
        TableFixture table;
        QVERIFY(table.compare("a,b\n1,2\n", "b,a\n2,1\n"));
        QCOMPARE(table.shown("leftGrid"), word("2: C1 C2"));
        QSignalSpy finished(&table.session, &SessionWidget::comparisonFinished);
        QTest::mouseClick(table.session.findChild<QPushButton *>(word("remarksBarAction")), Qt::LeftButton);
        QVERIFY(finished.wait(20'000));
        QCOMPARE(table.shown("rightGrid"), word("2: =1 =2"));
        QVERIFY(table.session.options().value(word("columnsByName")).toBool());
    }

    /// Rules, keys and the order of columns are chosen in a dialog, kept with the session, and mean columns by name.
    void choosesColumnsInADialog()
    {
        TableFixture table;
        QVERIFY(table.compare("id,sub,note,price\n1,a,X,1.00\n1,b,y,2\n2,a,z,3\n2,a,q,3\n",
                              "id,sub,note,price\n2,a,Q,3.4\n1,b,Y,2.04\n1,a,x,1\n"));
        table.trigger("settingsAction");
        auto *dialog = table.session.findChild<QDialog *>(word("columnsDialog"));
        auto *list = dialog->findChild<QTableView *>(word("columnsList"));
        const auto check = [list](int line, ColumnsModel::Column column) {
            list->setCurrentIndex(list->model()->index(line, column));
            QTest::keyClick(list, Qt::Key_Space);
        };
        check(0, ColumnsModel::Key);
        check(1, ColumnsModel::Key);
        check(2, ColumnsModel::Shown);
        list->selectRow(2);
        dialog->findChild<QAbstractButton *>(word("caseBox"))->click();
        list->selectRow(3);
        dialog->findChild<QComboBox *>(word("meaningBox"))->setCurrentIndex(1);
        QTest::keyClicks(dialog->findChild<QLineEdit *>(word("toleranceEdit")), word("0.05"));
        check(3, ColumnsModel::Frozen);
        QSignalSpy finished(&table.session, &SessionWidget::comparisonFinished);
        dialog->accept();
        QVERIFY(finished.wait(20'000));
        QCOMPARE(table.shown("leftGrid"), word("2: =1.00 =1 =a|3: =2 =1 =b|5: C3 M2 Ma"));
        QCOMPARE(table.box("keyBox")->currentText(), word("id + sub"));
        const QString report = table.folder.filePath(word("rules.html"));
        table.dialogs.answerPath(report);
        table.trigger("exportAction");
        QTRY_VERIFY(contentsOf(report).contains("&quot;price&quot;: numbers, within 0.05"));
        QCOMPARE(table.label("columnFacts"), word("Hidden columns: 1  |  Columns with rules: 2"));
        QVERIFY(table.grid("leftGrid")->findChild<QWidget *>(word("leftGridFrozen"))->isVisible());

        table.session.findChild<QPushButton *>(word("duplicatesBarAction"))->click();
        auto *duplicates = table.session.findChild<QDialog *>(word("duplicatesDialog"));
        const QAbstractItemModel &keys = *duplicates->findChild<QTreeView *>(word("duplicatesList"))->model();
        QCOMPARE(keys.index(0, 0).data().toString() + u':' + keys.index(0, 3).data().toString(),
                 word("2 + a:4, 5 (compared)"));
        duplicates->findChild<QPushButton *>(word("goToDuplicate"))->click();
        QCOMPARE(table.grid("rightGrid")->currentIndex().row(), 2);

        TableCompareWidget later(table.host);
        later.setPaths(
            {table.file("l2.csv", "price,sub,id\n1.0,a,1\n"), table.file("r2.csv", "price,sub,id\n1.04,a,1\n"), {}});
        later.setOptions(table.session.options());
        QSignalSpy again(&later, &SessionWidget::comparisonFinished);
        later.start();
        QVERIFY(again.wait(20'000));
        QCOMPARE(later.scene().document()->alignment.counts.same, 1);
        QCOMPARE(later.scene().document()->keys, (QList<ColumnRef>{{2, word("id")}, {1, word("sub")}}));
        QCOMPARE(later.scene().arrangement(), (ColumnArrangement{{0, 1, 2}, 1}));
        QCOMPARE(later.options().value(word("columns")), table.session.options().value(word("columns")));
    }

    void showsARowAsACard()
    {
        TableFixture table;
        QVERIFY(table.compare("a,b,c\n1,house,x\n2,\"two\nlines\",y\n", "a,b,c\n1,mouse,x\n2,\"two\nlines\",z\n"));
        table.trigger("showDetailsAction");
        table.trigger("nextAction");
        const auto *view = table.session.findChild<QTreeView *>(word("rowCardView"));
        const QAbstractItemModel &card = *view->model();
        QCOMPARE(card.rowCount(), 3);
        QCOMPARE(card.index(1, RowCardModel::Left).data(RowCardModel::ChangesRole).value<QList<CharRange>>(),
                 (QList<CharRange>{{0, 1}}));
        QCOMPARE(table.label("rowCardTitle"), word("Left row 2, right row 2  |  Differing columns: 1"));
        table.box("rowCardOrder")->setCurrentIndex(1);
        QCOMPARE(card.index(0, 0).data().toString(), word("≠ b"));
        table.trigger("showDifferencesAction"); // the card stays
        table.box("rowCardOrder")->setCurrentIndex(2);
        table.trigger("nextAction");
        QCOMPARE(card.rowCount(), 1);
        QCOMPARE(card.index(0, RowCardModel::Right).data().toString(), word("z"));
        table.session.activateWindow();
        table.session.findChild<RowCard *>(word("rowCard"))->copy();
        QCOMPARE(QApplication::clipboard()->text(), word("c\ty\tz\n"));
    }

    void proposesADelimiter()
    {
        TableFixture table;
        QVERIFY(table.compare("a;b\n1;x,y\n", "a;b\n1;z\n"));
        QSignalSpy finished(&table.session, &SessionWidget::comparisonFinished);
        QTest::mouseClick(table.session.findChild<QPushButton *>(word("proposalBarAction")), Qt::LeftButton);
        QVERIFY(finished.wait(20'000));
        QCOMPARE(table.shown("leftGrid"), word("2: M1 Cx,y"));
        QCOMPARE(table.session.scene().document()->changedCells, (std::vector<qint32>{0, 1}));
        QVERIFY(table.session.findChild<QWidget *>(word("proposalBar"))->isHidden());
    }

    void findsTextInCells()
    {
        TableFixture table;
        QVERIFY(table.compare("a,b\n1,\"say \"\"hi\"\"\"\n2,x\n3,high\n", "a,b\n1,y\n2,x\n3,HI\n"));
        table.trigger("findAction");
        auto *text = table.session.findChild<QLineEdit *>(word("findText"));
        QTest::keyClicks(text, word("hi"));
        QTRY_COMPARE(table.label("findPosition"), word("1 of 2"));
        const auto current = [&table] {
            const QModelIndex cell = table.grid("rightGrid")->currentIndex();
            return QPoint(cell.column(), cell.row());
        };
        QCOMPARE(current(), QPoint(1, 0));
        QTest::keyClick(text, Qt::Key_Return);
        QCOMPARE(current(), QPoint(1, 2));
        table.trigger("findNextAction");
        QCOMPARE(table.label("findPosition"), word("1 of 2"));
        QTest::keyClicks(text, word("gh"));
        QTRY_COMPARE(table.label("findPosition"), word("1 of 1"));
        // What is hidden is not looked through.
        table.session.setOptions(
            {{word("columns"), QJsonArray{QJsonObject{{word("name"), word("b")}, {word("hidden"), true}}}}});
        QVERIFY(table.compareAgain());
        QTRY_COMPARE(table.label("findPosition"), word("No match"));
        QTest::keyClick(text, Qt::Key_Escape);
        QVERIFY(!text->isVisible());
    }

    void stepsThroughDifferencesAlsoWhereTheyAreHidden()
    {
        TableFixture table;
        QByteArray left = "n\n";
        for (int row = 0; row < 300; ++row)
            left += QByteArray::number(row) + '\n';
        QVERIFY(table.compare(left, QByteArray(left).replace("\n100\n", "\nx\n").replace("\n200\n", "\ny\n")));
        const auto selected = [&table](const char *name) {
            const QModelIndexList rows = table.grid(name)->selectionModel()->selectedRows();
            return rows.size() == 1 ? rows.first().row() : -1;
        };
        table.trigger("previousAction");
        QCOMPARE(selected("leftGrid"), 100);
        table.trigger("nextAction");
        table.trigger("nextAction");
        QCOMPARE(selected("leftGrid"), 200);
        QCOMPARE(selected("rightGrid"), 200);
        QCOMPARE(table.grid("leftGrid")->verticalScrollBar()->value(),
                 table.grid("rightGrid")->verticalScrollBar()->value());
        QVERIFY(table.grid("leftGrid")->visualRect(table.grid("leftGrid")->model()->index(200, 0)).top() > 40);

        table.trigger("showIdenticalAction");
        QCOMPARE(table.grid("leftGrid")->model()->rowCount(), 298);
        table.trigger("previousAction");
        QCOMPARE(selected("leftGrid"), -1);
        QCOMPARE(table.label("differencePosition"), word("Diff 1/2, hidden by the filter"));
        table.trigger("showDifferencesAction");
        QCOMPARE(table.shown("rightGrid"), word("102: Cx|202: Cy"));
        QCOMPARE(selected("rightGrid"), 0);
    }

    void dropsFillWhatIsEmpty()
    {
        TableFixture table;
        const auto drop = [&table](const char *paths) {
            table.session.dropPaths(words(paths), {});
            return table.session.paths().left + u'|' + table.session.paths().right;
        };
        QCOMPARE(drop("/a"), word("/a|"));
        QCOMPARE(drop("/b|/c"), word("/a|/b"));
        QCOMPARE(drop("/d"), word("/d|/b"));
        QCOMPARE(drop("/e|/f"), word("/e|/f"));
        table.session.setPaths({});
        QCOMPARE(drop("/g|/h"), word("/g|/h"));
        QVERIFY(!table.session.isReading());
        QCOMPARE(table.box("delimiterBox")->currentText(), word("Comma (,)"));
        table.session.setPaths({word("/x.csv"), word("/y.TSV"), {}});
        QCOMPARE(table.box("delimiterBox")->currentText(), word("Tab (\\t)"));
    }

    void tellsWhatItCannotCompare()
    {
        TableFixture table;
        table.session.start();
        QVERIFY(!table.session.isReading());
        QVERIFY(table.compare("a\n1\n", "a\n1\n"));
        table.session.setPaths({word("/no"), word("/none"), {}});
        table.session.start();
        QTRY_COMPARE(table.label("statusLabel"), word("Cannot read file"));
        QFile large(table.file("large.csv", {}));
        QVERIFY(large.resize(tableSizeLimit + 1));
        table.session.setPaths({large.fileName(), word("/none"), {}});
        table.session.start();
        QTRY_COMPARE(table.label("statusLabel"), word("File too large (limit 50 MB)"));
        QCOMPARE(table.grid("leftGrid")->model()->rowCount(), 1);
        table.session.setPaths({table.file("one.csv", "a\n1\n"), word("/none"), {}});
        QVERIFY(table.compareAgain());
        QCOMPARE(table.shown("leftGrid"), word("2: L1"));
        QVERIFY(table.label("remarksBarText").startsWith(word("The right file cannot be read and counts as empty: ")));
    }

    void copiesAndExportsRows()
    {
        TableFixture table;
        QVERIFY(table.compare("a,b\n1,\"x,y\"\n", "a,b\n1,z\n"));
        table.grid("leftGrid")->selectAll();
        table.trigger("copyAction");
        QCOMPARE(QApplication::clipboard()->text(), word("1,\"x,y\"\n"));
        for (const char *name : {"report.csv", "report.html"}) {
            const QString path = table.folder.filePath(word(name));
            table.dialogs.answerPath(path);
            table.trigger("exportAction");
            QTRY_VERIFY(
                contentsOf(path).contains(path.endsWith(word("csv")) ? "modified,left,2,1,\"x,y\"" : "<ins>z</ins>"));
        }
    }

    void everyTextIsReadable()
    {
        for (const bool dark : {false, true}) {
            for (int colour = 0; colour <= int(TableColour::Absent); ++colour)
                QVERIFY(contrast(diffColour(DiffColour::Text, dark), tableColour(TableColour(colour), dark)) >= 4.5);
        }
    }
};

VELMORA_TEST(TableSessionTest)
#include "table_session_test.moc"
