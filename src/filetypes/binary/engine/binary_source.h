#pragma once

#include "platform/file_access.h"

#include <QString>

#include <array>
#include <bitset>
#include <memory>

namespace velmora {

/// One file of a comparison, open for reading at any place as long as the object lives. Any number of threads may read
/// from it at once.
///
/// It is read piece by piece and never mapped into memory: a file that others shorten, that vanishes with its medium or
/// that sits on one which fails then only has bytes that cannot be read, where a mapping would end the program, and
/// hold zeros between its new end and the end of the page. On Windows others could not shorten a file that is mapped.
class BinarySource {
public:
    /// Opens the regular file at `path`, which may be relative; null when it cannot be opened or has no length.
    [[nodiscard]] static std::shared_ptr<const BinarySource> open(const QString &path,
                                                                  const FileAccess &files = FileAccess::native());

    /// In bytes, when it was opened.
    [[nodiscard]] qint64 size() const noexcept { return m_size; }

    /// Copies the bytes from `offset` on. False when `offset` or `length` is negative, the range ends beyond `size`, or
    /// some byte of it cannot be read; what `buffer` holds then is undefined.
    [[nodiscard]] bool read(qint64 offset, char *buffer, qint64 length) const;

    /// Copies what can be read from `offset` on, at most `length` bytes, up to the end or the first byte that cannot.
    [[nodiscard]] FilePiece readSome(qint64 offset, char *buffer, qint64 length) const;

    /// See `OpenFile::nextData`.
    [[nodiscard]] qint64 nextData(qint64 offset) const { return m_file->nextData(offset); }

private:
    BinarySource(std::unique_ptr<OpenFile> file, qint64 size) : m_file(std::move(file)), m_size(size) {}

    std::unique_ptr<OpenFile> m_file;
    qint64 m_size;
};

/// Up to 16 bytes of a file, of which some may be unreadable.
struct RowBytes {
    std::array<char, 16> bytes{};
    std::bitset<16> readable;
};

/// Reads `count` bytes, 16 at most, from `offset` on.
[[nodiscard]] RowBytes readRow(const BinarySource &source, qint64 offset, int count);

/// A file from some place on, where what is compared begins. The source outlives it.
struct BinaryPart {
    const BinarySource &source;
    qint64 start = 0; ///< offset in the file, 0 at least; beyond its end nothing is left

    [[nodiscard]] qint64 size() const noexcept { return source.size() > start ? source.size() - start : 0; }
    /// As `BinarySource::nextData`, counted from the start.
    [[nodiscard]] qint64 nextData(qint64 offset) const { return source.nextData(start + offset) - start; }
};

} // namespace velmora
