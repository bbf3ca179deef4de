#pragma once

#include <functional>

class QWidget;

namespace velmora {

class RecoveryStore;
class SessionWidget;
struct SessionKindRow;
struct SessionPaths;

/// Opens an empty session of a kind in a new tab, titled after the paths.
using RecoveryOpener = std::function<SessionWidget *(const SessionKindRow &kind, const SessionPaths &paths)>;

/// Asks whether unsaved work that an earlier run has left in `store` is to be restored, and does it: each in a session
/// of its own. What is restored leaves the store when its session has kept it anew; no file of a person is touched.
/// Says so when something cannot be restored because it is damaged. Asks nothing when there is nothing. `store` and
/// `window`, which questions belong to, outlive the answer.
void offerRecovery(RecoveryStore &store, QWidget *window, const RecoveryOpener &open);

} // namespace velmora
