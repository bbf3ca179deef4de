#pragma once

#include "core/runner.h"
#include "core/side.h"
#include "session/document/edited_texts.h"
#include "settings/options/text_session_options.h"
#include "text/line_pairs.h"
#include "text/text_compare_job.h"

#include <QObject>
#include <QTimer>

namespace velmora {

class DiffView;
class TextInputs;

/// The edited texts of a comparison: compares them again in the background after each edit, and asks before they are
/// given up.
///
/// What an edit did to the rows around it is shown at once; the whole is compared when nothing was typed for a moment.
/// Lives on the interface thread.
class TextEditing final : public QObject {
    Q_OBJECT
public:
    /// `view` and `inputs` outlive this; `window` is what questions belong to.
    TextEditing(DiffView &view, TextInputs &inputs, QWidget *window);

    [[nodiscard]] EditedTexts &texts() noexcept { return m_texts; }
    [[nodiscard]] const EditedTexts &texts() const noexcept { return m_texts; }
    [[nodiscard]] PaneEditor &editor() noexcept { return m_texts.editor(); }
    [[nodiscard]] const PaneEditor &editor() const noexcept { return m_texts.editor(); }
    [[nodiscard]] TextSaving &saving() noexcept { return m_texts.saving(); }
    [[nodiscard]] bool isModified(Side side) const { return m_texts.isModified(side); }

    /// Takes up a completed comparison that is shown now.
    void takeComparison(const TextCompareResult &result, const TextSessionOptions &options);

    /// The lines that the next comparisons after edits take as belonging together.
    void setPairs(const LinePairs &pairs) { m_pairs = pairs; }
    /// Compares the texts as they are shown, in the background.
    void compareAgain();

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

    DiffView &m_view;
    TextInputs &m_inputs;
    EditedTexts m_texts;
    TextSessionOptions m_options;
    LinePairs m_pairs;
    QTimer m_pause; ///< runs while the next edit may follow at once
    Runner m_runner;
};

} // namespace velmora
