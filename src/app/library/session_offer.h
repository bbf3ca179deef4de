#pragma once

#include <QString>

namespace velmora {

struct SessionRecord;
struct Workspace;

/// Whether opening a session asks another machine for something, which tells it of the person who asks: by a path of a
/// share or a host, by a mounted folder of another machine other than the one that the person's home is in, or by the
/// kind of session. Asks nothing but this system.
[[nodiscard]] bool leadsElsewhere(const SessionRecord &session);
/// The same for the sessions that a workspace may open as tabs.
[[nodiscard]] bool leadsElsewhere(const Workspace &workspace);

/// What a session would be and would look at, one line each. Nothing in a path can hide what it is.
[[nodiscard]] QString offerText(const SessionRecord &session);
/// The same, one line for each session.
[[nodiscard]] QString offerText(const Workspace &workspace);

/// A text of unknown origin as one line in which nothing is hidden, as `visibleName` shows it; without the middle of
/// one that is longer than systems allow.
[[nodiscard]] QString visibleText(const QString &text);

} // namespace velmora
