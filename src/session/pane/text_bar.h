#pragma once

#include "session/session_bar.h"

namespace velmora {

/// The tool bar of a session with panes of text, with the commands that all of these have.
class TextBar : public SessionBar {
    Q_OBJECT
public:
    QAction *find = nullptr;
    QAction *replace = nullptr; ///< by key only
    QAction *goToLine = nullptr;
    QAction *wrapLines = nullptr;     ///< checkable
    QAction *syntaxColours = nullptr; ///< checkable; by key only
    QAction *showBlanks = nullptr;    ///< checkable
    QAction *findNext = nullptr;      ///< by key only, as those after it
    QAction *findPrevious = nullptr;
    QAction *zoomIn = nullptr;
    QAction *zoomOut = nullptr;
    QAction *resetZoom = nullptr;

protected:
    explicit TextBar(QWidget *session) : SessionBar(session) {}

    void addFinding();
    /// How the lines are shown.
    void addWrapping();
    void addBlanks();
    /// Commands without a button.
    void addMatchSteps();
    void addZoom();
};

} // namespace velmora
