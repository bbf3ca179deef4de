#pragma once

#include "folder/engine/duplicate_scan.h"
#include "folder/operations/plan_builders.h"

namespace velmora {

/// Of one group the copies that shall go, as indexes into it, in any order.
struct ExtraCopies {
    DuplicateGroup group;
    QList<qsizetype> extra;
};

/// The copies of `group` that may be one that stays when `extra` go: neither among these nor a link to somewhere else.
[[nodiscard]] bool keepsOne(const ExtraCopies &copies);

/// Deletes copies, each only while another one that stays has the same bytes. References, links to somewhere else and
/// all copies of a group of which none would stay are left out by name. `roots`: those of the scan.
[[nodiscard]] OperationPlan planDeleteCopies(const QList<DuplicateRoot> &roots, const QList<ExtraCopies> &deletions,
                                             DeleteManner manner);

} // namespace velmora
