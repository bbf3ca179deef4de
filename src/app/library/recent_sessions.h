#pragma once

#include "app/library/session_history.h"

#include <QWidget>

class QGridLayout;
class QLabel;

namespace velmora {

/// The newest sessions of the history as buttons under a heading, or a word about it while there are none.
class RecentSessions final : public QWidget {
    Q_OBJECT
public:
    explicit RecentSessions(QWidget *parent = nullptr);

    /// Shows the newest of `history`, which is ordered oldest first, each pair of paths once.
    void setHistory(const QList<SessionHistory::Entry> &history);
    /// Shows those alone, of the whole history, that hold all of `words`.
    void setFilter(const QString &words);

Q_SIGNALS:
    void entryChosen(quint64 id);

private:
    void rebuild();

    QGridLayout *m_grid;
    QLabel *m_nothing;
    QList<SessionHistory::Entry> m_history;
    QString m_words;
};

} // namespace velmora
