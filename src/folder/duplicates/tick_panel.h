#pragma once

#include "folder/engine/duplicate_choice.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace velmora {

/// What is shown while copies are chosen for deletion: what to do, rules that choose, what that would come to, and the
/// button that deletes.
class TickPanel final : public QWidget {
    Q_OBJECT
public:
    explicit TickPanel(QWidget *parent = nullptr);

    /// Shows what is ticked; `staying`: files of the same groups that would stay.
    void showTicks(qint64 files, qint64 bytes, qint64 staying);
    void setBusy(bool busy);

Q_SIGNALS:
    void ruleChosen(KeepRule rule);
    void clearWanted();
    void deleteWanted();

private:
    QToolButton *m_rules;
    QLabel *m_sum;
    QPushButton *m_delete;
    bool m_hasTicks = false;
    bool m_busy = false;
};

} // namespace velmora
