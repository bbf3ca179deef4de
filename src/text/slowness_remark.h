#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

struct CompareRemarks;

/// That `expressions` of the unimportant text are too slow to be looked for in the rest of the lines.
[[nodiscard]] QString leftOutRemark(const QStringList &expressions);

/// What is to be said of expressions that gave up, which some have done.
[[nodiscard]] QString slownessRemark(const CompareRemarks &remarks);

} // namespace velmora
