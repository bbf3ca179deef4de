#pragma once

#include "session/pane/text_bar.h"

class QActionGroup;
class QLabel;
class QMenu;

namespace velmora {

/// The commands of a text comparison as buttons and keys, and the label that counts its differences.
///
/// The session connects the actions to its slots; this class knows what they are called and look like.
class TextCompareBar final : public TextBar {
    Q_OBJECT
public:
    /// The actions' keys work everywhere in the window while `session` is shown, which owns the bar.
    explicit TextCompareBar(QWidget *session);

    QAction *reload;
    QAction *showAll;
    QAction *showDifferences;
    QAction *showIdentical;
    QAction *ignoreMinor; ///< checkable: whether unimportant differences count as equal
    QAction *edit;        ///< checkable: whether the texts are unlocked
    QAction *copyToRight;
    QAction *copyToLeft;
    QAction *saveLeft;
    QAction *saveRight;
    QAction *save; ///< by key only, the side with the caret
    QAction *saveAs;
    QAction *saveAll;
    QAction *saveLeftAs; ///< in the menu of its button
    QAction *saveRightAs;
    QAction *lineDetail;
    QAction *exportReport;
    QAction *settings;
    QAction *switchPane; ///< by key only, as those after it
    QAction *copyPatch;
    QAction *takeClipboard;
    QAction *alignLines;
    QAction *releaseLines;
    QAction *releaseAllLines;
    QActionGroup *contextLines; ///< each action's data is a number of lines

    /// Checks the action of `lines`, if there is one.
    void showContextLines(int lines);

    /// Shows whether the texts are unlocked.
    void showEditing(bool enabled);

    /// Which alignments by hand there are to be undone.
    struct Alignments {
        bool here = false;
        bool any = false;
    };
    /// Adds the commands of the texts to a menu, with their keys.
    void addTo(QMenu &menu, const Alignments &alignments);

    /// Where a person stands among the differences; `current` counts from 0, -1 for none.
    struct Position {
        qsizetype current = -1;
        qsizetype count = 0;
        bool hasPrevious = false;
        bool hasNext = false;
    };
    void showPosition(const Position &position);

    /// Puts a menu beside the button of `action`.
    void offerBeside(QAction *action, QMenu *menu);

private:
    void addPosition();
    void addViews();
    void addEditing();
    void addLineDetail();
    void addFileCommands();
    void addLineCommands();
    void addSaving();
    void addContextLines();

    QLabel *m_position;
};

} // namespace velmora
