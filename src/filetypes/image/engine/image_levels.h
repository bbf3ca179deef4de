#pragma once

#include <QImage>

#include <memory>
#include <vector>

namespace velmora {

/// A picture with smaller copies of itself, each half as wide and high as the one before, so that showing any part of
/// it at any zoom costs no more than what is in sight. A third more memory than the picture alone.
class ImageLevels {
public:
    /// Makes the copies, on several threads. `image` is of Format_ARGB32, or null. Nothing of an opaque one is copied.
    ImageLevels(const QImage &image, bool hasAlpha);

    [[nodiscard]] const QImage &image() const noexcept { return m_levels.front(); }
    [[nodiscard]] bool hasAlpha() const noexcept { return m_hasAlpha; }
    /// The smallest copy that is not smaller than shown at `zoom`.
    [[nodiscard]] const QImage &levelFor(double zoom) const;

private:
    std::vector<QImage> m_levels;
    bool m_hasAlpha;
};

/// Half of a picture: each pixel the mean of four; a last odd row or column is left out. For
/// Format_ARGB32_Premultiplied and opaque Format_ARGB32.
[[nodiscard]] QImage halfImage(const QImage &image);

} // namespace velmora
