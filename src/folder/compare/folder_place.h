#pragma once

#include "session/session_record.h"

#include <optional>

namespace velmora {

/// Where a session is in its two trees: the folders that are loaded, and the way up from them and back.
class FolderPlace {
public:
    /// Takes the folders that are being loaded. True when they are others than before.
    bool enter(const SessionPaths &folders);
    [[nodiscard]] const SessionPaths &folders() const { return m_folders; }
    /// What a tab on them is called.
    [[nodiscard]] QString title() const;

    /// The folders around those at the two paths, by the text alone: the way up must be there for folders that are
    /// gone, too. Nothing when one side has none. Remembers the left one's name until it is taken.
    [[nodiscard]] std::optional<SessionPaths> goUp(const SessionPaths &from);
    /// The entry that one has come out of; once.
    [[nodiscard]] QString takeOrigin() { return std::exchange(m_origin, {}); }

private:
    SessionPaths m_folders;
    QString m_origin;
};

} // namespace velmora
