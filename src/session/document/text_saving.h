#pragma once

#include "core/line_ends.h"
#include "core/runner.h"
#include "core/text_encoding.h"
#include "session/document/edited_text.h"
#include "session/document/text_saver.h"

#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QWidget;

namespace velmora {

class PaneEditor;

/// Saves the edited texts of a session in the background, and says what kept it from that.
///
/// A text that its file holds already is not written, except under another name or to change its line ends.
/// A text is saved as it was when that was asked for. It can be edited meanwhile; what would give it up (comparing
/// other files, reading again, closing) waits until it is written. Lives on the interface thread, where its owner
/// destroys it; that waits for a save that runs.
class TextSaving final : public QObject {
    Q_OBJECT
public:
    using Done = std::function<void(bool saved)>;

    /// `editor` and `texts` outlive this; `window` is what questions belong to.
    TextSaving(PaneEditor &editor, const std::vector<EditedText> &texts, QWidget *window, QObject *parent);

    [[nodiscard]] bool isSaving() const;

    /// The line ends that the text is to have when it is saved; nothing for those that it has.
    void setLineEnds(PaneIndex pane, std::optional<LineEndStyle> style) { lane(pane).ends = style; }
    /// The encoding that the text is to have when it is saved; nothing for the one that it was read by.
    void setEncoding(PaneIndex pane, std::optional<TextEncoding> encoding)
    {
        lane(pane).encoding = std::move(encoding);
    }
    /// Whether saving would write anything: the text is changed, has no file, or is to have other line ends or another
    /// encoding.
    [[nodiscard]] bool needsSaving(PaneIndex pane) const;

    /// Writes the text to its file; one without a file asks for a name. `done` is told whether the file holds the text
    /// now, or never called when no name was chosen.
    void save(PaneIndex pane, Done done = {});
    /// Asks for a name and writes the text there, which is its file from then on.
    void saveAs(PaneIndex pane);
    /// Saves the texts that have unsaved changes.
    void saveAll();

    /// Asks for each text with unsaved changes whether to save or discard them, saves, and tells `answered` whether all
    /// of this is done: false when a question was cancelled or a save failed. Never calls it when no name was chosen
    /// for a text without a file. Discarded edits stay until the session is gone, which may be kept for another reason.
    void confirmClose(std::function<void(bool mayClose)> answered);

    /// Calls `go` when no text is being saved: at once, or as soon as it is written.
    void whenSaved(std::function<void()> go);

Q_SIGNALS:
    void message(const QString &text);
    void saved(velmora::PaneIndex pane); ///< its input says what the file holds
    void savingChanged();                ///< `isSaving` may answer otherwise
    void progressed(double fraction);    ///< 0 to 1

private:
    struct Lane {
        PaneIndex pane;
        std::optional<LineEndStyle> ends;
        std::optional<TextEncoding> encoding;
        Runner saver;
    };

    [[nodiscard]] Lane &lane(PaneIndex pane) const;
    [[nodiscard]] const EditedText &text(PaneIndex pane) const { return textIn(pane, m_texts); }
    [[nodiscard]] QList<PaneIndex> modified() const;
    [[nodiscard]] bool hasFile(PaneIndex pane) const;
    [[nodiscard]] bool isToBeConverted(PaneIndex pane) const;
    void saveInTurn(QList<PaneIndex> panes);
    void saveUnderNewName(PaneIndex pane, Done done);
    /// Gives the text the line ends that it is to have, and writes it.
    void start(PaneIndex pane, const QString &path, TextSaveRequest::Target target, Done done);
    void write(PaneIndex pane, const QString &path, TextSaveRequest::Target target, Done done);
    void finish(PaneIndex pane, const QString &path, RunOutcome<TextSaveResult> &&outcome, const Done &done);
    void take(PaneIndex pane, const QString &path, const TextSaveResult &result);
    void askToWriteOver(PaneIndex pane, const QString &path, const FileStamp &found, Done done);
    void fail(const QString &text, const Done &done);
    void offerOtherName(PaneIndex pane, const QString &text, const QString &why, Done done);
    void askToKeep(QList<PaneIndex> panes, std::function<void(bool)> answered);

    PaneEditor &m_editor;
    const std::vector<EditedText> &m_texts;
    QWidget *m_window;
    std::vector<std::function<void()>> m_waiting; ///< until nothing is being saved
    std::vector<std::unique_ptr<Lane>> m_lanes;   ///< one for each of the texts
};

} // namespace velmora
