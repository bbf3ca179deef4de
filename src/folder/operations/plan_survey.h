#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/operations/operation_plan.h"

namespace velmora {

/// Looks at every place of a plan and returns the plan made exact: what is seen with its identity and precise time,
/// links for what they are. Synchronous, for a worker; reads only. Two system calls for each step; progress counts
/// steps, phase 0.
///
/// - A folder that goes over whole takes along what the comparison does not list; what of that no copy can be made of,
///   or filters would hide, is left out by name.
/// - Entries that are no longer what the comparison saw are left out.
/// - What the comparison saw through a link is left out; the link itself is the entry and is copied as a link.
/// - A folder that goes to the recycle bin with all that is in it becomes one step; if it holds more than the steps
///   name, they stay single ones, and the folder stays.
/// - Steps to an unknown place become `Copy`, `Replace` or nothing by what is there.
/// - The plan is refused when one of its two roots lies in the other by whatever path, or is missing.
[[nodiscard]] OperationPlan surveyPlan(OperationPlan plan, FileLayer &files, const CancelFlag &cancel,
                                       Progress &progress);

} // namespace velmora
