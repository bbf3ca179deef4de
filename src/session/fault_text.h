#pragma once

#include <QString>

namespace velmora {

struct RunFault;

/// What a person is told of a run that failed; `withoutMemory` says it for the likeliest reason.
[[nodiscard]] QString faultText(const RunFault &fault, const QString &withoutMemory);

} // namespace velmora
