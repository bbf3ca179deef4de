#pragma once

#include <QRect>

class QWidget;

namespace velmora {

/// `frame` made no larger than `available` and moved into it as little as that takes.
[[nodiscard]] QRect fittedInto(const QRect &frame, const QRect &available);

/// Shrinks a window that has just been shown, and its minimum size with it, until it fits its screen, and moves it
/// there.
void fitToScreen(QWidget &window);

} // namespace velmora
