#include "app/window_fit.h"

#include <algorithm>

namespace velmora {

QRect fittedInto(const QRect &frame, const QRect &available)
{
    const QSize size = frame.size().boundedTo(available.size());
    const int left = std::clamp(frame.left(), available.left(), available.right() - size.width() + 1);
    const int top = std::clamp(frame.top(), available.top(), available.bottom() - size.height() + 1);
    return {QPoint(left, top), size};
}

} // namespace velmora
