#pragma once

#include "cli/command_line.h"
#include "vfs/place/tree_path.h"

#include <QList>
#include <QString>

namespace velmora::cli {

/// Why there is no tree at `path`.
[[nodiscard]] QString treeFaultText(const QString &path, const TreeAt &tree);

/// What of an archive is not there to see, in words; those of a kind in the plural.
[[nodiscard]] const char *archiveProblemWords(ArchiveProblem::Kind kind);
[[nodiscard]] QString archiveProblemLine(const ArchiveProblem &problem);

/// Tells what of an archive is not there to see. True when that may hide a difference.
bool complainAboutArchive(const Streams &streams, const QString &archive, const QList<ArchiveProblem> &problems);

} // namespace velmora::cli
