#pragma once

#include <QString>

class QFileDevice;

namespace velmora {

/// Gives `file`, which will take the place of the file at `target`, that one's owner, group and access bits as far as
/// this user may give them: on Windows its access list, what hides it and its named streams, on Linux its access list
/// and its attributes "user.*". Where owner or group cannot stay, the bits that speak for them give no more than those
/// for others. Does nothing when there is no such file. Returns the system's own words when any of this cannot be set,
/// empty otherwise. Precondition: `file` is open.
[[nodiscard]] QString takeAfter(QFileDevice &file, const QString &target);

/// Waits until what was written to `file` is on the disk; returns the system's own words when it cannot be brought
/// there, empty otherwise, also where the file system knows no such request. Precondition: `file` is open and flushed.
[[nodiscard]] QString bringToDisk(QFileDevice &file);

/// Waits, for at most a third of a second, while somebody has the file at `path` open in a way that forbids replacing
/// it, as programs that look for viruses or index contents do for a moment. Only Windows knows such a way.
void awaitReplaceable(const QString &path);

/// Asks that the name under which a file was replaced at `path` is on the disk, too.
void bringNameToDisk(const QString &path);

} // namespace velmora
