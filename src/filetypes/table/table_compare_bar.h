#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a table comparison.
class TableCompareBar final : public SessionBar {
    Q_OBJECT
public:
    explicit TableCompareBar(QWidget *session);

    /// Fills the menu of a grid.
    void addTo(QMenu &menu) const;

    QAction *showAll = nullptr;
    QAction *showDifferences = nullptr;
    QAction *showIdentical = nullptr;
    QAction *exportReport = nullptr;
    QAction *find = nullptr;
    QAction *findNext = nullptr; ///< by key only, as those after it
    QAction *findPrevious = nullptr;
    QAction *copyRows = nullptr;
    QAction *columnsByName = nullptr; ///< checkable: whether columns of the same name are compared
    QAction *chooseColumns = nullptr; ///< opens the list of columns
    QAction *showCard = nullptr;      ///< checkable: the current row as a card
    QAction *switchPane = nullptr;

private:
    void addFilters();
};

} // namespace velmora
