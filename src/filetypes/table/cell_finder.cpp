#include "filetypes/table/cell_finder.h"

#include "filetypes/table/table_grids.h"
#include "filetypes/table/table_scene.h"
#include "session/find/find_bar.h"

#include <algorithm>

namespace velmora {

CellFinder::CellFinder(FindBar &bar, TableScene &scene, TableGrids &grids, QObject *parent)
    : QObject(parent), m_bar(bar), m_scene(scene), m_grids(grids)
{
    m_bar.hide();
    connect(&bar, &FindBar::queryChanged, this, [this] {
        m_goesToFirst = true;
        search();
    });
    connect(&bar, &FindBar::nextWanted, this, &CellFinder::next);
    connect(&bar, &FindBar::previousWanted, this, &CellFinder::previous);
    connect(&bar, &FindBar::closeWanted, this, &CellFinder::close);
    connect(&scene, &TableScene::changed, this, &CellFinder::search);
}

void CellFinder::open()
{
    m_bar.open({});
    search();
}

void CellFinder::close()
{
    m_runner.cancel();
    m_bar.hide();
    m_grids.focusOn(m_grids.side());
}

void CellFinder::search()
{
    if (m_bar.isHidden())
        return;
    m_matches.clear();
    m_current = -1;
    const SearchQuery query = m_bar.query();
    if (const QRegularExpression expression = query.expression(); !expression.isValid()) {
        m_runner.cancel();
        m_bar.showInvalid(expression.errorString());
        return;
    }
    if (query.text.isEmpty() || !m_scene.document()) {
        m_runner.cancel();
        m_bar.showPosition(-1, 0);
        return;
    }
    m_bar.showSearching();
    CellRange range{m_scene.filter(), std::vector<bool>(std::size_t(m_scene.columnCount()), false)};
    for (const qint32 column : m_scene.arrangement().shown)
        range.columns[std::size_t(column)] = true;
    m_runner.start([document = m_scene.document(), query,
                    range](const CancelFlag &cancel, Progress &) { return findCells(*document, query, range, cancel); },
                   [this](RunOutcome<std::vector<CellMatch>> &&outcome) {
                       if (outcome.end == RunEnd::Done)
                           take(std::move(*outcome.value));
                   });
}

void CellFinder::take(std::vector<CellMatch> &&matches)
{
    m_matches = std::move(matches);
    if (std::exchange(m_goesToFirst, false) && !m_matches.empty())
        goTo(nextFromHere());
    else
        m_bar.showPosition(m_current, qsizetype(m_matches.size()));
}

qsizetype CellFinder::nextFromHere() const
{
    const qint32 here = m_grids.currentRow();
    const auto at =
        std::find_if(m_matches.begin(), m_matches.end(), [here](const CellMatch &match) { return match.row >= here; });
    return at == m_matches.end() ? 0 : qsizetype(at - m_matches.begin());
}

void CellFinder::goTo(qsizetype match)
{
    const auto count = qsizetype(m_matches.size());
    if (count == 0)
        return;
    m_current = match < 0 ? count - 1 : match % count;
    const CellMatch &cell = m_matches[std::size_t(m_current)];
    m_grids.goToCell(cell.row, cell.column);
    m_bar.showPosition(m_current, count);
}

void CellFinder::next()
{
    goTo(m_current < 0 ? nextFromHere() : m_current + 1);
}

void CellFinder::previous()
{
    goTo(m_current < 0 ? nextFromHere() - 1 : m_current - 1);
}

} // namespace velmora
