#pragma once

#include <QProxyStyle>

namespace velmora {

/// The "Fusion" style, with check boxes and radio buttons whose empty frames are seen in the dark theme, too.
///
/// Fusion makes those frames by darkening the window's colour, which leaves nothing of them on a dark window.
class FusionStyle final : public QProxyStyle {
    Q_OBJECT
public:
    FusionStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};

} // namespace velmora
