#pragma once

#include <QKeySequence>
#include <QList>

namespace velmora {

/// The keys of a command that sessions have in common, by the object name of its action; none for other commands. The
/// same command has the same keys in every session; a session may give it keys of its own beside them.
[[nodiscard]] QList<QKeySequence> differenceKeys(QLatin1String action);

} // namespace velmora
