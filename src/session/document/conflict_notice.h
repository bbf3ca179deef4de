#pragma once

#include "session/frame/notice_bar.h"

#include <QString>

namespace velmora {

class SessionHost;

/// The line above a text that has conflict markers, with the offer to resolve them in a merge of its own.
class ConflictNotice final : public NoticeBar {
    Q_OBJECT
public:
    /// `host` outlives the notice.
    ConflictNotice(SessionHost &host, QWidget *parent);

    /// Offers to resolve the conflicts of that file; nothing for an empty path.
    void offer(const QString &path);

private:
    QString m_path;
};

} // namespace velmora
