#pragma once

#include "core/runner.h"
#include "core/text_file.h"
#include "session/document/file_stamp.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace velmora {

class EditSnapshot;

/// A text as it was read.
struct LoadedText {
    DecodedText text;
    FileStamp stamp;     ///< of the file, taken before it was read
    bool missing = true; ///< there was no file: `text` is empty
    bool hasConflictMarkers = false;
    /// What an editor showed when the run began, where `text` is the same.
    std::shared_ptr<const EditSnapshot> shown;
};

/// Where a text comes from that a run works on.
struct TextOrigin {
    QString path;                               ///< of an existing file; empty for a missing one
    TextEncoding encoding;                      ///< by which the file is read
    std::optional<LoadedText> loaded;           ///< what is taken instead of reading `path`
    std::shared_ptr<const EditSnapshot> shown;  ///< what an editor shows of this text, if any does
    std::shared_ptr<const EditSnapshot> edited; ///< whose lines stand in for those of `loaded`, if any do
};

/// The text at `origin`; nothing when its file could not be read. `raw` gets the bytes of a file that was read now.
/// For workers.
[[nodiscard]] std::optional<LoadedText> loadText(const TextOrigin &origin, QByteArray &raw, const CancelFlag &cancel);

/// What an editor can go on with, so that it keeps what can be undone: the text it shows where `loaded` is the same
/// text, else null.
[[nodiscard]] std::shared_ptr<const EditSnapshot> keptText(const TextOrigin &origin, const LoadedText &loaded);

/// What stands in the way of writing a text again as it was read.
enum class TextLoss : quint8 {
    None,
    NoText,      ///< it holds bytes that no text has, or is too large to be held
    Undecodable, ///< it holds bytes that its encoding does not know
};
[[nodiscard]] TextLoss lossOfSaving(const LoadedText &loaded);

} // namespace velmora
