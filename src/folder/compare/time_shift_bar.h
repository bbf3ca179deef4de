#pragma once

#include "folder/engine/folder_jobs.h"
#include "session/frame/notice_bar.h"

namespace velmora {

/// A remark above the rows: many files have the same contents and times that are apart in a way that has a reason. One
/// click makes such times count as equal.
class TimeShiftBar final : public NoticeBar {
    Q_OBJECT
public:
    explicit TimeShiftBar(QWidget *parent = nullptr);

    /// Shows the bar when `shifts` holds files whose times `options` do not count as equal, and hides it otherwise.
    /// Hidden by a person, it stays so until `reset`.
    void show(const TimeShifts &shifts, const FolderSessionOptions &options);
    void reset() { m_dismissed = false; }

Q_SIGNALS:
    /// Times this many seconds apart are to count as equal.
    void toleranceWanted(int seconds);

private:
    int m_seconds = 0;
    bool m_dismissed = false;
};

} // namespace velmora
