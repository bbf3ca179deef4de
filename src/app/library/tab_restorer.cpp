#include "app/library/tab_restorer.h"

#include <QTimer>

namespace velmora {

TabRestorer::TabRestorer(QList<SessionRecord> records, Open open, QObject *parent)
    : QObject(parent), m_records(std::move(records)), m_open(std::move(open))
{}

void TabRestorer::stop()
{
    finish();
}

void TabRestorer::takeTurn()
{
    if (m_finished)
        return;
    m_open(m_records.mid(m_done, perTurn));
    m_done = std::min(m_done + perTurn, m_records.size());
    if (m_done == m_records.size()) {
        finish();
        return;
    }
    Q_EMIT progressed(m_done, m_records.size());
    QTimer::singleShot(0, this, &TabRestorer::takeTurn);
}

void TabRestorer::finish()
{
    if (!std::exchange(m_finished, true))
        Q_EMIT finished();
}

} // namespace velmora
