#pragma once

#include <QWidget>

class QProgressBar;

namespace velmora {

/// Shows in the status bar how far the tabs of a workspace are restored, with a button that ends it. Hidden while
/// nothing is restored.
class RestoreProgress final : public QWidget {
    Q_OBJECT
public:
    explicit RestoreProgress(QWidget *parent = nullptr);

    void show(qsizetype done, qsizetype total);

Q_SIGNALS:
    void stopRequested();

private:
    QProgressBar *m_bar;
};

} // namespace velmora
