#pragma once

#include "folder/actions/action_request.h"

#include <utility>

namespace velmora {

/// The texts of one kind of command, untranslated.
struct CommandWords {
    const char *name; ///< of the command itself
    const char *logLine;
    const char *failedFrom; ///< where the entry itself is the trouble; of synchronising commands the whole failure
    const char *failedTo;   ///< where its destination is; null when there is none
    const char *title;      ///< of the message that tells of a failure
};

/// Commands that have no texts of their own are told as deletions.
[[nodiscard]] const CommandWords &wordsOf(FolderCommand command);

/// True for the commands that are about an operation of the past.
[[nodiscard]] inline bool isAboutRun(FolderCommand command)
{
    return kindOf(command) == CommandKind::Undo || kindOf(command) == CommandKind::Continue;
}

/// The roots as the texts of a synchronising command name them: from, to.
[[nodiscard]] std::pair<QString, QString> rootsFromTo(const ActionRequest &request);

/// The command as the journal and the questions name it: "Copy: a.txt".
[[nodiscard]] QString actionTitle(const ActionRequest &request);

/// What the command works on, in short: one name, or how many entries.
[[nodiscard]] QString selectionTitle(const ActionRequest &request);

/// Names a side and a full path on it.
[[nodiscard]] QString sideLine(Side side, const QString &path);

/// For each side that a command takes entries from, or deletes them on, a line that names the side and the full path.
[[nodiscard]] QString sourceLines(const ActionRequest &request);

} // namespace velmora
