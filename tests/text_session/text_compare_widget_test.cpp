#include "session_fixture.h"
#include "settings/dialogs/text_session_settings_dialog.h"
#include "support/test_main.h"
#include "text/external_change.h"
#include "text/view/pane_notice.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray lines(int count, const QByteArray &text = "line ")
{
    QByteArray result;
    for (int k = 1; k <= count; ++k)
        result += text + QByteArray::number(k) + '\n';
    return result;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TextCompareWidgetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Starting --------------------------------------------------------------------------------------------------------

    void refusesInputsThatCannotBeCompared()
    {
        SessionFixture f;
        f.session.onCompare();
        QCOMPARE(f.status(), QStringLiteral("Select at least one file to compare"));

        f.compare(f.path(QStringLiteral("no such file")), QString());
        QCOMPARE(f.status(), QStringLiteral("Neither file exists"));

        f.compare(f.folder.path(), f.path(QStringLiteral("nothing"))); // a folder is no file
        QCOMPARE(f.status(), QStringLiteral("Neither file exists"));
    }

    void comparesAFileOfTheLimitAndRefusesOneByteMore()
    {
        SessionFixture f;
        const QString small = f.file(QStringLiteral("small"), "x\n");
        QFile large(f.path(QStringLiteral("large")));
        QVERIFY(large.open(QIODevice::WriteOnly));
        QVERIFY(large.resize(52'428'800));
        f.compare(small, large.fileName());
        QVERIFY2(f.status().startsWith(QStringLiteral("Compare done: ")), qPrintable(f.status()));

        QVERIFY(large.resize(52'428'801));
        const QString refused =
            QStringLiteral("File too large (limit 50 MB). Use folder compare or split the file first.");
        f.compare(small, large.fileName());
        QCOMPARE(f.status(), refused);
        f.compare(large.fileName(), f.path(QStringLiteral("missing")));
        QCOMPARE(f.status(), refused);
        QVERIFY(f.dialogs.asked().isEmpty()); // the size is looked at before the changed file is asked about
    }

    // Results ---------------------------------------------------------------------------------------------------------

    void reportsRowsNotBlocks()
    {
        SessionFixture f;
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        QSignalSpy messages(&f.session, &SessionWidget::statusMessage);
        const QString left = f.file(QStringLiteral("a.txt"), "one\n" + lines(5, "old value ") + "two\nthree\n");
        const QString right = f.file(QStringLiteral("b.txt"), "one\n" + lines(5, "new value ") + "two\nmore\nthree\n");
        f.compare(left, right);

        const auto done =
            QStringLiteral("Compare done: 6 diffs (added 1, removed 0, modified 5) | Left: 8 lines, Right: 9 lines");
        QCOMPARE(f.status(), done);
        QCOMPARE(messages.first().first().toString(), QStringLiteral("Comparing..."));
        QCOMPARE(messages.last().first().toString(), done);
        QCOMPARE(f.position(), QStringLiteral("Diff 0/2"));
        QCOMPARE(titles.size(), 1);
        QCOMPARE(titles.first().first().toString(), QStringLiteral("a.txt <-> b.txt"));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first(), (QVariantList{left, right}));
    }

    void comparesAMissingSideAsAnEmptyText()
    {
        SessionFixture f;
        const QString file = f.file(QStringLiteral("a"), "1\n2\n3\n");
        f.compare(file, f.path(QStringLiteral("missing")));
        QCOMPARE(
            f.status(),
            QStringLiteral("Compare done: 3 diffs (added 0, removed 3, modified 0) | Left: 3 lines, Right: 0 lines"));
        QCOMPARE(f.format(), QStringLiteral("Left: UTF-8 [LF] | Right: Missing [-]"));
        QVERIFY(!f.session.view().notice(Side::Right).isHidden());

        f.compare(QString(), file);
        QCOMPARE(
            f.status(),
            QStringLiteral("Compare done: 3 diffs (added 3, removed 0, modified 0) | Left: 0 lines, Right: 3 lines"));
        QVERIFY(!f.session.view().notice(Side::Left).isHidden());
        QVERIFY(f.session.view().notice(Side::Right).isHidden());
    }

    void namesEncodingsAndLineEnds()
    {
        SessionFixture f;
        f.compareTexts("1\r\n2\r\n", "\xEF\xBB\xBF"
                                     "1\n2\n");
        QCOMPARE(f.format(), QStringLiteral("Left: UTF-8 [CRLF] | Right: UTF-8 BOM [LF]"));
        QCOMPARE(f.diffs(), 0);
        QVERIFY(f.status().contains(QStringLiteral("Left: 2 lines, Right: 2 lines"))); // no empty last line
    }

    void obeysTheChosenEncoding()
    {
        SessionFixture f;
        const QByteArray big5("\xa4\xa4\xa4\xe5\n"); // "中文"
        const QString left = f.file(QStringLiteral("a"), big5);
        const QString right = f.file(QStringLiteral("b"), QStringLiteral("中文\n").toUtf8());
        f.session.setOptions({{QStringLiteral("leftEncoding"), QStringLiteral("Big5")},
                              {QStringLiteral("rightEncoding"), QStringLiteral("UTF-8")},
                              {QStringLiteral("sameAsLeftFileFormat"), false}});
        f.compare(left, right);
        QCOMPARE(f.format(), QStringLiteral("Left: Big5 [LF] | Right: UTF-8 [LF]"));
        QCOMPARE(f.diffs(), 0);

        // Another choice is taken up at once and says what it could not read.
        auto *encoding = f.child<QComboBox>("leftEncoding");
        encoding->setCurrentIndex(encoding->findText(QStringLiteral("UTF-8")));
        Q_EMIT encoding->activated(encoding->currentIndex());
        f.wait();
        QVERIFY2(f.format().contains(QStringLiteral("undecodable, first in line 1")), qPrintable(f.format()));
        QCOMPARE(f.session.options().value(QStringLiteral("leftEncoding")).toString(), QStringLiteral("UTF-8"));
        QCOMPARE(f.session.options().value(QStringLiteral("rightEncoding")).toString(), QStringLiteral("UTF-8"));
    }

    void theRightSideFollowsTheLeftUntilItIsChosen()
    {
        SessionFixture f;
        const auto chosen = [&f](const QString &side) { return f.session.findChild<QComboBox *>(side)->currentText(); };
        f.session.setOptions({{QStringLiteral("leftEncoding"), QStringLiteral("GB18030")}});
        QCOMPARE(chosen(QStringLiteral("leftEncoding")), QStringLiteral("GB18030"));
        QCOMPARE(chosen(QStringLiteral("rightEncoding")), QStringLiteral("GB18030"));

        auto *right = f.child<QComboBox>("rightEncoding");
        right->setCurrentIndex(right->findText(QStringLiteral("Shift-JIS")));
        Q_EMIT right->activated(right->currentIndex());
        QCOMPARE(chosen(QStringLiteral("leftEncoding")), QStringLiteral("GB18030"));
        QCOMPARE(chosen(QStringLiteral("rightEncoding")), QStringLiteral("Shift-JIS"));
        QCOMPARE(f.session.options().value(QStringLiteral("sameAsLeftFileFormat")).toBool(), false);
    }

    void appliesReplacementRulesToTheComparisonOnly()
    {
        SessionFixture f;
        f.session.setOptions({{QStringLiteral("leftReplaceFind"), QJsonArray{QStringLiteral("colour")}},
                              {QStringLiteral("leftReplaceWith"), QJsonArray{QStringLiteral("color")}}});
        f.compareTexts("a colour\n", "a color\n");
        QCOMPARE(f.diffs(), 0);
        QCOMPARE(f.scene().document()->text(0, Side::Left), QStringLiteral("a colour"));
    }

    void saysThatNothingDiffers()
    {
        SessionFixture f;
        const auto banner = [&f] { return f.label(QStringLiteral("diffBanner")); };
        const QString left = f.file(QStringLiteral("a"), "x y\n");
        f.compare(left, left);
        QCOMPARE(banner(), QStringLiteral("The texts are identical"));
        f.compare(left, f.file(QStringLiteral("b"), "x  y\n"));
        const QString rules =
            QStringLiteral("No differences under the rules of this comparison, which ignore: white space | ");
        QCOMPARE(banner(), rules + QStringLiteral("1 rows differ only in that"));
        QCOMPARE(f.position(), QStringLiteral("Diff 0/0"));

        // Bar, banner and foot agree when such rows count, as they do after one click.
        const QString counts = f.status();
        QTest::mouseClick(f.child<QPushButton>("verdictOffer"), Qt::LeftButton);
        QCOMPARE(banner(), rules + QStringLiteral("1 rows differ only in what is ignored, and count here"));
        QCOMPARE(f.position(), QStringLiteral("Diff 0/1"));
        QCOMPARE(f.label(QStringLiteral("blocksLabel")), QStringLiteral("1 rows in 1 blocks"));
        QCOMPARE(f.status(), counts + QStringLiteral(" | 1 unimportant rows count, too"));
        QTest::mouseClick(f.child<QPushButton>("verdictOffer"), Qt::LeftButton);
        QCOMPARE(f.status(), counts);
        f.compare(left, f.file(QStringLiteral("c"), "x z\n"));
        QCOMPARE(banner(), QString());
    }

    void warnsOfIndentationWhereItHasMeaning()
    {
        SessionFixture f;
        const auto banner = [&f](const QString &suffix) {
            f.compare(f.file(u'a' + suffix, "if x:\n    y()\nz\n"), f.file(u'b' + suffix, "if x:\n  y()\nZ \n"));
            return f.label(QStringLiteral("diffBanner"));
        };
        const QString warning =
            QStringLiteral("1 rows that count as equal are indented differently, which has meaning in ");
        QCOMPARE(banner(QStringLiteral(".py")), warning + QStringLiteral("Python"));
        QCOMPARE(banner(QStringLiteral(".yml")), warning + QStringLiteral("YAML"));
        QCOMPARE(banner(QStringLiteral(".txt")), QString());
    }

    void lineEndsAreDifferencesOfTheirOwn()
    {
        SessionFixture f;
        const auto found = [&f] {
            QStringList said{f.position(), f.label(QStringLiteral("blocksLabel"))};
            return (said + f.status().split(QStringLiteral(" | ")).mid(2)).join(u'|');
        };
        auto compare = [&f, number = 0](const QByteArray &left, const QByteArray &right) mutable {
            const QString name = QString::number(++number);
            f.compare(f.file(u'a' + name, left), f.file(u'b' + name, right));
        };
        compare("a\nb\nc\n", "a\r\nb\r\nc\r\n");
        QCOMPARE(f.diffs(), 0);
        QCOMPARE(found(), QStringLiteral("Diff 0/1|3 rows in 1 blocks|Line ends differ in 3 rows"));
        compare("a\nb\nc", "a\nb\nc\n");
        QCOMPARE(found(), QStringLiteral("Diff 0/1|1 rows in 1 blocks|The last line feed is missing on the left"));
        QCOMPARE(
            f.label(QStringLiteral("diffBanner")),
            QStringLiteral("The lines are equal, their ends are not. | The last line feed is missing on the left"));

        // One difference all through two versions, wherever lines are changed; each new place is one more.
        compare("a\nb\nc\nd\nsame\ne\n", "a\r\nB1\r\nc\r\nd\r\nsame\ne\r\n");
        QCOMPARE(found(), QStringLiteral("Diff 0/3|4 rows in 3 blocks|Line ends differ in 4 rows"));
        QCOMPARE(f.label(QStringLiteral("diffBanner")), QStringLiteral("Line ends differ in 4 rows"));
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
        QCOMPARE(f.position(), QStringLiteral("Diff 0/0"));
    }

    void announcesBinaryContent()
    {
        SessionFixture f;
        const QString text = f.file(QStringLiteral("a"), "text\n");
        const QString binary = f.file(QStringLiteral("b"), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
        f.compare(text, binary);
        DiffView &view = f.session.view();
        QVERIFY(view.scene().document() == nullptr);
        QCOMPARE(view.notice(Side::Right).title(), QStringLiteral("Binary content"));
        const auto buttons = view.notice(Side::Right).findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 2);
        buttons.first()->click();
        QCOMPARE(f.host.opened,
                 (QList<std::pair<QString, SessionPaths>>{{QStringLiteral("binary"), {text, binary, {}}}}));
        buttons.last()->click();
        QVERIFY(view.scene().document() != nullptr);
        QVERIFY(view.notice(Side::Right).isHidden());

        f.compare(text, text);
        f.host.unbuilt = {QStringLiteral("binary")};
        f.compare(text, binary); // announced again
        QVERIFY(view.scene().document() == nullptr);
        QCOMPARE(view.notice(Side::Right).findChildren<QPushButton *>().size(), 1);
    }

    // Runs ------------------------------------------------------------------------------------------------------------

    void cancelsOnASecondPress()
    {
        SessionFixture f;
        const QString small = f.file(QStringLiteral("small"), "1\n");
        f.compare(small, small);
        QSignalSpy messages(&f.session, &SessionWidget::statusMessage);
        const QString large = f.file(QStringLiteral("large"), lines(400'000));
        f.session.setPaths({large, f.file(QStringLiteral("other"), lines(400'000, "LINE ")), {}});
        f.session.onCompare();
        QVERIFY(f.session.isComparing());
        f.session.onCompare();
        QCOMPARE(f.status(), QStringLiteral("Cancelling..."));
        f.wait();
        QCOMPARE(f.status(), QStringLiteral("Compare cancelled"));
        QCOMPARE(f.scene().document()->rowCount(), 1); // the result before stays
        f.session.onExportHtml();
        QVERIFY(f.status() != QStringLiteral("No comparison result to export"));
    }

    void startingAnewDropsTheRunBefore()
    {
        SessionFixture f;
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        const QString large = f.file(QStringLiteral("large"), lines(300'000));
        const QString small = f.file(QStringLiteral("small"), "1\n");
        f.session.setPaths({large, large, {}});
        f.session.start();
        f.session.setPaths({small, small, {}});
        f.session.start();
        f.wait();
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first().first().toString(), small);
    }

    void dropsAResultOfAnotherGeneration()
    {
        SessionFixture f;
        const QString file = f.file(QStringLiteral("a"), "1\n");
        f.compare(file, file);
        const QString before = f.status();
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        f.session.onTextCompareFinished(0, nullptr, QStringLiteral("stale"), {}, {}, true, {}, {});
        QCOMPARE(f.status(), before);
        QVERIFY(f.format() != QStringLiteral("stale"));
        QVERIFY(finished.isEmpty());
    }

    void closingWhileComparingIsSafe()
    {
        auto f = std::make_unique<SessionFixture>();
        const QString large = f->file(QStringLiteral("large"), lines(300'000));
        f->session.setPaths({large, large, {}});
        f->session.onCompare();
        f.reset();
    }

    void reportsAFileThatCannotBeOpened()
    {
        SessionFixture f;
        const QString file = f.file(QStringLiteral("a"), "1\n");
        const QString locked = f.file(QStringLiteral("locked"), "1\n");
        QFile::setPermissions(locked, QFileDevice::Permissions());
        if (QFile(locked).open(QIODevice::ReadOnly))
            QSKIP("this user may read everything");
        f.compare(file, file);
        f.compare(locked, file);
        QCOMPARE(f.status(), QStringLiteral("Cannot open left file: %1").arg(locked));
        f.compare(file, locked);
        QCOMPARE(f.status(), QStringLiteral("Cannot open right file: %1").arg(locked));
        QVERIFY(f.scene().document() != nullptr);
    }

    // Files that change -----------------------------------------------------------------------------------------------

    void asksAboutFilesChangedByOthers()
    {
        SessionFixture f;
        const QString left = f.file(QStringLiteral("a"), "1\n");
        const QString right = f.file(QStringLiteral("b\u202Etxt"), "1\n");
        f.compare(left, right);
        f.session.onCompare();
        f.wait();
        QVERIFY(f.dialogs.asked().isEmpty()); // nothing has changed

        const auto outcome = [&f](ExternalChangeAnswer answer) {
            QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
            f.dialogs.answerNumber(int(answer));
            f.session.onCompare();
            f.wait();
            return finished.isEmpty() ? QStringLiteral("not compared") : f.status().section(u' ', 2, 2);
        };
        f.file(QStringLiteral("a"), "1\n2\n");
        QCOMPARE(outcome(ExternalChangeAnswer::Cancel), QStringLiteral("not compared"));
        QCOMPARE(f.dialogs.asked().last().title, QStringLiteral("External file changed"));
        QCOMPARE(f.dialogs.asked().last().text,
                 QStringLiteral(
                     "Files on disk were modified externally:\n  · Left: %1\n\nReload from disk before comparing?")
                     .arg(QDir::toNativeSeparators(left)));
        QCOMPARE(outcome(ExternalChangeAnswer::KeepLoaded), QStringLiteral("0"));
        QCOMPARE(outcome(ExternalChangeAnswer::Reload), QStringLiteral("1"));

        QFile::remove(right);
        f.file(QStringLiteral("a"), "1\n2\n3\n");
        QCOMPARE(outcome(ExternalChangeAnswer::Cancel), QStringLiteral("not compared"));
        QVERIFY(f.dialogs.asked().last().text.contains(
            QStringLiteral("  · Left: %1\n  · Right: %2\n")
                .arg(QDir::toNativeSeparators(left),
                     QDir::toNativeSeparators(right).replace(u'\u202E', QStringLiteral("[RLO]")))));
    }

    void presetsOfTheBarChangeTheRules()
    {
        SessionFixture f;
        const QString left = f.file(QStringLiteral("a"), "x y\nZ\n");
        f.compare(left, f.file(QStringLiteral("b"), "x  y\nz\n"));
        QVERIFY(f.status().startsWith(QStringLiteral("Compare done: ")));
        auto *menu = f.child<QAction>("settingsAction")->menu();
        QVERIFY(menu);
        const auto pick = [&](const char *text) {
            for (QAction *action : menu->actions()) {
                if (action->text() == QLatin1String(text))
                    action->trigger();
            }
            f.wait();
            return f.status().section(u' ', 2, 2);
        };
        QVERIFY(pick("Strict (all significant)") != QStringLiteral("0"));
        QCOMPARE(pick("Relaxed (ws, case, EOL, blank lines)"), QStringLiteral("0"));
        QCOMPARE(f.session.paths().left, left);
        Q_EMIT menu->aboutToShow();
        QVERIFY(menu->actions().last()->isChecked() && !menu->actions().first()->isChecked());
    }

    void comparesTheClipboard()
    {
        SessionFixture f;
        f.session.show();
        QGuiApplication::clipboard()->setText(QStringLiteral("1\n2\n"));
        QTest::keyClick(&f.pane(Side::Right), Qt::Key_V, Qt::ControlModifier); // into nothing
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{QString(), QStringLiteral("[Clipboard]"), QString()}));
        QVERIFY2(f.status().startsWith(QStringLiteral("Compare done: 2 diffs (added 2")), qPrintable(f.status()));

        QGuiApplication::clipboard()->setText(QStringLiteral("1\nzwei\n"));
        f.session.useClipboardText(Side::Left);
        f.wait();
        QCOMPARE(f.session.paths().left, QStringLiteral("[Clipboard]"));
        QCOMPARE(f.diffs(), 2);
        QGuiApplication::clipboard()->setText(QStringLiteral("something else"));
        f.session.setEditingEnabled(true);
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("x"));
        f.session.onReloadBoth(); // what was taken stays, as it has been edited
        f.wait();
        QCOMPARE(f.scene().document()->source(Side::Left).text(0), QStringLiteral("x1"));
        QVERIFY(f.session.hasUnsavedChanges());
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    // Inputs ----------------------------------------------------------------------------------------------------------

    void browsesForFiles()
    {
        SessionFixture f;
        f.dialogs.answerPath(QStringLiteral("/some/left.txt"));
        f.dialogs.answerNothing();
        f.session.onBrowseLeft();
        f.session.onBrowseRight();
        QCOMPARE(f.dialogs.titles(),
                 (QStringList{QStringLiteral("Select left file"), QStringLiteral("Select right file")}));
        QCOMPARE(f.session.paths(), (SessionPaths{QStringLiteral("/some/left.txt"), QString(), QString()}));
        QVERIFY(!f.session.isComparing());
    }

    void takesDroppedFiles()
    {
        SessionFixture f;
        const QString a = f.file(QStringLiteral("a"), "1\n");
        const QString b = f.file(QStringLiteral("b"), "2\n");
        f.session.show();
        f.session.dropPaths({f.folder.path()}, QPoint(10, 300));
        QCOMPARE(f.status(), QStringLiteral("Folders are not supported here — use the Folder compare tab."));
        QCOMPARE(f.session.paths(), SessionPaths());

        f.session.dropPaths({a}, QPoint(900, 300));
        QCOMPARE(f.session.paths(), (SessionPaths{QString(), a, QString()}));
        QVERIFY(!f.session.isComparing());
        f.session.dropPaths({b}, QPoint(10, 300));
        QCOMPARE(f.session.paths(), (SessionPaths{b, a, QString()}));
        QVERIFY(f.session.isComparing()); // the pair is complete
        f.wait();

        f.session.dropPaths({a, b}, QPoint(900, 300));
        QCOMPARE(f.session.paths(), (SessionPaths{a, b, QString()}));
        f.wait();
        f.session.dropPaths({b}, QPoint(10, 300)); // perhaps the first of two
        QVERIFY(!f.session.isComparing());
    }

    void swapsSides()
    {
        SessionFixture f;
        const QString a = f.file(QStringLiteral("a"), "1\n2\n");
        const QString b = f.file(QStringLiteral("b"), "1\n");
        f.session.setOptions({{QStringLiteral("leftReplaceFind"), QJsonArray{QStringLiteral("2")}},
                              {QStringLiteral("leftReadOnly"), true}});
        f.compare(a, b);
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.session.onSwapSides();
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{b, a, QString()}));
        QVERIFY(f.status().startsWith(QStringLiteral("Compare done: 1 diffs (added 1,")));
        QCOMPARE(titles.last().first().toString(), QStringLiteral("b <-> a"));
        QCOMPARE(f.session.options().value(QStringLiteral("rightReplaceFind")).toArray().size(), 1);
        QVERIFY(f.session.options().value(QStringLiteral("rightReadOnly")).toBool());
        QVERIFY(!f.session.options().value(QStringLiteral("leftReadOnly")).toBool());
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void locksPathsThatAreReadOnly()
    {
        SessionFixture f;
        f.session.setOptions({{QStringLiteral("leftReadOnly"), true}});
        QVERIFY(f.child<QLineEdit>("leftPathEdit")->isReadOnly());
        QVERIFY(!f.child<QLineEdit>("rightPathEdit")->isReadOnly());
    }

    void comparesAnewUnderOtherSettings()
    {
        SessionFixture f;
        f.compareTexts("abCd\n", "abcd\n");
        QCOMPARE(f.diffs(), 1);

        f.session.onSessionSettings(TextSessionSettingsDialog::Importance);
        auto *dialog = f.session.findChild<TextSessionSettingsDialog *>();
        dialog->findChild<QCheckBox *>(QStringLiteral("importantCharacterCase"))->setChecked(false);
        dialog->accept();
        QTRY_VERIFY(f.status().startsWith(QStringLiteral("Compare done: 0 diffs")));
        QVERIFY(f.session.options().value(QStringLiteral("ignoreCase")).toBool());
    }

    // Reports ---------------------------------------------------------------------------------------------------------

    void exportsReports()
    {
        SessionFixture f;
        f.session.onExportHtml();
        QCOMPARE(f.status(), QStringLiteral("No comparison result to export"));
        QVERIFY(f.dialogs.asked().isEmpty());

        f.compareTexts("one\n", "one\n<two>\n");
        const QString report = f.path(QStringLiteral("report.html"));
        f.dialogs.answerPath(report);
        f.session.onExportHtml();
        QCOMPARE(f.dialogs.asked().last().title, QStringLiteral("Export diff report"));
        QCOMPARE(f.dialogs.asked().last().start, f.path(QStringLiteral("diff_report.html")));
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("HTML (*.html)"));
        QTRY_VERIFY(QFileInfo::exists(report));
        const QByteArray page = contentOf(report);
        QVERIFY(page.contains("&lt;two&gt;"));
        QVERIFY(page.contains("Diff summary: 1 total (added 1, removed 0, modified 0)"));
        QVERIFY(page.contains("<title>Velmora — diff report</title>"));

        const QString nowhere = f.path(QStringLiteral("no such folder/report.html"));
        f.dialogs.answerPath(nowhere);
        f.session.onExportHtml();
        const QString failure = QStringLiteral("Cannot write file: %1\n").arg(QDir::toNativeSeparators(nowhere));
        QTRY_VERIFY(f.dialogs.asked().last().text.startsWith(failure)); // and then why, as the system says it
        QVERIFY(f.dialogs.asked().last().text.size() > failure.size());
    }

    void writesAPendingReportOnce()
    {
        SessionFixture f;
        const QString file = f.file(QStringLiteral("a"), "one\n");
        const QString report = f.path(QStringLiteral("report.html"));
        QVERIFY(f.session.setPendingReport(report));
        f.compare(f.path(QStringLiteral("x")), f.path(QStringLiteral("y"))); // fails: the report still waits
        f.compare(file, file);
        QTRY_VERIFY(QFileInfo::exists(report));
        QTRY_COMPARE(f.host.messages,
                     QStringList{QStringLiteral("Report written: %1").arg(QDir::toNativeSeparators(report))});
        QVERIFY(f.status().startsWith(QStringLiteral("Compare done")));
        QVERIFY(QFile::remove(report));
        f.compare(file, file);
        QVERIFY(f.status().startsWith(QStringLiteral("Compare done")));
        QVERIFY(!QFileInfo::exists(report));
    }

    // Navigation ------------------------------------------------------------------------------------------------------

    void stepsThroughDifferences()
    {
        SessionFixture f;
        QByteArray changed = lines(200);
        changed.replace("line 50\n", "");
        changed.replace("line 120\n", "line 120\nnew\nnew 2\n");
        f.compare(f.file(QStringLiteral("a"), lines(200)), f.file(QStringLiteral("b"), changed));
        DiffScene &scene = f.scene();
        QCOMPARE(f.position(), QStringLiteral("Diff 0/2"));
        QCOMPARE(scene.top(), RowPlace());
        f.session.onNextDiff();
        QCOMPARE(f.position(), QStringLiteral("Diff 1/2"));
        QVERIFY(scene.top().index > 20 && scene.top().index < 49);
        f.session.onNextDiff();
        f.session.onNextDiff(); // stays at the last
        QCOMPARE(f.position(), QStringLiteral("Diff 2/2"));
        f.session.onPrevDiff();
        f.session.onPrevDiff();
        QCOMPARE(f.position(), QStringLiteral("Diff 1/2"));

        f.session.onShowDifferences();
        QCOMPARE(scene.layout().count(), 18); // three differences with their context and three folded stretches
        f.session.onNextDiff();
        QCOMPARE(f.position(), QStringLiteral("Diff 2/2"));
        f.session.onShowIdentical();
        QCOMPARE(scene.layout().count(), 199);
        f.session.onShowAll();
        QCOMPARE(scene.layout().count(), 202);

        f.compare(f.session.paths().left, f.session.paths().right);
        QCOMPARE(f.position(), QStringLiteral("Diff 0/2")); // every result starts anew
    }

    void answersToKeys()
    {
        SessionFixture f;
        f.session.show();
        f.session.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.session));
        QByteArray changed = lines(50);
        changed.replace("line 10\n", "");
        changed.replace("line 30\n", "");
        f.session.setPaths({f.file(QStringLiteral("a"), lines(50)), f.file(QStringLiteral("b"), changed), {}});
        QTest::keyClick(&f.session, Qt::Key_F5);
        f.wait();
        QCOMPARE(f.position(), QStringLiteral("Diff 0/2"));
        QWidget &pane = f.pane(Side::Left);
        pane.setFocus();
        QTest::keyClick(&pane, Qt::Key_F8);
        QTest::keyClick(&pane, Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(f.position(), QStringLiteral("Diff 2/2"));
        QTest::keyClick(&pane, Qt::Key_F8, Qt::ShiftModifier);
        QCOMPARE(f.position(), QStringLiteral("Diff 1/2"));
        QTest::keyClick(&pane, Qt::Key_F6);
        QVERIFY(f.pane(Side::Right).hasFocus());
        QTest::keyClick(&f.pane(Side::Right), Qt::Key_F6);
        QVERIFY(pane.hasFocus());
        const qreal size = f.session.view().fontPointSize();
        QTest::keyClick(&pane, Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(f.session.view().fontPointSize() > size);
        QTest::keyClick(&pane, Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(f.session.view().fontPointSize(), size);

        f.session.setPaths(
            {f.file(QStringLiteral("c"), lines(300'000)), f.file(QStringLiteral("d"), lines(300'000)), {}});
        QTest::keyClick(&pane, Qt::Key_F5);
        QVERIFY(f.session.isComparing());
        QTest::keyClick(&pane, Qt::Key_Escape);
        QCOMPARE(f.status(), QStringLiteral("Cancelling..."));
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
        QCOMPARE(f.position(), QStringLiteral("Diff 1/2"));
        field->setFocus();
        QTest::keyClick(field, Qt::Key_F8);
        QCOMPARE(f.position(), QStringLiteral("Diff 1/2"));
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
        f.session.resize(160 * letter, 500);
        QTRY_VERIFY(encoding->isVisible() && !isBelow());
        f.session.resize(60 * letter, 500);
        QTRY_VERIFY(!encoding->isVisible() && isBelow());
        QTRY_VERIFY(path->width() > 15 * path->fontMetrics().averageCharWidth());
        const auto boxes = f.session.findChildren<QCheckBox *>();
        for (const QCheckBox *box : boxes)
            QTRY_VERIFY(box->width() >= box->sizeHint().width());
        QCOMPARE(boxes.size(), 3);
        f.session.resize(160 * letter, 500);
        QTRY_VERIFY(encoding->isVisible() && !isBelow());
    }

    void staysAtItsPlaceWhenTheSameFilesAreComparedAgain()
    {
        SessionFixture f;
        const QString a = f.file(QStringLiteral("a"), lines(500));
        f.compare(a, a);
        DiffScene &scene = f.scene();
        scene.scrollToTop(300);
        f.session.onReloadBoth();
        f.wait();
        QCOMPARE(scene.top().index, 300);
        f.compare(a, f.file(QStringLiteral("b"), lines(500)));
        QCOMPARE(scene.top(), RowPlace());
    }
};

VELMORA_TEST(TextCompareWidgetTest)
#include "text_compare_widget_test.moc"
