#pragma once

#include <QtGlobal>

namespace velmora {

/// Makes the title bar of a native window dark or light, where the desktop lets a program choose; elsewhere nothing
/// happens. `window` is the widget's `winId()`. Interface thread.
void setDarkTitleBar(quintptr window, bool dark);

/// Lets another process of the same user bring its window to the front in place of this one, which the desktop
/// otherwise refuses to a program that the user is not working with. To be called right before that process is asked
/// to.
void allowOthersToActivate();

} // namespace velmora
