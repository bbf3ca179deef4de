#pragma once

namespace velmora {

/// Makes every `DiffPane` tell assistive tools what it shows: the line of the caret as its text, the row of the caret
/// in words as its value, the current difference as its description. Once for the program; further calls do nothing.
void installPaneAccessibility();

} // namespace velmora
