#pragma once

#include "core/progress.h"
#include "core/text_encoding.h"
#include "core/text_lines.h"
#include "session/document/file_stamp.h"
#include "session/pane/edit_buffer.h"

#include <QString>

#include <memory>
#include <optional>

namespace velmora {

/// A text that is to be written to a file, copied before the run begins.
struct TextSaveRequest {
    /// What the file at `path` is to the text.
    enum class Target {
        AsRead,  ///< what the text was read from, or missing as it was then; nobody may have written it since
        Changed, ///< the same, and what others did to it may go
        Other,   ///< another file, or none yet
    };

    std::shared_ptr<const EditSnapshot> text;
    TextEncoding encoding; ///< that it was read by; automatic stands for UTF-8
    QString path;
    Target target = Target::Other;
    FileStamp stamp; ///< of the file when the text was read
    /// The encoding that it is written in, when that is to be another one; with its mark or without, whatever the file
    /// has.
    std::optional<TextEncoding> converted = {};
};

/// How a text was written, or why it was not.
struct TextSaveResult {
    enum class End {
        Saved,
        NotEncodable,     ///< the encoding lacks a character; nothing was written
        NotFaithful,      ///< lines that nobody changed would get other bytes; nothing was written
        ChangedMeanwhile, ///< the file is not as it was read; nothing was written
        NotWritten,       ///< the file could not be written and is as it was
    };
    End end = End::Saved;
    QString character;   ///< the one that is lacking
    qsizetype line = -1; ///< where it stands, 0-based
    QString error;       ///< the system's own words
    TextLines written;   ///< the text that the file holds now
    FileStamp stamp;     ///< of the file; when it has changed, as it is, else after it was saved
};

/// Writes a text to a file in one step, each line with its own end. A file that the text was read from keeps its
/// byte-order mark or its lack of one, and nothing is written when the encoding would not even give back the bytes that
/// the file has now, since lines that nobody edited would change. Reentrant; runs on a worker. Progress counts bytes in
/// phase 0.
[[nodiscard]] TextSaveResult saveText(const TextSaveRequest &request, Progress &progress);

} // namespace velmora
