#pragma once

#include "core/sides.h"
#include "text/editing/file_stamp.h"
#include "text/editing/file_watch.h"

#include <QObject>

namespace velmora {

class NoticeBar;
class TextEditing;
class TextInputs;

/// Notices when the files of the texts that are shown are changed by somebody else, and says so in a bar until they are
/// read again, are as they were, or a person does not want to know. Changes nothing itself. Lives on the interface
/// thread.
class ChangeWatcher final : public QObject {
    Q_OBJECT
public:
    /// All outlive the watcher.
    ChangeWatcher(NoticeBar &bar, const TextInputs &inputs, TextEditing &editing, QObject *parent);

    /// Watches the files that are shown now, and looks.
    void follow();
    /// Looks whether they have changed.
    void check();

Q_SIGNALS:
    /// A person wants the sides that have changed to be read again.
    void reloadWanted(bool left, bool right);

private:
    [[nodiscard]] bool hasNews(Side side) const;
    [[nodiscard]] QString describe(bool left, bool right) const;

    NoticeBar &m_bar;
    const TextInputs &m_inputs;
    TextEditing &m_editing;
    FileWatch m_watch;
    Sides<FileStamp> m_dismissed; ///< a state of the file that nobody wants to hear of any more
    bool m_hasDismissed = false;
};

} // namespace velmora
