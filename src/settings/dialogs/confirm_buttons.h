#pragma once

class QDialog;
class QHBoxLayout;

namespace velmora {

/// The line with "Cancel" and "OK" at the foot of `dialog`, connected to it; for its layout, which takes the line over.
/// The buttons are named "settingsCancel" and "settingsOk".
[[nodiscard]] QHBoxLayout *makeConfirmButtons(QDialog &dialog);

} // namespace velmora
