#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// The states of a repository that were compared lately, in the form of `gitSideText`, the latest first.
[[nodiscard]] QStringList recentGitStates(const QString &repository);
void rememberGitState(const QString &repository, const QString &state);

} // namespace velmora
