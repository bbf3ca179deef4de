#pragma once

#include "core/runner.h"
#include "session/pane/pane_editor.h"
#include "settings/options/text_session_options.h"
#include "text/editing/text_saving.h"
#include "text/text_compare_job.h"
#include "text/text_side.h"

#include <QObject>
#include <QTimer>

namespace velmora {

class DiffView;
class TextInputs;
struct UnsavedText;

/// The edited texts of a session: compares them again in the background after each edit, lets them be saved, and asks
/// before they are given up.
///
/// What an edit did to the rows around it is shown at once; the whole is compared when nothing was typed for a moment.
/// Lives on the interface thread.
class TextEditing final : public QObject {
    Q_OBJECT
public:
    /// `view` and `inputs` outlive this; `window` is what questions belong to.
    TextEditing(DiffView &view, TextInputs &inputs, QWidget *window);

    [[nodiscard]] PaneEditor &editor() noexcept { return m_editor; }
    [[nodiscard]] const PaneEditor &editor() const noexcept { return m_editor; }
    [[nodiscard]] TextSaving &saving() noexcept { return m_saving; }

    [[nodiscard]] bool isModified(Side side) const { return m_editor.buffer(side).isModified(); }
    /// Also true while changes are on their way to a file.
    [[nodiscard]] bool hasUnsavedChanges() const
    {
        return isModified(Side::Left) || isModified(Side::Right) || m_saving.isSaving();
    }

    /// Takes up a completed comparison that is shown now.
    void takeComparison(const TextCompareResult &result, const TextSessionOptions &options);

    /// What a comparison takes from a side: the edited text, or what the side's input is.
    [[nodiscard]] SideInput input(Side side, ChangedFile changed) const;
    /// Takes up a text of an earlier run, before a comparison that shows it.
    void restore(const UnsavedText &text);
    /// The lines that the next comparisons after edits take as belonging together.
    void setPairs(const LinePairs &pairs) { m_pairs = pairs; }
    /// Compares the texts as they are shown, in the background.
    void compareAgain();

    /// Forgets the edits of a side that will be read again.
    void discard(Side side);

    /// Enables editing when that is all that keeps `side` from being changed.
    void unlockFor(Side side);

    /// Asks before unsaved edits of the given sides are replaced by what is on disk, and forgets them when it may; `go`
    /// follows a yes, or at once when there are none. A text without a file has nothing to be replaced by and stays.
    void confirmReload(bool left, bool right, std::function<void()> go);
    /// Asks before the unsaved edits of `side` are given up for another text, and forgets them when it may.
    void confirmReplacement(Side side, std::function<void()> go);
    /// Asks before a side whose path is another one by now loses its edits.
    void confirmOtherFiles(std::function<void()> go);

Q_SIGNALS:
    void message(const QString &text);
    void textEdited(); ///< whatever is being compared is out of date
    void recompared(const std::shared_ptr<const velmora::DiffDocument> &document, const velmora::TextLines &left,
                    const velmora::TextLines &right);

private:
    void takeEdit(PaneIndex pane);
    /// Calls `go` when the edits of the sides `lost` may be given up, and forgets them.
    void askToDiscard(const QList<Side> &lost, const QString &title, const QString &question,
                      const std::function<void()> &go);

    DiffView &m_view;
    TextInputs &m_inputs;
    QWidget *m_window;
    PaneEditor m_editor;
    TextSaving m_saving;
    TextSessionOptions m_options;
    LinePairs m_pairs;
    QTimer m_pause; ///< runs while the next edit may follow at once
    Runner m_runner;
};

} // namespace velmora
