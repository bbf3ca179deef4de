#pragma once

#include "session/session_record.h"

#include <QList>
#include <QObject>

#include <functional>

namespace velmora {

/// Opens many remembered sessions, in order and a few at a time, so that the window answers meanwhile.
///
/// Lives on the interface thread. `start` takes the first turn itself: `perTurn` sessions are opened at once, and the
/// event loop runs before each further turn.
class TabRestorer final : public QObject {
    Q_OBJECT
public:
    static constexpr qsizetype perTurn = 8;
    /// Opens the records of one turn.
    using Open = std::function<void(const QList<SessionRecord> &records)>;

    TabRestorer(QList<SessionRecord> records, Open open, QObject *parent);

    void start() { takeTurn(); }
    /// Leaves it at what has been opened; `finished` follows.
    void stop();

Q_SIGNALS:
    /// After each turn but the last; counts sessions.
    void progressed(qsizetype done, qsizetype total);
    /// Once.
    void finished();

private:
    void takeTurn();
    void finish();

    QList<SessionRecord> m_records;
    Open m_open;
    qsizetype m_done = 0;
    bool m_finished = false;
};

} // namespace velmora
