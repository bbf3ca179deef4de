#include "platform/file_contents_unix.h"

#include "platform/file_streams_unix.h"

#include <chrono>
#include <limits>

#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#endif

namespace velmora {

namespace {

constexpr qint64 toTheEnd = std::numeric_limits<qint64>::max();

/// Chooses pieces that take long enough to be worth a call and short enough to stop between them.
class PieceSize {
public:
    [[nodiscard]] qint64 next()
    {
        const auto now = std::chrono::steady_clock::now();
        if (m_size == 0)
            m_size = smallest;
        else if (now - m_last < std::chrono::milliseconds(8))
            m_size = std::min(m_size * 2, largest);
        else if (now - m_last > std::chrono::milliseconds(25))
            m_size = std::max(m_size / 2, smallest);
        m_last = now;
        return m_size;
    }

private:
    static constexpr qint64 smallest = qint64(256) << 10U;
    static constexpr qint64 largest = qint64(4) << 20U;
    std::chrono::steady_clock::time_point m_last;
    qint64 m_size = 0;
};

/// Lets the disk write along with a large copy, one piece behind it: what is left for the end, when nobody can stop it
/// any more, is little.
class WriteBack {
public:
    explicit WriteBack(int file) : m_file(file) {}

    void advanceTo([[maybe_unused]] qint64 written)
    {
#if defined(__linux__) && defined(__GLIBC__)
        constexpr qint64 smallestPiece = qint64(256) << 10U;
        if (written - m_begun < smallestPiece)
            return;
        // Errors show when the file is flushed.
        (void)::sync_file_range(m_file, m_begun, written - m_begun, SYNC_FILE_RANGE_WRITE);
        if (m_begun > m_settled) {
            (void)::sync_file_range(m_file, m_settled, m_begun - m_settled,
                                    SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER);
        }
        m_settled = m_begun;
        m_begun = written;
#endif
    }

private:
    int m_file;
    qint64 m_settled = 0; ///< up to here all is on the disk
    qint64 m_begun = 0;   ///< up to here the disk has been told to write
};

class ContentCopy {
public:
    ContentCopy(int from, int to, const FileSink::Tick &tick) : m_from(from), m_to(to), m_tick(tick), m_writeBack(to) {}

    FileError run()
    {
        struct stat status {};
        if (::fstat(m_from, &status) != 0)
            return lastError();
        m_size = status.st_size;
        if (shareBlocks())
            return m_tick(m_size) ? FileError() : FileError{FileErrorKind::Stopped, {}};
        constexpr qint64 blockSize = 512; // that of st_blocks, whatever the file system's
        const bool mayHaveHoles = m_size > largestThroughMemory && qint64(status.st_blocks) * blockSize < m_size;
        return mayHaveHoles ? copyBetweenHoles() : copyUpTo(toTheEnd);
    }

private:
    /// Lets the file system share the contents between both files, where it can.
    [[nodiscard]] bool shareBlocks() const
    {
#ifdef FICLONE
        return m_size > largestThroughMemory && ::ioctl(m_to, FICLONE, m_from) == 0;
#else
        return false;
#endif
    }

    FileError copyBetweenHoles()
    {
#if defined(SEEK_DATA) && defined(SEEK_HOLE)
        off_t data = ::lseek(m_from, 0, SEEK_DATA);
        if (data < 0 && errno != ENXIO) // a file system that does not tell
            return ::lseek(m_from, 0, SEEK_SET) == 0 ? copyUpTo(toTheEnd) : lastError();
        for (; data >= 0; data = ::lseek(m_from, m_copied, SEEK_DATA)) {
            const off_t end = ::lseek(m_from, data, SEEK_HOLE);
            if (end < 0 || ::lseek(m_from, data, SEEK_SET) < 0 || ::lseek(m_to, data, SEEK_SET) < 0)
                return lastError();
            m_copied = data;
            if (const FileError error = copyUpTo(end); error.isError())
                return error;
            if (m_copied < end) // it has become shorter
                break;
        }
        return ::ftruncate(m_to, m_size) == 0 ? FileError() : lastError();
#else
        return copyUpTo(toTheEnd);
#endif
    }

    /// From the position of both files, which is `m_copied`, to `end` or that of the file.
    FileError copyUpTo(qint64 end)
    {
        const FileError error = copyInSystem(std::min(end, m_size));
        return error.isError() ? error : copyThroughMemory(end);
    }

    /// Ends early without an error where the system cannot; what is left is copied through memory.
    FileError copyInSystem([[maybe_unused]] qint64 end)
    {
#if defined(__linux__) && defined(__GLIBC__)
        if (m_size <= largestThroughMemory)
            return {};
        while (m_copied < end) {
            const qint64 wanted = std::min(m_piece.next(), end - m_copied);
            const ssize_t count = ::copy_file_range(m_from, nullptr, m_to, nullptr, std::size_t(wanted), 0);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG))
                return lastError();
            if (count <= 0) // another file system, or one that cannot; reading tells whether it is a real error
                return {};
            if (!advance(count))
                return {FileErrorKind::Stopped, {}};
        }
#endif
        return {};
    }

    FileError copyThroughMemory(qint64 end)
    {
        if (m_copied >= end)
            return {};
        if (!m_block) {
            m_blockSize = std::clamp<qint64>(m_size + 1, 4 << 10, 256 << 10); // one more shows the end
            m_block = std::make_unique_for_overwrite<char[]>(std::size_t(m_blockSize));
        }
        while (m_copied < end) {
            const qint64 wanted = std::min(m_blockSize, end - m_copied);
            const FilePiece piece = readPiece(m_from, m_block.get(), wanted);
            if (piece.failed)
                return {FileErrorKind::ReadFailed, lastError().reason};
            if (const FileError error = writePiece(m_to, m_block.get(), piece.length); error.isError())
                return error;
            if (piece.length > 0 && !advance(piece.length))
                return {FileErrorKind::Stopped, {}};
            if (piece.length < wanted)
                return {};
        }
        return {};
    }

    /// False when the caller wants no more.
    [[nodiscard]] bool advance(qint64 count)
    {
        m_copied += count;
        m_writeBack.advanceTo(m_copied);
        return m_tick(m_copied);
    }

    int m_from;
    int m_to;
    const FileSink::Tick &m_tick;
    PieceSize m_piece;
    WriteBack m_writeBack;
    std::unique_ptr<char[]> m_block;
    qint64 m_blockSize = 0;
    qint64 m_size = 0;   ///< of `m_from`, as it was at first
    qint64 m_copied = 0; ///< holes included
};

} // namespace

FileError copyContents(int from, int to, const FileSink::Tick &tick)
{
    return ContentCopy(from, to, tick).run();
}

FileError copyContents(const std::string &from, int to, const FileSink::Tick &tick)
{
    const auto length = qint64(from.size());
    const FileError error = writePiece(to, from.data(), length);
    return error.isError() || length == 0 || tick(length) ? error : FileError{FileErrorKind::Stopped, {}};
}

FilePiece readPiece(int file, char *buffer, qint64 length)
{
    qint64 total = 0;
    while (total < length) {
        const ssize_t count = ::read(file, buffer + total, std::size_t(length - total));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return {total, true};
        if (count == 0)
            break;
        total += count;
    }
    return {total, false};
}

FileError writePiece(int file, const char *bytes, qint64 length)
{
    while (length > 0) {
        const ssize_t count = ::write(file, bytes, std::size_t(length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return lastError();
        bytes += count;
        length -= count;
    }
    return {};
}

} // namespace velmora
