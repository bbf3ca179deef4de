#pragma once

#include "session/session_bar.h"

namespace velmora {

/// The tool bar of a session that shows a list: a session's own derives from it.
class ListBar : public SessionBar {
    Q_OBJECT
public:
    QAction *showAll = nullptr;
    QAction *showDifferences = nullptr;
    QAction *showIdentical = nullptr;
    QAction *copyRows = nullptr;
    QAction *showDetails = nullptr;
    QAction *focusFilter = nullptr;

protected:
    using SessionBar::SessionBar;

    /// Adds the commands that every list has, those for walking differences first.
    void addListCommands();
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitChoice();
};

} // namespace velmora
