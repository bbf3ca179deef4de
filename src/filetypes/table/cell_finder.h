#pragma once

#include "core/runner.h"
#include "filetypes/table/cell_search.h"

#include <QObject>

#include <vector>

namespace velmora {

class FindBar;
class TableGrids;
class TableScene;

/// Finding text in the cells of a table comparison: the bar in which a person says what, the matches, found on a
/// worker, and the way from one to the next.
class CellFinder final : public QObject {
    Q_OBJECT
public:
    CellFinder(FindBar &bar, TableScene &scene, TableGrids &grids, QObject *parent = nullptr);

    void open();
    void close();
    void next();
    void previous();

private:
    void search();
    void take(std::vector<CellMatch> &&matches);
    /// Goes to the match of that number, or the last or first one beyond them.
    void goTo(qsizetype match);
    /// The first match behind the current cell.
    [[nodiscard]] qsizetype nextFromHere() const;

    FindBar &m_bar;
    TableScene &m_scene;
    TableGrids &m_grids;
    std::vector<CellMatch> m_matches;
    qsizetype m_current = -1;
    bool m_goesToFirst = false; ///< as soon as the search has ended
    Runner m_runner;
};

} // namespace velmora
