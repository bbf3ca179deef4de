#pragma once

#include "session/session_record.h"

#include <QList>
#include <QString>

namespace velmora {

/// What a session is called and where its sides are.
struct NamedPaths {
    QString title;
    SessionPaths paths;
};

/// The titles as tabs show them: on one line, and where several are equal with the part of the paths that tells them
/// apart ("a.txt — old <-> new"). In the order of `sessions`.
[[nodiscard]] QStringList tabTexts(const QList<NamedPaths> &sessions);

/// The end of such a text that tells it from others, with the mark before it (" — old <-> new"); empty without one.
[[nodiscard]] QString partOf(const QString &tabText);

/// The title in full and, each on its line, the paths, in the system's form.
[[nodiscard]] QString sessionToolTip(const NamedPaths &session);

/// The paths that are there: base, left, right; in the system's form.
[[nodiscard]] QStringList shownPaths(const SessionPaths &paths);

} // namespace velmora
