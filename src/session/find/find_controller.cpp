#include "session/find/find_controller.h"

#include "session/find/find_bar.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_bar.h"
#include "session/pane/text_pane.h"

#include <QAction>

namespace velmora {

FindController::FindController(FindBar &bar, PaneView &view, QObject *parent)
    : QObject(parent), m_bar(bar), m_view(view)
{
    connect(&view.scene().search(), &TextSearch::changed, this, &FindController::showMatches);
    connect(&view.scene(), &PaneScene::caretMoved, this, &FindController::showPosition);
    m_bar.hide();
}

void FindController::follow(const TextBar &commands)
{
    const auto next = [this] { step(true); };
    const auto previous = [this] { step(false); };
    connect(commands.find, &QAction::triggered, this, &FindController::open);
    connect(commands.replace, &QAction::triggered, this, &FindController::openForReplacing);
    connect(commands.findNext, &QAction::triggered, this, next);
    connect(commands.findPrevious, &QAction::triggered, this, previous);
    connect(&m_bar, &FindBar::queryChanged, this, &FindController::takeQuery);
    connect(&m_bar, &FindBar::nextWanted, this, next);
    connect(&m_bar, &FindBar::previousWanted, this, previous);
    connect(&m_bar, &FindBar::closeWanted, this, &FindController::close);
}

void FindController::open()
{
    constexpr qsizetype longestQuery = 1000;
    const QString selected = m_view.scene().shortSelection(longestQuery);
    m_start = m_view.scene().caret().selectionStart();
    m_bar.open(selected);
    takeQuery();
}

void FindController::openForReplacing()
{
    open();
    m_bar.showReplace(true);
}

void FindController::close()
{
    if (m_bar.isHidden())
        return;
    m_bar.hide();
    m_jumps = false;
    m_view.scene().search().setQuery({});
    m_view.pane(m_view.activePane()).setFocus();
}

void FindController::takeQuery()
{
    if (m_bar.isHidden())
        return;
    m_jumps = true;
    m_view.scene().search().setQuery(m_bar.query());
    showMatches();
}

void FindController::step(bool forward)
{
    if (m_bar.isHidden()) {
        open();
        return;
    }
    const TextCaret &caret = m_view.scene().caret();
    const TextSearch &search = m_view.scene().search();
    const qsizetype next = forward ? search.firstFrom(caret.pane, caret.selectionEnd())
                                   : search.firstFrom(caret.pane, caret.selectionStart()) - 1;
    select(shownMatch(next, forward));
    m_start = caret.selectionStart();
}

void FindController::continueFromCaret()
{
    m_start = m_view.scene().caret().position;
    m_jumps = true;
}

qsizetype FindController::shownMatch(qsizetype from, bool forward) const
{
    const auto &matches = m_view.scene().search().matches().of(m_view.activePane());
    const auto count = qsizetype(matches.size());
    for (qsizetype tried = 0; tried < count; ++tried) {
        const qsizetype number = ((forward ? from + tried : from - tried) + 2 * count) % count;
        const qsizetype row = matches[std::size_t(number)].row;
        const qsizetype index = m_view.scene().layout().indexOf(row);
        if (index >= 0 && m_view.scene().layout().rowsAt(index).contains(row)) // a band opens when it is gone to
            return number;
    }
    return -1;
}

void FindController::select(qsizetype number)
{
    if (number < 0)
        return;
    PaneScene &scene = m_view.scene();
    const PaneIndex pane = m_view.activePane();
    const TextMatch &match = scene.search().matches().of(pane)[std::size_t(number)];
    scene.setCaret({pane, {match.row, match.unit}, {match.row, match.unit + match.length}});
    scene.showCaretInContext();
}

void FindController::showMatches()
{
    const TextSearch &search = m_view.scene().search();
    if (m_bar.isHidden())
        return;
    const QRegularExpression expression = search.query().expression();
    if (!search.query().text.isEmpty() && !expression.isValid()) {
        m_bar.showInvalid(expression.errorString());
        return;
    }
    if (search.isSearching()) {
        m_bar.showSearching();
        return;
    }
    if (std::exchange(m_jumps, false))
        select(shownMatch(search.firstFrom(m_view.activePane(), m_start), true));
    showPosition();
}

void FindController::showPosition()
{
    const TextSearch &search = m_view.scene().search();
    if (m_bar.isHidden() || search.isSearching())
        return;
    const TextCaret &caret = m_view.scene().caret();
    const auto &matches = search.matches().of(caret.pane);
    const qsizetype number = search.firstFrom(caret.pane, caret.selectionStart());
    const bool isCurrent =
        number < qsizetype(matches.size()) &&
        TextPosition{matches[std::size_t(number)].row, matches[std::size_t(number)].unit} == caret.selectionStart() &&
        caret.hasSelection();
    m_bar.showPosition(isCurrent ? number : -1, qsizetype(matches.size()));
    if (search.matches().linesGivenUp > 0)
        m_bar.showGivenUp(search.matches().linesGivenUp);
}

} // namespace velmora
