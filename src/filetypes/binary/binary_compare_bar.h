#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a hex comparison.
class BinaryCompareBar final : public SessionBar {
    Q_OBJECT
public:
    explicit BinaryCompareBar(QWidget *session);

    /// The command that compares is the one that cancels while a comparison runs.
    void showRunning(bool running, bool cancelling);

    /// Fills the menu of a view.
    void addTo(QMenu &menu) const;

    QAction *compare = nullptr;
    QAction *cancel = nullptr;
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
    QAction *swapSides = nullptr;
    QAction *zoomIn = nullptr;
    QAction *zoomOut = nullptr;
    QAction *resetZoom = nullptr;

private:
    void addCompare();
    void addAlignment();
    void addPanels();
    void addCopies();
    void addViewKeys();
};

} // namespace velmora
