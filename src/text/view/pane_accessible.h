#pragma once

namespace velmora {

/// Makes every `DiffPane` tell assistive tools what it shows: the row of the caret as its value. Once for the program;
/// further calls do nothing.
void installPaneAccessibility();

} // namespace velmora
