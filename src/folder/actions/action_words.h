#pragma once

#include "core/runner.h"
#include "folder/operations/operation_executor.h"
#include "folder/operations/operation_plan.h"

#include <QDateTime>
#include <QString>

namespace velmora {

/// How the facts of plans and of their runs are said to a person. Pure but for the language.

/// A number of bytes in the unit that suits it.
[[nodiscard]] QString sizeText(qint64 bytes);
/// The same for a file, and "<folder>" for a folder.
[[nodiscard]] QString entrySizeText(bool isFolder, qint64 bytes);

[[nodiscard]] QString leftOutText(const LeftOutEntry &entry);
/// Why nothing of the plan is done. Empty for `None` and `Cancelled`.
[[nodiscard]] QString refusalText(const OperationPlan &plan);
/// What went wrong, with the system's own words where there are any.
[[nodiscard]] QString problemText(const OperationProblem &problem);

/// What is said of work that has not come to its end; empty for work that has.
[[nodiscard]] QString endText(RunEnd end, const RunFault &fault);

/// Between what belongs side by side in one line.
inline const QString totalsSeparator = QStringLiteral("   ·   ");

/// One line with what is written, replaced and deleted, in files and bytes.
[[nodiscard]] QString totalsText(const OperationTotals &totals);

/// A text as it stands as a tool tip, which would take a name with brackets for markup.
[[nodiscard]] QString toolTipText(const QString &text);

/// The beginning of a line of the action log.
[[nodiscard]] QString logTime(const QTime &time);

} // namespace velmora
