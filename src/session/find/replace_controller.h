#pragma once

#include "core/runner.h"
#include "session/pane/pane_index.h"
#include "session/pane/text_replace.h"

#include <QObject>

namespace velmora {

class FindBar;
class FindController;
class PaneEditor;
class PaneView;

/// Replaces what the find bar has found in the pane that has the caret: one match after the other, or all of them on a
/// worker, as one step that can be undone. Lives on the interface thread.
class ReplaceController final : public QObject {
    Q_OBJECT
public:
    /// All outlive the controller.
    ReplaceController(FindBar &bar, FindController &finder, PaneView &view, PaneEditor &editor, QObject *parent);

    /// Replaces the match that is selected and goes to the next one; without one, only that.
    void replaceOne();
    /// Replaces all matches in the whole text of the pane, shown or not; while that runs, gives it up.
    void replaceAll();

Q_SIGNALS:
    void message(const QString &text);

private:
    [[nodiscard]] bool mayReplace();
    void take(PaneIndex pane, const std::shared_ptr<const EditSnapshot> &before, RunOutcome<ReplacedText> &&outcome);

    FindBar &m_bar;
    FindController &m_finder;
    PaneView &m_view;
    PaneEditor &m_editor;
    Runner m_runner;
};

} // namespace velmora
