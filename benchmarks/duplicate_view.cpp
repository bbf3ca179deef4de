// Measures how long the event loop stands still in a duplicate finder with very many groups: the longest time between
// two turns, for each step, in the session itself on files that are really there.
//
//     benchmark_duplicate_view [groups] [rounds]       60,000 groups and 3 rounds unless told otherwise
//
// Each round scans, shows, sorts, filters, ticks and deletes one file of each group. The files are made in
// the folder for temporary ones (TMPDIR), two for each group.

#include "folder/duplicates/duplicate_view.h"

#include "folder/duplicates/duplicate_finder_widget.h"
#include "folder/duplicates/keep_folders_dialog.h"
#include "longest_turn.h"
#include "platform/thread_end.h"
#include "session/dialogs.h"
#include "session/session_host.h"
#include "session/session_record.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextStream>
#include <QToolButton>

#include <vector>

using namespace velmora;

namespace {

constexpr double longestAllowed = 50;

class NoWindow final : public SessionHost {
public:
    void openSession(const QString & /*kind*/, const SessionPaths & /*paths*/) override {}
    void showStatus(const QString & /*message*/, int /*milliseconds*/) override {}
};

/// Says yes to everything.
class Yes final : public Dialogs {
public:
    void ask(QWidget * /*parent*/, Tone /*tone*/, const QString & /*title*/, const QString & /*text*/,
             const QList<Choice> & /*choices*/, ChoiceAnswer answered) override
    {
        answered(1);
    }
};

void makeFiles(const QString &folder, int groups)
{
    constexpr int inFolder = 100;
    for (int number = 0; number < groups; ++number) {
        for (const char *half : {"first", "second"}) {
            const QString place = QStringLiteral("%1/%2/%3").arg(folder, QLatin1String(half)).arg(number / inFolder);
            if (number % inFolder == 0 && !QDir().mkpath(place))
                qFatal("cannot make folders");
            QFile file(QStringLiteral("%1/file number %2.txt").arg(place).arg(number));
            if (!file.open(QIODevice::WriteOnly))
                qFatal("cannot write");
            file.write(QByteArray::number(number).rightJustified(8 + number % 1000, '.'));
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    orderEndOfThreads();
    QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int groups = arguments.value(1, QStringLiteral("60000")).toInt();
    const int rounds = arguments.value(2, QStringLiteral("3")).toInt();
    const QTemporaryDir files;
    makeFiles(files.path(), groups);

    Yes yes;
    Dialogs::install(&yes);
    NoWindow host;
    DuplicateFinderWidget session(host);
    session.resize(1280, 800);
    session.show();
    session.setPaths({files.path(), {}, {}});
    auto &view = *session.findChild<DuplicateView *>();
    auto &model = static_cast<TreeModel &>(*view.model());
    auto &filter = *session.findChild<QLineEdit *>(QStringLiteral("filterBox"));
    auto &deletes = *session.findChild<QAction *>(QStringLiteral("deleteExtraAction"));
    const QMenu &rules = *session.findChild<QToolButton *>(QStringLiteral("rulesButton"))->menu();
    bool isFiltered = true;
    QObject::connect(&model, &TreeModel::filtered, &view, [&isFiltered] { isFiltered = true; });
    const auto filterBy = [&](const QString &words) {
        isFiltered = false;
        filter.setText(words);
    };
    const auto nothing = [] {};
    const auto atOnce = [] { return true; };
    const auto hasRead = [&] { return !session.isReading(); };
    const auto hasFiltered = [&isFiltered] { return isFiltered; };
    const auto hasDeleted = [&] { return !session.hasUnsavedChanges(); };
    const auto rule = [&rules](int number) { rules.actions().at(number)->trigger(); };
    const auto closeDialog = [&] { session.findChild<KeepFoldersDialog *>()->accept(); };

    struct Step {
        const char *name;
        std::function<void()> prepare; ///< what is not measured
        std::function<void()> work;
        std::function<bool()> isDone;
    };
    const Step steps[] = {
        {"scan and show", nothing, [&] { session.start(); }, hasRead},
        {"sort by name", nothing, [&] { view.sortByColumn(0, Qt::AscendingOrder); }, atOnce},
        {"sort by size", nothing, [&] { view.sortByColumn(1, Qt::DescendingOrder); }, atOnce},
        {"sort by time", nothing, [&] { view.sortByColumn(2, Qt::DescendingOrder); }, atOnce},
        {"back to its own order", nothing, [&] { view.sortByColumn(-1, Qt::AscendingOrder); }, atOnce},
        {"go to the last row", nothing, [&] { view.goToRow(model.rowCount() - 1); }, atOnce},
        {"look for a word", nothing, [&] { filterBy(QStringLiteral("777")); }, hasFiltered},
        {"show all again", nothing, [&] { filterBy({}); }, hasFiltered},
        {"close all groups", nothing, [&] { model.setAllExpanded(-1, false); }, atOnce},
        {"open all groups", nothing, [&] { model.setAllExpanded(-1, true); }, atOnce},
        {"show ticks", nothing, [&] { deletes.setChecked(true); }, atOnce},
        {"keep the newest", nothing, [&] { rule(0); }, atOnce},
        {"keep the shortest path", nothing, [&] { rule(2); }, atOnce},
        {"keep those in folders", [&] { rule(3); }, closeDialog, atOnce},
        {"select all and tick", [&] { view.selectAll(); }, [&] { Q_EMIT view.checkWanted(view.selectedNodes(), true); },
         atOnce},
        {"uncheck all", nothing, [&] { rule(5); }, atOnce},
        {"delete one of each group", [&] { rule(0); },
         [&] { session.findChild<QPushButton *>(QStringLiteral("deleteButton"))->click(); }, hasDeleted},
    };
    QTextStream out(stdout);
    out << groups << " groups, longest turn of the event loop in ms: least and most of " << rounds << " rounds\n";
    std::vector<double> least(std::size(steps), 1e9);
    std::vector<double> most(std::size(steps), 0);
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < std::size(steps); ++i) {
            steps[i].prepare();
            QCoreApplication::processEvents();
            const double turn = longestTurn(steps[i].work, steps[i].isDone);
            least[i] = std::min(least[i], turn);
            most[i] = std::max(most[i], turn);
        }
        if (round == 0)
            out << session.findChild<QLabel *>(QStringLiteral("statusLabel"))->text() << Qt::endl;
        makeFiles(files.path(), groups);
        deletes.setChecked(false);
    }
    for (std::size_t i = 0; i < std::size(steps); ++i)
        out << QStringLiteral("%1 %2  %3\n")
                   .arg(least[i], 7, 'f', 1)
                   .arg(most[i], 7, 'f', 1)
                   .arg(QLatin1String(steps[i].name));
    return *std::max_element(least.begin(), least.end()) <= longestAllowed ? 0 : 1;
}
