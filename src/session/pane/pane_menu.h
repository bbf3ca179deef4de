#pragma once

#include "session/pane/pane_index.h"

class QMenu;
class QWidget;

namespace velmora {

class PaneView;

/// Adds to a context menu what the clipboard can do for `pane` of `view`.
void addEditCommands(QMenu &menu, PaneView &view, PaneIndex pane);

/// Asks for the number of a line of the active pane and goes there; nothing without a text. The question belongs to
/// `window`, and `view` outlives it.
void askForLine(PaneView &view, QWidget *window);

} // namespace velmora
