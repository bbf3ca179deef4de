#pragma once

#include "session/pane/text_bar.h"

class QMenu;

namespace velmora {

/// The commands of a text edit session as buttons and keys. The session connects the actions; this class knows what
/// they are called and look like.
class TextEditBar final : public TextBar {
    Q_OBJECT
public:
    /// The actions' keys work everywhere in the window while `session` is shown, which owns the bar.
    explicit TextEditBar(QWidget *session);

    QAction *newText;
    QAction *open; ///< its menu has the recent files
    QAction *save;
    QAction *saveAs;
    QAction *reload;
    QAction *undo; ///< without keys, which the window's menu has
    QAction *redo;
    QAction *compareWith;

    /// Adds the commands to a context menu, with their keys.
    void addTo(QMenu &menu);

Q_SIGNALS:
    void recentFileChosen(const QString &path);

private:
    void offerBeside(QAction *action, QMenu *menu);
    void fillRecentFiles();

    QMenu *m_recent;
};

} // namespace velmora
