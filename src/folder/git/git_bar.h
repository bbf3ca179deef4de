#pragma once

#include "session/session_bar.h"

namespace velmora {

/// The commands of a Git comparison.
class GitBar final : public SessionBar {
    Q_OBJECT
public:
    explicit GitBar(QWidget *session);

    QAction *sinceParting = nullptr; ///< checkable
    QAction *untracked = nullptr;    ///< checkable
    QAction *showSame = nullptr;     ///< checkable
    QAction *showCommits = nullptr;  ///< checkable
    QAction *expandAll = nullptr;
    QAction *collapseAll = nullptr;
    QAction *focusFilter = nullptr;
    QAction *openAsFolders = nullptr;
    QAction *copyPaths = nullptr;
    QAction *open = nullptr;
    QAction *openAsText = nullptr;
    QAction *openAsBytes = nullptr;

private:
    [[nodiscard]] QAction *addSwitch(const Look &look, bool on);
};

} // namespace velmora
