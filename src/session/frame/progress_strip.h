#pragma once

#include <QTimer>
#include <QWidget>

namespace velmora {

/// A thin bar that fills while a job runs. Always takes its room, so that nothing jumps when a job begins or ends.
class ProgressStrip final : public QWidget {
    Q_OBJECT
public:
    explicit ProgressStrip(QWidget *parent = nullptr);

    /// Shows that something runs whose length is not known.
    void showBusy();
    /// Shows `fraction`, 0 to 1.
    void showFraction(double fraction);
    void clear();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    enum class State { Idle, Busy, Counted };

    State m_state = State::Idle;
    double m_fraction = 0;
    int m_step = 0; ///< of the moving bar
    QTimer m_timer;
};

} // namespace velmora
