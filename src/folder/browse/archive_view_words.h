#pragma once

#include "folder/browse/archive_rows.h"
#include "vfs/archive/archive_entry.h"

#include <QString>

namespace velmora {

/// "ZIP, 120 files, 3.4 MB, packed 1.2 MB (35%)".
[[nodiscard]] QString archiveFactsText(const ArchiveListing &listing);

/// What a folder, or an archive that stands as one, holds.
[[nodiscard]] QString folderFactsText(const ArchiveListing &listing, qint32 row);

/// The part that is left after packing, "35%"; empty where it is not known.
[[nodiscard]] QString ratioText(qint64 packed, qint64 size);

/// "drwxr-xr-x"; empty where the archive does not tell.
[[nodiscard]] QString modeText(const ArchiveEntry &entry);

/// What a test has come to; `isDamaged` says that the archive is known to be, whatever its entries are.
[[nodiscard]] QString testText(const ArchiveTest &test, bool isDamaged);

} // namespace velmora
