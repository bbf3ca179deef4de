#pragma once

#include "core/recovery_store.h"
#include "session/document/loaded_text.h"
#include "session/pane/edit_buffer.h"
#include "session/pane/pane_index.h"
#include "session/session_record.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// A text that no file holds, and what belongs to it.
struct UnsavedText {
    PaneIndex pane;
    QString path; ///< of the file it was read from; "[Clipboard]" for none
    LoadedText loaded;
    bool isEdited = true; ///< false for a text without a file that is as it came
    std::shared_ptr<const EditSnapshot> text;
};

/// What a session on texts would lose if the program ended now.
struct UnsavedTexts {
    QString kind; ///< of the session
    SessionPaths paths;
    QJsonObject options;
    std::vector<UnsavedText> texts;
};

/// The record that keeps `texts`: a description with the session's "kind", its paths, "options" and "texts", one object
/// for each of the record's texts with the number of its "pane". May be called on a worker.
[[nodiscard]] RecoveryRecord toRecoveryRecord(const UnsavedTexts &texts);

/// The texts in a record; nothing when it is none of a session on texts.
[[nodiscard]] std::optional<UnsavedTexts> fromRecoveryRecord(const RecoveryRecord &record);

/// Whether the text's file holds it by now, as its encoding writes it: a program that ends between the moment when a
/// file is saved and the one when its record is removed leaves a record of what nobody would lose. Reads the file.
[[nodiscard]] bool isInItsFile(const UnsavedText &text);

/// False for a record of texts whose edited texts are all in their files.
[[nodiscard]] bool holdsUnsavedText(const RecoveryRecord &record);

} // namespace velmora
