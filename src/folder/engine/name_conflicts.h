#pragma once

#include "folder/engine/folder_diff_item.h"
#include "folder/engine/sync_planner.h"

#include <QList>
#include <QString>

namespace velmora {

/// A name that a plan brings to a side, and what may be wrong with it there or on another system.
struct NameConflict {
    enum class Kind : quint8 {
        Case,       ///< it differs from another in the same folder only by the case of letters
        Form,       ///< ... only by the form in which Unicode writes the same letters
        NotAllowed, ///< Windows cannot hold it, or holds it under another name
        TooLong,    ///< more than 255 bytes in UTF-8, which is what most file systems hold
    };

    Kind kind = Kind::Case;
    QString name;  ///< relative to both folders
    QString other; ///< of the first two kinds, the entry that it may meet

    friend bool operator==(const NameConflict &, const NameConflict &) = default;
};

/// The conflicts of all names that carrying out `plan` brings to a side where they are not, in the order of the plan;
/// `items`: what the plan was made from. Looks at no disk: whether a file system tells letters apart, only it knows.
[[nodiscard]] QList<NameConflict> findNameConflicts(const QList<FolderDiffItem> &items,
                                                    const QList<SyncPlanItem> &plan);

/// Whether Windows holds an entry of this bare name under it: see "Naming Files, Paths, and Namespaces" in its
/// documentation.
[[nodiscard]] bool isWindowsName(QStringView name);

} // namespace velmora
