// Measures how long the event loop stands still while the result of a scan with very many files is shown and worked
// with: the longest time between two turns, for each step.
//
//     benchmark_usage_view [files] [rounds]        1,000,000 files in folders of 40 and 5 rounds unless told otherwise

#include "folder/usage/usage_view.h"

#include "folder/usage/usage_map.h"
#include "longest_turn.h"
#include "session/list/tree_view.h"

#include <QApplication>
#include <QLineEdit>
#include <QTextStream>

#include <memory>
#include <vector>

using namespace velmora;

namespace {

/// Files of falling size, of which each 40 are in a folder, and each 40 folders in another.
SharedUsage madeResult(int files)
{
    constexpr int inFolder = 40;
    constexpr qint64 fileSize = 1000;
    auto result = std::make_shared<UsageResult>();
    UsageTree tree(QStringLiteral("/made"));
    const auto append = [&tree](qint32 parent, qint64 size, bool isFolder, int number) {
        UsageTree::Node node;
        node.parent = parent;
        node.size = size;
        node.isFolder = isFolder;
        tree.append(node, QString(QStringLiteral("name%1.txt").arg(number)));
        return tree.size() - 1;
    };
    append(-1, files * fileSize, true, 0);
    qint32 outer = 0;
    qint32 inner = 0;
    for (int file = 0; file < files; ++file) {
        if (file % (inFolder * inFolder) == 0)
            outer = append(0, inFolder * inFolder * fileSize, true, file);
        if (file % inFolder == 0)
            inner = append(outer, inFolder * fileSize, true, file);
        append(inner, fileSize, false, file);
    }
    tree.complete();
    result->usage.tree = std::move(tree);
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int files = arguments.value(1, QStringLiteral("1000000")).toInt();
    const int rounds = arguments.value(2, QStringLiteral("5")).toInt();

    UsageView view;
    view.resize(1280, 800);
    view.show();
    auto &tree = *view.findChild<TreeView *>(QStringLiteral("usageTree"));
    auto &model = static_cast<TreeModel &>(*tree.model());
    auto &filter = *view.findChild<QLineEdit *>(QStringLiteral("usageFilter"));
    SharedUsage result;
    bool isFiltered = true;
    QObject::connect(&model, &TreeModel::filtered, &view, [&isFiltered] { isFiltered = true; });
    const auto filterBy = [&](const QString &words) {
        isFiltered = false;
        filter.setText(words);
    };
    struct Step {
        const char *name;
        std::function<void()> prepare;
        std::function<void()> work;
    };
    const auto nothing = [] {};
    const Step steps[] = {
        {"show a result", [&] { result = madeResult(files); }, [&] { view.setResult(result); }},
        {"open everything", nothing, [&] { model.setAllExpanded(-1, true); }},
        {"go to the last row", nothing, [&] { tree.goToRow(model.rowCount() - 1); }},
        {"close the first folder", nothing, [&] { model.setExpanded(1, false); }},
        {"look for a word", nothing, [&] { filterBy(QStringLiteral("9999")); }},
        {"show all again", nothing, [&] { filterBy({}); }},
        {"close everything", nothing, [&] { model.setAllExpanded(0, false); }},
    };
    QTextStream out(stdout);
    out << files << " files, longest turn of the event loop in ms: least and most of " << rounds << " rounds\n";
    std::vector<double> least(std::size(steps), 1e9);
    std::vector<double> most(std::size(steps), 0);
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < std::size(steps); ++i) {
            steps[i].prepare();
            const double turn = longestTurn(steps[i].work, [&isFiltered] { return isFiltered; });
            least[i] = std::min(least[i], turn);
            most[i] = std::max(most[i], turn);
        }
    }
    for (std::size_t i = 0; i < std::size(steps); ++i)
        out << QStringLiteral("%1 %2  %3\n")
                   .arg(least[i], 7, 'f', 1)
                   .arg(most[i], 7, 'f', 1)
                   .arg(QLatin1String(steps[i].name));
    constexpr double longestAllowed = 50;
    return *std::max_element(least.begin(), least.end()) <= longestAllowed ? 0 : 1;
}
