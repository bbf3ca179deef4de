#pragma once

#include <QStringView>

namespace velmora {

/// Whether a name may be given to a file that is laid out or extracted: it leads nowhere but into the folder that it is
/// put in, and any system can hold it. Windows gives ":" and some words ("CON", "lpt1.txt") a meaning of their own, and
/// takes dots and blanks at the end away; no file system holds more than 255 bytes. The one rule for names that come
/// from an archive, a commit or a host.
[[nodiscard]] bool canStandInFolder(QStringView name);

/// Whether a path with "/" leads to something below the folder that it is relative to.
[[nodiscard]] bool staysInFolder(QStringView relativePath);

} // namespace velmora
