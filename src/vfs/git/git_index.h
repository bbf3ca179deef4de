#pragma once

#include "vfs/git/git_scratch.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace velmora {

/// An entry of the index with what git knew of the file when it was added.
struct GitIndexEntry {
    QString path;
    GitEntry entry;
    int stage = 0; ///< 1 to 3 where a merge has left the file open
    qint64 modifiedNs = 0;
    quint32 size = 0;           ///< the lowest 32 bits
    bool isHeldToMatch = false; ///< the file is not to be looked at: assumed unchanged, or not checked out
};

/// Reads what `git ls-files --stage --debug -z` writes; nothing when it is anything else.
[[nodiscard]] std::optional<std::vector<GitIndexEntry>> parseIndexListing(const QByteArray &listing);

} // namespace velmora
