#pragma once

#include "core/line_ends.h"
#include "core/runner.h"
#include "core/sides.h"
#include "text/editing/text_saver.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

class QWidget;

namespace velmora {

class PaneEditor;
class TextInputs;

/// Saves the edited texts of a session in the background, and says what kept it from that.
///
/// A side whose file holds its text already is not written, except under another name or to change its line ends.
/// A text is saved as it was when that was asked for. It can be edited meanwhile; what would give it up (comparing
/// other files, reading again, closing) waits until it is written. Lives on the interface thread, where its owner
/// destroys it; that waits for a save that runs.
class TextSaving final : public QObject {
    Q_OBJECT
public:
    using Done = std::function<void(bool saved)>;

    /// `editor` and `inputs` outlive this; `window` is what questions belong to.
    TextSaving(PaneEditor &editor, TextInputs &inputs, QWidget *window, QObject *parent);

    [[nodiscard]] bool isSaving() const { return m_savers.left.isRunning() || m_savers.right.isRunning(); }

    /// The line ends that the side's text is to have when it is saved; nothing for those that it has.
    void setLineEnds(Side side, std::optional<LineEndStyle> style) { m_ends[side] = style; }
    /// Whether saving would write anything: the text is changed, has no file, or is to have other line ends.
    [[nodiscard]] bool needsSaving(Side side) const;

    /// Writes the side's text to its file; a side without one asks for a name. `done` is told whether the file holds
    /// the text now, or never called when no name was chosen.
    void save(Side side, Done done = {});
    /// Asks for a name and writes the side's text there, which is the side's file from then on.
    void saveAs(Side side);
    /// Saves the sides that have unsaved changes.
    void saveAll();

    /// Asks for each side with unsaved changes whether to save or discard them, saves, and tells `answered` whether all
    /// of this is done: false when a question was cancelled or a save failed. Never calls it when no name was chosen
    /// for a text without a file. Discarded edits stay until the session is gone, which may be kept for another reason.
    void confirmClose(std::function<void(bool mayClose)> answered);

    /// Calls `go` when no text is being saved: at once, or as soon as it is written.
    void whenSaved(std::function<void()> go);

Q_SIGNALS:
    void message(const QString &text);
    void saved(velmora::Side side);   ///< its input says what the file holds
    void savingChanged();             ///< `isSaving` may answer otherwise
    void progressed(double fraction); ///< 0 to 1

private:
    void saveUnderNewName(Side side, Done done);
    void start(Side side, const QString &path, TextSaveRequest::Target target, Done done);
    void finish(Side side, const QString &path, RunOutcome<TextSaveResult> &&outcome, const Done &done);
    void take(Side side, const QString &path, const TextSaveResult &result);
    void askToWriteOver(Side side, const QString &path, const FileStamp &found, Done done);
    void convertLineEnds(Side side);
    void fail(const QString &text, const Done &done);
    void offerOtherName(Side side, const QString &text, const QString &why, Done done);
    void askToKeep(QList<Side> sides, std::function<void(bool)> answered);

    PaneEditor &m_editor;
    TextInputs &m_inputs;
    QWidget *m_window;
    std::vector<std::function<void()>> m_waiting; ///< until nothing is being saved
    Sides<std::optional<LineEndStyle>> m_ends;
    Sides<Runner> m_savers;
};

} // namespace velmora
