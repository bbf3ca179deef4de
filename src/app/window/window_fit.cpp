#include "app/window/window_fit.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace velmora {

QRect fittedInto(const QRect &frame, const QRect &available)
{
    const QSize size = frame.size().boundedTo(available.size());
    const int left = std::clamp(frame.left(), available.left(), available.right() - size.width() + 1);
    const int top = std::clamp(frame.top(), available.top(), available.bottom() - size.height() + 1);
    return {QPoint(left, top), size};
}

void fitToScreen(QWidget &window)
{
    const QRect available = window.screen()->availableGeometry();
    const QRect frame = window.frameGeometry();
    const QSize borders = frame.size() - window.size();
    window.setMinimumSize(window.minimumSize().boundedTo(available.size() - borders));
    const QRect fitted = fittedInto(frame, available);
    if (fitted.size() != frame.size())
        window.resize(fitted.size() - borders);
    if (fitted.topLeft() != frame.topLeft())
        window.move(fitted.topLeft());
}

} // namespace velmora
