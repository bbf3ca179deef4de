// Measures how long the event loop stands still while a folder comparison with very many entries is shown and worked
// with: the longest time between two turns, for each step.
//
//     folder_view [entries] [rounds]        200,000 entries and 5 rounds unless told otherwise
//
// The exit status is 1 when a step took more than 50 ms in every round: what happens in one round only is the
// machine's.

#include "../longest_turn.h"
#include "folder/compare/folder_comparison.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/tree_line_tree_widget.h"
#include "folder_engine/made_trees.h"
#include "platform/thread_end.h"
#include "vfs/local_folder.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <functional>

using namespace velmora;

namespace {

constexpr double longestAllowed = 50;

} // namespace

int main(int argc, char **argv)
{
    orderEndOfThreads();
    QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int entries = arguments.value(1, QStringLiteral("200000")).toInt();
    const int rounds = arguments.value(2, QStringLiteral("5")).toInt();

    FolderComparison comparison;
    FolderView view(comparison);
    view.resize(1280, 800);
    view.show();
    FolderSpec spec;
    spec.roots = localFolders(QStringLiteral("/l"), QStringLiteral("/r"));
    FolderSpec masked = spec;
    masked.filters.limits.masks = QStringLiteral("*1*");

    bool filtered = true;
    QObject::connect(&comparison, &FolderComparison::filtered, &view, [&filtered] { filtered = true; });
    const auto always = [] { return true; };
    const auto isFiltered = [&filtered] { return filtered; };
    const auto filterBy = [&](const FolderSpec &wanted) {
        filtered = false;
        comparison.refilter(wanted);
    };
    FolderRowsModel &rows = view.rows();
    FolderTree delivered;
    struct Step {
        const char *name;
        std::function<void()> prepare;
        std::function<void()> work;
        std::function<bool()> isDone;
    };
    const auto nothing = [] {};
    const Step steps[] = {
        {"take a delivered result", [&] { delivered = FolderTree(test::largeResult(entries)); },
         [&] { comparison.show(spec, std::move(delivered)); }, always},
        {"expand all", nothing, [&] { rows.setAllExpanded(-1, true); }, always},
        {"show differences", nothing, [&] { rows.setView(RowsView::Differences); }, always},
        {"show all", nothing, [&] { rows.setView(RowsView::All); }, always},
        {"filter by a mask", nothing, [&] { filterBy(masked); }, isFiltered},
        {"drop the filter", nothing, [&] { filterBy(spec); }, isFiltered},
        {"select all", nothing, [&] { view.leftPane().selectAll(); }, always},
        {"close the first folder", nothing, [&] { rows.setExpanded(0, false); }, always},
        {"open the first folder", nothing, [&] { rows.setExpanded(0, true); }, always},
        {"scroll to the end", nothing,
         [&] {
             QScrollBar *bar = view.rightPane().verticalScrollBar();
             bar->setValue(bar->maximum());
         },
         always},
        {"patch one entry", nothing, [&] { comparison.recompare(QStringList{QStringLiteral("nowhere")}); },
         [&] { return !comparison.isRunning(); }},
        {"collapse all", nothing, [&] { rows.setAllExpanded(-1, false); }, always},
    };
    QTextStream out(stdout);
    out << entries << " entries, longest turn of the event loop in ms: least and most of " << rounds << " rounds\n";
    std::vector<double> least(std::size(steps), 1e9);
    std::vector<double> most(std::size(steps), 0);
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < std::size(steps); ++i) {
            steps[i].prepare();
            const double turn = longestTurn(steps[i].work, steps[i].isDone);
            least[i] = std::min(least[i], turn);
            most[i] = std::max(most[i], turn);
        }
    }
    for (std::size_t i = 0; i < std::size(steps); ++i)
        out << QStringLiteral("%1 %2  %3\n")
                   .arg(least[i], 7, 'f', 1)
                   .arg(most[i], 7, 'f', 1)
                   .arg(QLatin1String(steps[i].name));
    return *std::max_element(least.begin(), least.end()) <= longestAllowed ? 0 : 1;
}
