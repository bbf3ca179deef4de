#pragma once

#include "platform/file_layer.h"

#include <windows.h>

namespace velmora {

/// The meaning of an error number of the system, as `GetLastError` gives it.
[[nodiscard]] FileError fileErrorOf(DWORD number);

/// The meaning of what a call of the shell returned; no error for success.
[[nodiscard]] FileError fileErrorOfShell(HRESULT result);

} // namespace velmora
