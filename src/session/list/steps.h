#pragma once

namespace velmora {

/// The next of `count` places behind or before `from` where `isOne` holds; -1 when there is none. From -1, which is no
/// place, it goes to the first or the last one.
template <typename Place, typename IsOne>
[[nodiscard]] Place stepTo(Place from, Place count, bool forward, IsOne isOne)
{
    const Place step = forward ? 1 : -1;
    for (Place at = from < 0 && !forward ? count - 1 : from + step; at >= 0 && at < count; at += step) {
        if (isOne(at))
            return at;
    }
    return -1;
}

} // namespace velmora
