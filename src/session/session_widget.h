#pragma once

#include "session/session_record.h"

#include <QWidget>

#include <functional>

namespace velmora {

class SessionHost;
struct RecoveryRecord;

/// The commands of the Edit menu, which a session carries out when it can.
enum class EditCommand { Undo, Redo, UndoLeft, RedoLeft, UndoRight, RedoRight };

/// One session in one tab: what the main window knows of it.
///
/// A session builds its own controls, takes its inputs as `SessionPaths` and runs its work on a `Runner`. It knows the
/// window only as `SessionHost`, which outlives it. A kind overrides what it has; the defaults stand for "does not".
class SessionWidget : public QWidget {
    Q_OBJECT
public:
    explicit SessionWidget(SessionHost &host, QWidget *parent = nullptr);
    ~SessionWidget() override;

    /// The session kind identifier, as the table of kinds has it.
    [[nodiscard]] virtual QString kind() const = 0;

    [[nodiscard]] virtual SessionPaths paths() const = 0;
    /// Fills the inputs; starts nothing.
    virtual void setPaths(const SessionPaths &paths) = 0;

    /// Starts the comparison, scan or computation on the current inputs.
    virtual void start() = 0;

    /// Whether the session still reads the files that it was started on; `readingEnded` tells when it has.
    [[nodiscard]] virtual bool isReading() const { return false; }

    /// The options as session files hold them, empty when the kind has none.
    [[nodiscard]] virtual QJsonObject options() const { return {}; }
    virtual void setOptions(const QJsonObject & /*options*/) {}

    /// Takes the path of a report that is written once, when the next comparison has completed. False when the kind
    /// writes no report.
    virtual bool setPendingReport(const QString & /*path*/) { return false; }

    /// Takes the path that the session's result is to be saved to. False when the kind makes no result.
    virtual bool setOutput(const QString & /*path*/) { return false; }

    /// The exit status of a process that has waited for this session, asked when its tab is closed for good. A kind
    /// that makes a result answers 0 only when that has been saved and left nothing open.
    [[nodiscard]] virtual int waitStatus() const { return 0; }

    [[nodiscard]] virtual bool canEdit(EditCommand /*command*/) const { return false; }
    virtual void edit(EditCommand /*command*/) {}

    /// Whether the inputs can be unlocked for editing, and whether they are.
    [[nodiscard]] virtual bool canEnableEditing() const { return false; }
    [[nodiscard]] virtual bool isEditingEnabled() const { return false; }
    virtual void setEditingEnabled(bool /*enabled*/) {}

    /// True when closing the tab now would lose something.
    [[nodiscard]] virtual bool hasUnsavedChanges() const { return false; }
    /// Called before the window destroys the session. Asks what is to become of unsaved changes, carries that out and
    /// tells `answered` whether the session may go: at once or later, at most once, and not at all when the person
    /// turned away. A session may be asked again before it has answered.
    virtual void confirmClose(std::function<void(bool mayClose)> answered) { answered(true); }

    /// Takes up unsaved work of an earlier run, which this kind of session has put into the session host's recovery
    /// store, instead of a start. `kept` is called once it is shown and kept anew, and never when it cannot be shown.
    /// The description of a record names the session's "kind" and its paths, "left" and "right".
    virtual void recover(const RecoveryRecord & /*record*/, std::function<void()> /*kept*/) {}

    /// True when local files or folders may be dropped anywhere on the session; `dropPaths` then takes their paths.
    [[nodiscard]] virtual bool acceptsDroppedPaths() const { return false; }
    virtual void dropPaths(const QStringList & /*paths*/, QPoint /*position*/) {}

    /// Takes up a changed theme: icons and colours that are not read from the palette.
    virtual void refreshTheme() {}

    /// The session as it would be remembered now, without a name.
    [[nodiscard]] SessionRecord record() const;

    [[nodiscard]] SessionHost &host() const noexcept { return m_host; }

Q_SIGNALS:
    void tabTitleChanged(const QString &title);
    void statusMessage(const QString &message);
    /// A comparison that may take long has begun.
    void comparisonStarted();
    void comparisonFinished(const QString &leftPath, const QString &rightPath);
    /// The files of the session are read, or cannot be. May be told more than once.
    void readingEnded();
    /// What `canEdit`, `canEnableEditing` or `isEditingEnabled` answers has changed.
    void editStateChanged();

private:
    SessionHost &m_host;
};

} // namespace velmora
