#pragma once

#include "folder/engine/duplicate_scan.h"

namespace velmora {

/// Which copy of a group stays.
enum class KeepRule : quint8 {
    Newest,
    Oldest,
    ShortestPath,
    InFolders, ///< every copy in one of some folders; groups that have none there are left as they are
};

/// The indexes of the copies of `group` that go so that what the rule says stays; in their order, never all. What is
/// a reference, or a link to somewhere else, never goes; where a reference stays, all others go, whatever the rule.
/// Of equals the first stays. `folders`: of `InFolders`, absolute.
[[nodiscard]] QList<qsizetype> extraCopies(const DuplicateGroup &group, KeepRule rule, const QStringList &folders = {});

} // namespace velmora
