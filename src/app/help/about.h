#pragma once

#include <QString>

class QWidget;

namespace velmora {

/// "1.0.0", as the build has it.
[[nodiscard]] QString applicationVersion();

/// The rich text of the about box.
[[nodiscard]] QString aboutText();

/// Opens the about box over `parent`, without waiting for its end.
void showAbout(QWidget *parent);

} // namespace velmora
