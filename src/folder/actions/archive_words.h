#pragma once

#include "vfs/archive/archive_opening.h"

#include <QString>

namespace velmora {

/// Why an archive cannot be opened, as a sentence.
[[nodiscard]] QString archiveFaultText(const QString &path, const ArchiveOpening &opening);

/// What of an archive is not there to see, as a sentence.
[[nodiscard]] QString archiveProblemText(const ArchiveProblem &problem);

} // namespace velmora
