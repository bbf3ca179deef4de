#include "session/frame/progress_strip.h"

#include "session/diff_colours.h"

#include <QPainter>

namespace velmora {

namespace {

constexpr int stripHeight = 3;
constexpr int stepsAcross = 50;
constexpr auto stepInterval = std::chrono::milliseconds(40);

} // namespace

ProgressStrip::ProgressStrip(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(stripHeight);
    m_timer.setInterval(stepInterval);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % stepsAcross;
        update();
    });
}

QSize ProgressStrip::sizeHint() const
{
    return {100, stripHeight};
}

void ProgressStrip::showBusy()
{
    m_state = State::Busy;
    m_step = 0;
    m_timer.start();
    update();
}

void ProgressStrip::showFraction(double fraction)
{
    m_state = State::Counted;
    m_fraction = std::clamp(fraction, 0.0, 1.0);
    m_timer.stop();
    update();
}

void ProgressStrip::clear()
{
    m_state = State::Idle;
    m_timer.stop();
    update();
}

void ProgressStrip::paintEvent(QPaintEvent *)
{
    if (m_state == State::Idle)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), diffColour(DiffColour::Rule));
    QRectF bar(rect());
    if (m_state == State::Counted) {
        bar.setWidth(width() * m_fraction);
    } else {
        bar.setWidth(width() / 5.0);
        bar.moveLeft((width() + bar.width()) * m_step / stepsAcross - bar.width());
    }
    painter.fillRect(bar, diffColour(DiffColour::Accent));
}

} // namespace velmora
