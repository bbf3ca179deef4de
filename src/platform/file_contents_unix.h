#pragma once

#include "platform/file_layer.h"

namespace velmora {

/// Copies all of the open file `from`, which is unread, to the open file `to`, which is empty, in the quickest way that
/// there is: blocks are shared where the file system can, else the system copies, else the bytes go through memory.
/// Holes stay holes. What is copied is what is there: a file that changes meanwhile is the caller's to notice.
/// `tick` as that of `FileSink::copyFrom`.
[[nodiscard]] FileError copyContents(int from, int to, const FileSink::Tick &tick);
/// The same for a file that has been read.
[[nodiscard]] FileError copyContents(const std::string &from, int to, const FileSink::Tick &tick);

/// Up to this size the system is not asked to copy: reading and writing takes less time.
inline constexpr qint64 largestThroughMemory = (64 << 10) - 1;

/// Reads the next bytes of `file`; fewer only at its end or, with errno set, when `failed`.
[[nodiscard]] FilePiece readPiece(int file, char *buffer, qint64 length);

/// Writes all bytes at the position of `file`.
[[nodiscard]] FileError writePiece(int file, const char *bytes, qint64 length);

} // namespace velmora
