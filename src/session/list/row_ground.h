#pragma once

#include <QColor>

class QStyleOptionViewItem;

namespace velmora {

/// What lies behind the text of a row: its own colour `base`, and when it is selected a tint over that.
[[nodiscard]] QColor rowGround(const QStyleOptionViewItem &option, const QColor &base);

/// How well one colour is read on another, from 1 to 21 (contrast ratio of WCAG 2.1).
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// `ink`, with as much of the text's own colour in it as it takes to be read on `ground`.
[[nodiscard]] QColor readableInk(const QColor &ink, const QColor &ground);

} // namespace velmora
