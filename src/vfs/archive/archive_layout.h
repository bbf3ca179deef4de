#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_problem.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace velmora {

class ArchiveSource;

/// What was written of some entries.
struct LayOutResult {
    QStringList laidOut; ///< absolute paths of those that were asked for and could be written, folders as well
    qint64 files = 0;
    QList<ArchiveProblem> problems; ///< what was not
    QString error;                  ///< the system's words, where it could not write; the rest is not there then
};

/// Writes entries, folders with all that is in them, into `folder`, which is new and private to this user: nothing in
/// it is replaced or followed. Each path gets the bare name of its entry; links become copies of what they lead to,
/// archives within become folders. Each archive is read once, from its beginning on. Names that cannot stand in a
/// folder are left out. Progress counts bytes. For a worker.
[[nodiscard]] LayOutResult layOutEntries(const ArchiveSource &archive, const QStringList &paths, const QString &folder,
                                         const CancelFlag &cancel, Progress &progress);

} // namespace velmora
