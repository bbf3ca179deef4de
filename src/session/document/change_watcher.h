#pragma once

#include "session/document/file_stamp.h"
#include "session/document/file_watch.h"
#include "session/pane/pane_index.h"

#include <QList>
#include <QObject>
#include <QString>

#include <vector>

namespace velmora {

class EditedTexts;
class NoticeBar;

/// Notices when the files of the texts that are shown are changed by somebody else, and says so in a bar until they are
/// read again, are as they were, or a person does not want to know. Changes nothing itself. Lives on the interface
/// thread.
class ChangeWatcher final : public QObject {
    Q_OBJECT
public:
    /// Both outlive the watcher. `several` is what is said when more than one file has changed.
    ChangeWatcher(NoticeBar &bar, EditedTexts &texts, const QString &several, QObject *parent);

    /// Watches the files that are shown now, and looks.
    void follow();
    /// Looks whether they have changed.
    void check();

Q_SIGNALS:
    /// A person wants the texts that have changed to be read again.
    void reloadWanted(const QList<velmora::PaneIndex> &panes);

private:
    /// What has changed and was not dismissed.
    [[nodiscard]] QList<PaneIndex> news() const;
    [[nodiscard]] QString describe(const QList<PaneIndex> &panes) const;

    NoticeBar &m_bar;
    EditedTexts &m_texts;
    QString m_several;
    FileWatch m_watch;
    std::vector<FileStamp> m_dismissed; ///< of each text, a state that nobody wants to hear of any more; or empty
};

} // namespace velmora
