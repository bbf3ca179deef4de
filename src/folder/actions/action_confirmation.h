#pragma once

#include "folder/actions/action_request.h"
#include "folder/operations/operation_journal.h"

#include <functional>

class QWidget;

namespace velmora {

/// What a person wants done with a plan.
enum class PlanAnswer {
    CarryOut,
    KeepNothing,     ///< the same, and nothing is kept for undoing
    LeaveOutPresent, ///< another plan, which leaves alone the files of the destination folder
};

/// Called with the answer; not at all when the command is called off.
using PlanAnswered = std::function<void(PlanAnswer)>;

/// Asks for what is at stake in a plan: a mirror, an update and the deletion of more than one entry are shown in full,
/// a copy only where it replaces what is not easily undone. Calls `answered` at once where nothing has to be asked.
/// `limits`: how much of old contents is kept for undoing, and for how long. Questions belong to `window`.
void confirmPlan(QWidget &window, const ActionRequest &request, const OperationPlan &plan, const JournalLimits &limits,
                 const PlanAnswered &answered);

/// Shows a plan and asks whether to carry it out.
void previewPlan(QWidget &window, const OperationPlan &plan, const QString &title, const QString &question,
                 const QString &consent, const std::function<void()> &agreed);

} // namespace velmora
