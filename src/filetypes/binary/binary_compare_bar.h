#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a hex comparison.
class BinaryCompareBar final : public SessionBar {
    Q_OBJECT
public:
    explicit BinaryCompareBar(QWidget *session);

    /// Fills the menu of a view.
    void addTo(QMenu &menu) const;

    QAction *align = nullptr;
    QAction *showStarts = nullptr;
    QAction *startHere = nullptr;
    QAction *find = nullptr;
    QAction *findNext = nullptr;
    QAction *findPrevious = nullptr;
    QAction *showList = nullptr;
    QAction *showValues = nullptr;
    QAction *goToOffset = nullptr;
    QAction *copyHex = nullptr;
    QAction *copyText = nullptr;
    QAction *copyArray = nullptr;
    QAction *selectAll = nullptr;
    QAction *switchPane = nullptr;
    QAction *zoomIn = nullptr;
    QAction *zoomOut = nullptr;
    QAction *resetZoom = nullptr;

private:
    void addAlignment();
    void addPanels();
    void addCopies();
    void addViewKeys();
};

} // namespace velmora
