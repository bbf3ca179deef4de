#pragma once

#include <QWidget>

namespace velmora {

class NoticeBar;

/// What a person should know of a plan before it is carried out, and what is offered about it.
class SyncRemarks final : public QWidget {
    Q_OBJECT
public:
    explicit SyncRemarks(QWidget *parent = nullptr);

    /// Numbers of files; of 0 nothing is said.
    struct Facts {
        qint64 likelyMoves = 0; ///< that nobody has looked for
        qint64 wholeHours = 0;  ///< that are not ignored
        qint64 conflicts = 0;   ///< of names
    };
    void show(const Facts &facts);

Q_SIGNALS:
    void movesWanted();
    void hoursIgnored();
    /// The conflicts are to be listed.
    void conflictsWanted();

private:
    NoticeBar *m_conflicts;
    NoticeBar *m_moves;
    NoticeBar *m_hours;
};

} // namespace velmora
