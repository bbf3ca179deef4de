#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace velmora {

/// Selects the "Fusion" style, if there is one; does nothing when it is worn already.
void wearFusion();

/// Dresses the whole application: "Fusion" style, palette, and the "appDarkTheme" property of the application object.
void applyTheme(bool dark);

/// Whether the application wears the dark theme.
[[nodiscard]] bool isDarkTheme();

/// The resource that `name` ("compare.png", "icons/compare.png", ":/icons/compare.png") stands for under the current
/// theme: the themed image if it loads, else the plain one if that does, else the themed path.
[[nodiscard]] QString themedIconPath(const QString &name);

/// That image as an icon for menus and tool buttons (20 x 20) in the device's resolution.
[[nodiscard]] QIcon themedIcon(const QString &name);

/// `over` laid on `under` with `share` (0 to 1) of its own colour.
[[nodiscard]] QColor blended(const QColor &over, const QColor &under, double share);

} // namespace velmora
