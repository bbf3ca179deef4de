#pragma once

#include "core/runner.h"
#include "core/side.h"
#include "session/pane/text_replace.h"

#include <QObject>

namespace velmora {

class DiffView;
class FindBar;
class FindController;
class TextEditing;

/// Replaces what the find bar has found on the side that has the caret: one match after the other, or all of them on a
/// worker, as one step that can be undone. Lives on the interface thread.
class ReplaceController final : public QObject {
    Q_OBJECT
public:
    /// All outlive the controller.
    ReplaceController(FindBar &bar, FindController &finder, DiffView &view, TextEditing &editing, QObject *parent);

    /// Replaces the match that is selected and goes to the next one; without one, only that.
    void replaceOne();
    /// Replaces all matches in the whole text of the side, shown or not; while that runs, gives it up.
    void replaceAll();

Q_SIGNALS:
    void message(const QString &text);

private:
    [[nodiscard]] bool mayReplace();
    void take(Side side, const std::shared_ptr<const EditSnapshot> &before, RunOutcome<ReplacedText> &&outcome);

    FindBar &m_bar;
    FindController &m_finder;
    DiffView &m_view;
    TextEditing &m_editing;
    Runner m_runner;
};

} // namespace velmora
