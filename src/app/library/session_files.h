#pragma once

#include "session/session_record.h"

#include <QList>

#include <optional>

namespace velmora {

/// A session that is open in a tab.
struct OpenTab {
    SessionRecord record;
    int tabIndex = -1; ///< in the tab host when it was saved, -1 when that is not known

    friend bool operator==(const OpenTab &, const OpenTab &) = default;
};

/// What a workspace file holds.
struct Workspace {
    QList<SessionRecord> sessions; ///< a history, oldest first
    QList<OpenTab> openTabs;
    int activeTabIndex = -1;

    friend bool operator==(const Workspace &, const Workspace &) = default;
};

/// The contents of a session file. Fields that are missing or of another type read as empty; the version is not looked
/// at.
[[nodiscard]] QJsonObject sessionToJson(const SessionRecord &record);
[[nodiscard]] SessionRecord sessionFromJson(const QJsonObject &object);

/// The contents of a workspace file. Reading leaves out entries without a type; a history entry without a time is of
/// now.
[[nodiscard]] QJsonObject workspaceToJson(const Workspace &workspace);
[[nodiscard]] Workspace workspaceFromJson(const QJsonObject &object);

/// Which of a workspace's `openTabs` was in front when it was saved; -1 when none of them was.
[[nodiscard]] qsizetype frontTab(const Workspace &workspace);

/// The largest file that is looked into, in bytes. A workspace of a hundred sessions has a hundredth of it.
inline constexpr qint64 jsonFileLimit = 16 * 1024 * 1024;

/// Why a file gave no object. One that is too large is taken to hold none.
enum class JsonFileError { None, CannotOpen, NoObject };

/// The JSON object in a file, or why there is none. Blocks for as long as reading `jsonFileLimit` takes.
struct JsonFile {
    QJsonObject object;
    JsonFileError error = JsonFileError::None;
};
[[nodiscard]] JsonFile readJsonFile(const QString &path);

/// Replaces a file in one step; false when that fails.
[[nodiscard]] bool writeJsonFile(const QString &path, const QJsonObject &object);

} // namespace velmora
