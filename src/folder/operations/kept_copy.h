#pragma once

#include "folder/operations/operation_plan.h"

namespace velmora {

/// An open file that is unread, and what was seen of it.
struct SeenFile {
    FileSource &source;
    const SeenEntry &seen;
};

enum class CopiesFound : quint8 {
    Same,
    Different, ///< in their bytes, or one is no longer what was seen, cannot be read, or both are one file
    Stopped,
};

/// Whether two files are different files of the same bytes, and both as they were seen before and after the reading.
/// `tick` is asked with each block.
[[nodiscard]] CopiesFound compareCopies(const SeenFile &left, const SeenFile &right, const FileSink::Tick &tick);

} // namespace velmora
