#pragma once

#include "folder/operations/operation_plan.h"

#include <functional>

namespace velmora {

/// Called for each entry of a tree with its path in it; of folders after what is in them. False stops.
using TreeVisitor = std::function<bool(const QString &relative, const NodeState &node)>;

/// Visits everything in a folder, hidden entries too; links are entries and are not followed. An error ends the walk.
[[nodiscard]] FileError visitTree(FolderHandle &folder, const TreeVisitor &visit);

/// What lies in a folder, in short: equal for two moments only when nothing in it has changed between them.
struct TreeSummary {
    quint64 fingerprint = 0;
    qint64 files = 0;
    qint64 bytes = 0;

    /// Independent of the order of the calls.
    void add(const QString &relative, const NodeState &node);
    friend bool operator==(const TreeSummary &, const TreeSummary &) = default;
};

} // namespace velmora
