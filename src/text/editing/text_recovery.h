#pragma once

#include "core/recovery_store.h"
#include "core/side.h"
#include "session/pane/edit_buffer.h"
#include "session/session_record.h"
#include "text/text_compare_job.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// One side's text that no file holds, and what belongs to it.
struct UnsavedText {
    Side side = Side::Left;
    QString path; ///< of the file it was read from; "[Clipboard]" for none
    LoadedSide loaded;
    bool isEdited = true; ///< false for a text without a file that is as it came
    std::shared_ptr<const EditSnapshot> text;
};

/// What a text session would lose if the program ended now.
struct UnsavedTexts {
    SessionPaths paths;
    QJsonObject options;
    std::vector<UnsavedText> sides;
};

/// The record that keeps `texts`. May be called on a worker.
[[nodiscard]] RecoveryRecord toRecoveryRecord(const UnsavedTexts &texts);

/// The texts in a record; nothing when it is none of a text session.
[[nodiscard]] std::optional<UnsavedTexts> fromRecoveryRecord(const RecoveryRecord &record);

/// Whether the text's file holds it by now, as its encoding writes it: a program that ends between the moment when a
/// file is saved and the one when its record is removed leaves a record of what nobody would lose. Reads the file.
[[nodiscard]] bool isInItsFile(const UnsavedText &text);

/// False for a record of a text session whose edited texts are all in their files.
[[nodiscard]] bool holdsUnsavedText(const RecoveryRecord &record);

} // namespace velmora
