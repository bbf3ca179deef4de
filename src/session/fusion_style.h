#pragma once

#include <QProxyStyle>

namespace velmora {

/// The "Fusion" style, with check boxes and radio buttons whose empty frames are seen in the dark theme, too,
/// and with the same order of buttons in all dialogs on all systems: what is done stands before "Cancel", without
/// icons.
///
/// Fusion makes those frames by darkening the window's colour, which leaves nothing of them on a dark window.
class FusionStyle final : public QProxyStyle {
    Q_OBJECT
public:
    FusionStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *data) const override;
};

} // namespace velmora
