#pragma once

#include "app/session_history.h"

#include <QWidget>

class QGridLayout;

namespace velmora {

/// The newest sessions of the history as buttons under a heading; nothing while there are none.
class RecentSessions final : public QWidget {
    Q_OBJECT
public:
    explicit RecentSessions(QWidget *parent = nullptr);

    /// Shows the newest of `history`, which is ordered oldest first, each pair of paths once.
    void setHistory(const QList<SessionHistory::Entry> &history);

Q_SIGNALS:
    void entryChosen(quint64 id);

private:
    QGridLayout *m_grid;
};

} // namespace velmora
