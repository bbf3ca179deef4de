#pragma once

#include "core/runner.h"
#include "session/fault_text.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QString>

#include <utility>

namespace velmora {

/// Shows how far a run is that reads the file which `state` names.
void reportReading(StatusLine &status, const ProgressState &state);

/// Hands what a run brought to `done` when it came to its end. That it was cancelled or failed is all that is told
/// otherwise; `withoutMemory` as `faultText` has it.
template <typename T, typename Done>
void handOver(RunOutcome<T> &&outcome, StatusLine &status, const QString &withoutMemory, Done &&done)
{
    status.clearProgress();
    if (outcome.end == RunEnd::Done)
        std::forward<Done>(done)(std::move(*outcome.value));
    else if (outcome.end == RunEnd::Cancelled)
        status.showMessage(Velmora::tr("Cancelled"));
    else
        status.showFailure(faultText(outcome.fault, withoutMemory));
}

/// The same where little memory is taken.
template <typename T, typename Done>
void handOver(RunOutcome<T> &&outcome, StatusLine &status, Done &&done)
{
    handOver(std::move(outcome), status, Velmora::tr("Not enough memory"), std::forward<Done>(done));
}

} // namespace velmora
