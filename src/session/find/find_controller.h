#pragma once

#include "session/pane/text_caret.h"

#include <QObject>

namespace velmora {

class FindBar;
class PaneView;
class TextBar;

/// Leads from match to match of what the find bar asks for, in the pane that has the caret. Matches in rows that are
/// not shown are passed over; behind the last one comes the first.
class FindController final : public QObject {
    Q_OBJECT
public:
    /// Both outlive the controller.
    FindController(FindBar &bar, PaneView &view, QObject *parent);

    /// Has the commands of the session's bar and of the find bar lead here.
    void follow(const TextBar &commands);

    /// Opens the bar with what is selected, if that is part of one line.
    void open();
    /// The same with the line for replacing.
    void openForReplacing();
    void close();
    void step(bool forward);
    /// After an edit: goes to the first match from the caret on, as soon as it is known.
    void continueFromCaret();
    /// Takes up what the bar says now and goes to the first match from where the search began.
    void takeQuery();

private:
    [[nodiscard]] qsizetype shownMatch(qsizetype from, bool forward) const;
    void select(qsizetype number);
    void showMatches();
    void showPosition();

    FindBar &m_bar;
    PaneView &m_view;
    TextPosition m_start; ///< where the search began
    bool m_jumps = false; ///< the query was changed: its first match is to be shown when it is found
};

} // namespace velmora
