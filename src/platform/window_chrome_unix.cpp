#include "platform/window_chrome.h"

namespace velmora {

// The window manager draws title bars after the desktop's own theme.
void setDarkTitleBar(quintptr /*window*/, bool /*dark*/) {}

void allowOthersToActivate() {}

} // namespace velmora
