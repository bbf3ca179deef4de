#include "core/settings_store.h"
#include "folder/actions/advanced_filters_dialog.h"
#include "folder/actions/compare_contents_dialog.h"
#include "folder/actions/contents_results_dialog.h"
#include "folder/actions/manual_alignment_dialog.h"
#include "folder/actions/operation_results_dialog.h"
#include "folder/actions/plan_preview_dialog.h"
#include "folder/actions/plan_preview_model.h"
#include "folder/actions/properties_dialog.h"
#include "folder/actions/step_counter.h"
#include "folder/engine/folder_engine.h"
#include "folder/operations/operation_executor.h"
#include "folder_operations/operation_fixture.h"
#include "support/diff_items.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"
#include "vfs/place/snapshot_source.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QClipboard>
#include <QDateTimeEdit>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTreeView>

using namespace velmora;
using namespace velmora::test;

namespace {

template <typename Widget>
Widget &get(const QWidget &in, const char *name)
{
    auto *widget = in.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no control is named %s", name);
    return *widget;
}

void click(const QWidget &in, const char *name)
{
    get<QAbstractButton>(in, name).click();
}

QStringList names(const QList<FolderDiffItem> &items)
{
    QStringList list;
    for (const FolderDiffItem &one : items)
        list.append(one.name);
    return list;
}

/// A plan of made-up steps below two roots.
OperationPlan plan(int files, OperationKind kind)
{
    OperationPlan made;
    made.roots = {{word("/l"), std::nullopt, true}, {word("/r"), std::nullopt, true}};
    made.isSurveyed = true;
    for (int i = 0; i < files; ++i) {
        OperationStep step;
        step.kind = kind;
        const QString name = word("file%1").arg(i, 6, 10, QChar(u'0'));
        const bool deletes = kind == OperationKind::Delete;
        step.from = {deletes ? 1 : 0, name};
        if (!deletes)
            step.to = {1, name};
        step.fromSeen.state = SeenEntry::State::Exact;
        step.fromSeen.size = (i * 7919) % 1000;
        step.toSeen = kind == OperationKind::Replace ? step.fromSeen : SeenEntry::absent();
        made.steps.append(step);
    }
    return made;
}

} // namespace

class ActionDialogsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { SessionSettings().clear(); }

    void contentsAreCountedWhileTheQuestionIsOpen()
    {
        OperationFixture files;
        files.make("left/sub/a=12345 left/sub/deep/b=1 left/c=22 right/only/d=333 right/sub/x=9");
        const FolderInput input = between(files.left(), files.right(), CompareMethod::Binary);
        const QList<FolderDiffItem> all = compareFolderTree(input);
        // What lies in a selected folder is selected with it, and counts once.
        CompareContentsDialog dialog(sourcesOf(input.roots), all, CompareMethod::Crc);
        dialog.open();
        QCOMPARE(dialog.windowTitle(), word("Compare contents"));
        QTRY_COMPARE(get<QLabel>(dialog, "contentsTotals").text(), word("4 files, 3 folders, 11 bytes"));
        QVERIFY(get<QRadioButton>(dialog, "contentsCrc").isChecked());
        click(dialog, "contentsRules");
        QVERIFY(dialog.showsResults());
        click(dialog, "contentsShowResults");
        QSignalSpy accepted(&dialog, &QDialog::accepted);
        click(dialog, "contentsStart");
        QCOMPARE(accepted.size(), 1);
        QCOMPARE(dialog.method(), CompareMethod::Rules);
        QVERIFY(!CompareContentsDialog(sourcesOf(input.roots), all, CompareMethod::Binary).showsResults());
    }

    void closingEndsTheCounting()
    {
        OperationFixture files;
        for (int i = 0; i < 300; ++i)
            files.make(qPrintable(word("left/sub%1/f=1").arg(i)));
        const FolderInput input = between(files.left(), files.right());
        CompareContentsDialog dialog(sourcesOf(input.roots), compareFolderLevel(input), CompareMethod::Rules);
        dialog.open();
        dialog.reject();
        QCoreApplication::processEvents();
        QVERIFY(get<QLabel>(dialog, "contentsTotals").text().startsWith(QLatin1String("Counting...")));
    }

    void resultsListWhatDiffers()
    {
        ContentsResults results;
        results.same = 1200;
        results.different = 2;
        results.cancelled = true;
        results.differing = {word("a"), word("b/c")};
        ContentsResultsDialog dialog(results);
        QCOMPARE(get<QLabel>(dialog, "contentsSame").text(), QLocale().toString(1200));
        QCOMPARE(get<QListView>(dialog, "contentsDifferingList").model()->rowCount(), 2);
        QVERIFY(!dialog.findChild<QListView *>(word("contentsUnreadableList")));
    }

    void limitsComeBackAsTheyWere()
    {
        FolderViewLimits limits;
        QVERIFY(!AdvancedFiltersDialog(limits).limits().from.isValid());
        QCOMPARE(AdvancedFiltersDialog(limits).limits().maximumSize, 0);
        limits.masks = word("*.c");
        limits.minimumSize = 1;
        limits.maximumSize = 5000;
        limits.from = QDateTime(QDate(2024, 3, 1), QTime(10, 11, 12, 13), Qt::UTC);
        limits.to = limits.from.addDays(1);
        AdvancedFiltersDialog dialog(limits);
        QCOMPARE(get<QSpinBox>(dialog, "maximumSize").text(), word("5 KB"));
        const FolderViewLimits back = dialog.limits();
        QCOMPARE(back.masks, limits.masks);
        QCOMPARE(back.minimumSize, limits.minimumSize);
        QCOMPARE(back.maximumSize, limits.maximumSize);
        QCOMPARE(back.from, limits.from);
        QCOMPARE(back.to, limits.to);
        click(dialog, "clearLimits");
        QCOMPARE(dialog.limits().minimumSize, 0);
        QCOMPARE(dialog.limits().maximumSize, 0);
        QVERIFY(!dialog.limits().from.isValid() && !dialog.limits().to.isValid());
        QCOMPARE(get<QSpinBox>(dialog, "minimumSize").text(), word("Any"));
    }

    void limitsAreChosenAndJudged()
    {
        AdvancedFiltersDialog dialog(FolderViewLimits{});
        QCOMPARE(dialog.windowTitle(), word("Advanced filters"));
        get<QSpinBox>(dialog, "minimumSize").setValue(10);
        get<QSpinBox>(dialog, "maximumSize").setValue(9);
        QVERIFY(!get<QPushButton>(dialog, "settingsOk").isEnabled());
        QVERIFY(!get<QLabel>(dialog, "limitsVerdict").text().isEmpty());
        get<QSpinBox>(dialog, "maximumSize").setValue(10);
        QVERIFY(get<QPushButton>(dialog, "settingsOk").isEnabled());
        click(dialog, "fromTimeEnabled");
        click(dialog, "toTimeEnabled");
        const QDateTime time(QDate(2024, 5, 6), QTime(7, 8));
        get<QDateTimeEdit>(dialog, "fromTime").setDateTime(time);
        get<QDateTimeEdit>(dialog, "toTime").setDateTime(time);
        QCOMPARE(get<QDateTimeEdit>(dialog, "toTime").text(), word("2024/05/06 07:08"));
        const FolderViewLimits limits = dialog.limits();
        QCOMPARE(limits.minimumSize, 10 * 1024);
        QCOMPARE(limits.from, time);
        QCOMPARE(limits.to, time.addSecs(59).addMSecs(999)); // the minute counts to its end
        QCOMPARE(advancedFiltersLogLine(limits, QTime(1, 2, 3)),
                 word("01:02:03 filters updated: size[10-10 KB] date[2024/05/06 07:08 ~ 2024/05/06 07:08]"));
        QCOMPARE(advancedFiltersLogLine({}, QTime(13, 0)),
                 word("13:00:00 filters updated: size[Any-Any KB] date[Any ~ Any]"));
        get<QDateTimeEdit>(dialog, "toTime").setDateTime(time.addSecs(-60));
        QVERIFY(!get<QPushButton>(dialog, "settingsOk").isEnabled());
    }

    void alignmentOffersWhatIsUniqueAtTheSameLevel()
    {
        const QList<FolderDiffItem> items =
            madeItems("=sub/|<sub/notes.txt|>sub/folder/|>sub/zebra|>sub/notes2.txt|=sub/pair|<sub/left|>top.txt|"
                      ">sub/deep/notes.txt");
        QCOMPARE(names(alignmentCandidates(items[1], items)), words("sub/notes2.txt|sub/zebra|sub/folder"));
        QCOMPARE(names(alignmentCandidates(items[4], items)), words("sub/notes.txt|sub/left"));
        QVERIFY(alignmentCandidates(items[5], items).isEmpty());
    }

    void alignmentIsAskedOrTold()
    {
        const QList<FolderDiffItem> items = madeItems("<a|>b|>dir/|=pair");
        ScriptedDialogs answers;
        QWidget window;
        window.show();
        QStringList aligned;
        const auto ask = [&](const QList<FolderDiffItem> &selection, const QList<FolderDiffItem> &all) {
            askManualAlignment(window, selection, all, [&aligned](const QString &left, const QString &right) {
                aligned = QStringList{left, right};
            });
        };
        ask({items[3]}, items);
        ask({}, items);
        QCOMPARE(answers.titles(), words("Manual alignment|Manual alignment"));
        QCOMPARE(answers.asked().first().text,
                 QStringLiteral("Select a left-only or right-only item, then pair it with an item unique on the other "
                                "side."));
        ask({items[0]}, {items[0], items[3]});
        QCOMPARE(answers.asked().last().text, word("No unique items on the other side at this level to pair with."));
        ask({items[1], items[0]}, items); // both are selected: nothing to choose
        QCOMPARE(aligned, words("a|b"));

        aligned.clear();
        ask({items[1]}, items);
        auto *dialog = window.findChild<ManualAlignmentDialog *>();
        QVERIFY(dialog);
        const auto &list = get<QListView>(*dialog, "alignmentCandidates");
        QCOMPARE(list.model()->index(0, 0).data().toString(), word("a  (1 bytes)"));
        dialog->accept();
        QCOMPARE(aligned, words("a|b"));
        ask({items[0]}, items);
        dialog = window.findChildren<ManualAlignmentDialog *>().last();
        QCOMPARE(get<QListView>(*dialog, "alignmentCandidates").model()->index(1, 0).data().toString(),
                 word("dir  (<folder>)"));
    }

    void aPlanIsShownInGroups()
    {
        OperationPlan mixed = plan(2, OperationKind::Delete);
        mixed.steps.append(plan(3, OperationKind::Replace).steps);
        mixed.steps.append(plan(1, OperationKind::Copy).steps);
        mixed.leftOut.append({LeftOutReason::TimesAreEqual, word("/l/x"), {}});
        PlanPreviewModel model(mixed);
        const QAbstractItemModelTester tester(&model);
        QStringList groups;
        for (int row = 0; row < model.rowCount(); ++row)
            groups.append(model.index(row, 0).data().toString());
        QCOMPARE(model.rowCount(model.index(1, 0)), 3);
        QCOMPARE(model.rowCount(), 4);
        QVERIFY(groups[0].startsWith(QLatin1String("Deleted: 2")));
        QVERIFY(groups[1].startsWith(QLatin1String("Replaced: 3")));
        QVERIFY(groups[3].startsWith(QLatin1String("Left alone:")));
        QCOMPARE(model.index(0, 2, model.index(3, 0)).data().toString(),
                 word("The files differ, and neither is newer"));

        model.sort(PlanPreviewModel::Size, Qt::DescendingOrder);
        const QModelIndex replaced = model.index(1, 0);
        QCOMPARE(model.index(0, 0, replaced).data().toString(), word("file000001"));
        model.sort(-1, Qt::AscendingOrder);
        QCOMPARE(model.index(0, 0, replaced).data().toString(), word("file000000"));
    }

    void aLongPlanIsShownAtOnce()
    {
        PlanPreviewDialog dialog(word("title"), word("question"), word("go"), plan(100'000, OperationKind::Copy));
        dialog.open();
        auto &list = get<QTreeView>(dialog, "planList");
        QAbstractItemModel &model = *list.model();
        QCOMPARE(model.rowCount(model.index(0, 0)), 100'000);
        list.scrollToBottom();
        list.sortByColumn(PlanPreviewModel::Size, Qt::AscendingOrder);
        QCOMPARE(model.index(0, PlanPreviewModel::Size, model.index(0, 0)).data().toString(),
                 QLocale().formattedDataSize(0));
        QVERIFY(get<QPushButton>(dialog, "planCancel").isDefault());
        QVERIFY(!get<QPushButton>(dialog, "planStart").autoDefault());
    }

    void failuresAreCopiedAsText()
    {
        OperationResultsDialog dialog(word("Copy failed"), word("heading"),
                                      {{word("/a"), word("why")}, {word("/b"), word("because")}});
        click(dialog, "resultsCopy");
        QCOMPARE(QGuiApplication::clipboard()->text(), word("/a\twhy\n/b\tbecause\n"));
    }

    void propertiesTellWhatIsThere()
    {
        OperationFixture files;
        files.make("left/sub/a=12345");
        const QString path = files.path(word("left/sub/a"));
        const QStringList file = propertiesText(localFolder(path)).split(u'\n');
        QCOMPARE(file[0], QLatin1String("Path: ") + QDir::toNativeSeparators(path));
        QCOMPARE(file[1], word("Type: File"));
        QCOMPARE(file[2], word("Size: 5 bytes"));
        QVERIFY(file[3].startsWith(QLatin1String("Modified: ")) && file[3].size() > 12);
        QCOMPARE(file[4], word("Read-only: No"));
        const QStringList folder = propertiesText(localFolder(files.path(word("left/sub")))).split(u'\n');
        QCOMPARE(folder[1], word("Type: Folder"));
        QCOMPARE(folder[2], word("Size: <folder>"));
        PropertiesDialog dialog({localFolder(path), {}});
        QCOMPARE(dialog.windowTitle(), word("Properties"));
        QCOMPARE(get<QLabel>(dialog, "leftProperties").text(), file.join(u'\n'));
        QVERIFY(!dialog.findChild<QLabel *>(word("rightProperties")));

        FolderSnapshot snapshot{word("/was"), word("2024-05-06T07:08:09"), {}};
        snapshot.entries.push_back({word("d/a"), 4321, 1'700'000'000'000});
        snapshot.entries.push_back({word("d/b"), 0, std::nullopt});
        Location place = Location::ofFolder(files.path(word("of.kvsnapshot")));
        place.kind = Location::Kind::OtherTree;
        const auto source = std::make_shared<const SnapshotSource>(place, snapshot);
        const QStringList recorded = propertiesText({source, word("/d/a")}).split(u'\n');
        QCOMPARE(recorded[0], QLatin1String("Path: ") + place.place + QLatin1String("/d/a"));
        QVERIFY(recorded[1].startsWith(QLatin1String("In: the snapshot ") + place.shown + QLatin1String(" of ")));
        QCOMPARE(recorded[3], word("Size: %1 bytes").arg(QLocale().toString(4321)));
        QVERIFY(recorded[4].contains(word("2023")) || recorded[4].contains(word("23")));
        QCOMPARE(propertiesText({source, word("/d/b")}).split(u'\n')[4], word("Modified: not known"));
        QCOMPARE(propertiesText({source, word("/d")}).split(u'\n')[2], word("Type: Folder"));
    }

    void progressIsCountedInStepsAndBytes()
    {
        OperationPlan copies = plan(3, OperationKind::Copy);
        for (int i = 0; i < 3; ++i)
            copies.steps[i].fromSeen.size = 1000 * (i + 1);
        copies.steps.append(plan(1, OperationKind::Delete).steps);
        const StepCounter::Clock::time_point start = StepCounter::Clock::now();
        StepCounter counter(copies, start);
        const int working = int(OperationPhase::Working);
        const qint64 total = 4 * bytesForEachStep + 6000;
        FolderActionProgress progress = counter.count({int(OperationPhase::Surveying), 1, 4, {}}, start);
        QCOMPARE(progress.filesTotal, 0);
        progress = counter.count({working, 999, total, {}}, start + std::chrono::seconds(1));
        QCOMPARE(progress.filesDone, 0);
        QCOMPARE(progress.bytesDone, 999);
        QVERIFY(!progress.secondsLeft);
        progress = counter.count({working, bytesForEachStep + 1000 + 500, total, {}}, start + std::chrono::seconds(1));
        QCOMPARE(progress.filesDone, 1);
        progress = counter.count({working, total / 2, total, {}}, start + std::chrono::seconds(30));
        QCOMPARE(progress.filesTotal, 4);
        QCOMPARE(progress.bytesTotal, 6000);
        QCOMPARE(progress.secondsLeft, 30);
        progress = counter.count({working, total, total, {}}, start + std::chrono::seconds(60));
        QCOMPARE(progress.filesDone, 4);
        QCOMPARE(progress.bytesDone, 6000);
        QCOMPARE(progress.secondsLeft, 0);
    }
};

VELMORA_TEST(ActionDialogsTest)
#include "action_dialogs_test.moc"
