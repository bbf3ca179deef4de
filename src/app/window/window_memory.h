#pragma once

class QWidget;

namespace velmora {

/// How the sessions panel stood when the window was last closed.
struct PanelMemory {
    bool shown = true;
    int width = 0; ///< in pixels, 0 while nothing is remembered

    [[nodiscard]] static PanelMemory load();
    void save() const;
};

/// Remembers size, place and whether the window was maximised, in the settings of the interface.
void rememberPlace(const QWidget &window);
/// Gives the window what was remembered, on a screen that is there; false when nothing was.
bool restorePlace(QWidget &window);

} // namespace velmora
