#pragma once

#include <QRect>

namespace velmora {

/// `frame` made no larger than `available` and moved into it as little as that takes.
[[nodiscard]] QRect fittedInto(const QRect &frame, const QRect &available);

} // namespace velmora
