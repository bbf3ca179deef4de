#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/actions/action_request.h"

namespace velmora {

/// What a command would do, ready to be shown and carried out.
struct PreparedAction {
    OperationPlan plan;          ///< surveyed
    FolderActionContext context; ///< the request's, its items completed by what had to be listed
};

/// Makes the exact plan of a request: lists what the context lacks, builds the plan and looks at every place of it.
/// Synchronous, for a worker; reads only. A plan that was cancelled says so as its refusal.
[[nodiscard]] PreparedAction prepareAction(const ActionRequest &request, FileLayer &files, const CancelFlag &cancel,
                                           Progress &progress);

/// Both plans in one, the steps of `second` last. A refusal of either is that of both.
[[nodiscard]] OperationPlan joinedPlans(OperationPlan first, const OperationPlan &second);

} // namespace velmora
