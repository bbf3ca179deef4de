#pragma once

#include "session/pane/text_bar.h"

class QLabel;
class QMenu;

namespace velmora {

/// The commands of a merge as buttons and keys, and the label that counts its conflicts.
///
/// The session connects the actions; this class knows what they are called and look like.
class MergeBar final : public TextBar {
    Q_OBJECT
public:
    /// The actions' keys work everywhere in the window while `session` is shown, which owns the bar.
    explicit MergeBar(QWidget *session);

    QAction *merge;
    QAction *settleTouching; ///< checkable: changes that touch are settled line by line, where they can be
    QAction *previousChange; ///< by key only: of all changes
    QAction *nextChange;
    QAction *takeLeft;
    QAction *takeBase;
    QAction *takeRight;
    QAction *takeLeftThenRight;
    QAction *takeRightThenLeft;
    QAction *takeLineByLine;
    QAction *takeLeftForAll; ///< open conflicts
    QAction *takeBaseForAll;
    QAction *takeRightForAll;
    QAction *takeLineByLineForAll;
    QAction *undo;
    QAction *redo;
    QAction *save;
    QAction *saveAs;
    QAction *saveMarked;
    QAction *showBase; ///< checkable
    QAction *showList; ///< checkable
    QAction *switchPane;

    /// The conflict a person is at, from 0, or -1; how many there are, and how many of them are open.
    struct Position {
        qsizetype current = -1;
        qsizetype count = 0;
        qsizetype open = 0;
    };
    void showPosition(const Position &position);

    /// Turns the merge button into the one that cancels, and back.
    void showMerging(bool running);
    /// Whether there is a merge that the commands can be for.
    void showMerge(bool isThere);

    /// Adds the commands of the texts to a menu, with their keys.
    void addTo(QMenu &menu);

private:
    void addTaking();
    void addSaving();
    void addViewing();
    void offerBeside(QAction *action, const QList<QAction *> &more);

    QLabel *m_position;
};

} // namespace velmora
