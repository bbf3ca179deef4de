#pragma once

#include <QString>

namespace velmora {

/// Sessions open copies of what has no path of its own: entries of archives, files of a commit or of a host. They lie
/// in folders that go with the session which made them.

/// The template of such a folder, for `QTemporaryDir`.
[[nodiscard]] QString passingCopiesTemplate();

/// Whether a path is in such a folder, now or of an earlier run: nobody can come back to it.
[[nodiscard]] bool isPassingCopy(const QString &path);

} // namespace velmora
