#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/archive_problem.h"
#include "vfs/archive/archive_source.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace velmora {

/// What becomes of archives within an archive. They are told by the endings of their names, and then by what is in
/// them: documents that are zips at heart stay files.
enum class NestedArchives : quint8 { StayFiles, BecomeFolders };

/// Whether contents are read when an archive is opened, so that they can be compared without being unpacked again. Zips
/// never need it: their directories have checksums.
enum class ArchiveReading : quint8 { NamesOnly, Contents };

struct ArchiveRequest {
    QString path;             ///< absolute
    QByteArray password = {}; ///< UTF-8; empty: none
    NestedArchives nested = NestedArchives::StayFiles;
    ArchiveReading reading = ArchiveReading::Contents;
    ArchiveLimits limits = {};
};

enum class ArchiveFault : quint8 {
    None,
    Missing,       ///< there is no such file
    Unreadable,    ///< the system refuses it
    NoLibrary,     ///< the system lacks the library that reads archives
    NoArchive,     ///< the content is none that is known
    Damaged,       ///< it begins as an archive does, and nothing of it can be read
    HiddenNames,   ///< all of it is encrypted, in a way that cannot be read
    WrongPassword, ///< there are entries that the password does not open
    Stopped,
};

struct ArchiveOpening {
    std::shared_ptr<const ArchiveSource> source; ///< null when there is a fault
    ArchiveFault fault = ArchiveFault::None;
    QString reason; ///< the library's own words; may be empty
    QList<ArchiveProblem> problems;
};

/// Opens an archive; its format is told by its content. One that is damaged opens with what can be read of it. Progress
/// counts bytes of the file. Takes as long as unpacking where the format has no directory. For a worker.
[[nodiscard]] ArchiveOpening openArchive(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress);

/// The same for the bytes of `file`; `request.path` is what it is called.
[[nodiscard]] ArchiveOpening openArchiveFile(const std::shared_ptr<OpenFile> &file, const ArchiveRequest &request,
                                             const CancelFlag &cancel, Progress &progress);

/// Whether the ending of a name is one that archives have.
[[nodiscard]] bool looksLikeArchive(const QString &name);

} // namespace velmora
