#include "platform/file_streams_unix.h"

#include "platform/recycle_bin_unix.h"

#include <chrono>

#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#endif

namespace velmora {

namespace {

constexpr qint64 nanoseconds = 1'000'000'000;

timespec modificationTime(const struct stat &status)
{
#ifdef __APPLE__
    return status.st_mtimespec;
#else
    return status.st_mtim;
#endif
}

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
    WriteBack(int file, qint64 begin) : m_file(file), m_settled(begin), m_begun(begin) {}

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
    qint64 m_settled; ///< up to here all is on the disk
    qint64 m_begun;   ///< up to here the disk has been told to write
};

} // namespace

FileError lastError()
{
    return fileErrorOf(errno);
}

NodeState stateOf(const struct stat &status, bool lastingIdentities)
{
    NodeState node;
    node.kind = S_ISREG(status.st_mode)   ? NodeKind::File
                : S_ISDIR(status.st_mode) ? NodeKind::Folder
                : S_ISLNK(status.st_mode) ? NodeKind::Link
                                          : NodeKind::Special;
    node.size = status.st_size;
    const timespec time = modificationTime(status);
    node.modifiedNs = qint64(time.tv_sec) * nanoseconds + time.tv_nsec;
    if (lastingIdentities)
        node.identity = identityOf(status);
    node.permissions = status.st_mode & permissionBits;
    return node;
}

FileError setAttributes(int base, const char *name, const NodeState &model)
{
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    const qint64 fraction = (model.modifiedNs % nanoseconds + nanoseconds) % nanoseconds;
    times[1].tv_sec = static_cast<time_t>((model.modifiedNs - fraction) / nanoseconds);
    times[1].tv_nsec = static_cast<long>(fraction);
    // The permissions first: with the owner's right to write taken away the time can still be set, by the owner.
    if (name) {
        if (model.kind != NodeKind::Link && ::fchmodat(base, name, mode_t(model.permissions), 0) != 0)
            return lastError();
        return ::utimensat(base, name, times, AT_SYMLINK_NOFOLLOW) == 0 ? FileError() : lastError();
    }
    if (::fchmod(base, mode_t(model.permissions)) != 0 || ::futimens(base, times) != 0)
        return lastError();
    return {};
}

NodeResult UnixSource::state()
{
    struct stat status {};
    if (::fstat(m_file.get(), &status) != 0)
        return {{}, lastError()};
    return {stateOf(status, m_lastingIdentities), {}};
}

FilePiece UnixSource::read(char *buffer, qint64 length)
{
    qint64 total = 0;
    while (total < length) {
        const ssize_t count = ::read(m_file.get(), buffer + total, std::size_t(length - total));
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

FileError UnixSink::write(const char *bytes, qint64 length)
{
    while (length > 0) {
        const ssize_t count = ::write(m_file.get(), bytes, std::size_t(length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return lastError();
        bytes += count;
        length -= count;
    }
    return {};
}

FileError UnixSink::copyFrom(FileSource &source, const Tick &tick)
{
    auto &from = static_cast<UnixSource &>(source);
    struct stat status {};
    if (::fstat(from.descriptor(), &status) != 0)
        return lastError();
    if (shareBlocks(from.descriptor(), status.st_size))
        return tick(status.st_size) ? FileError() : FileError{FileErrorKind::Stopped, {}};
    qint64 copied = 0;
    const FileError error = copyInSystem(from.descriptor(), status.st_size, copied, tick);
    if (error.isError())
        return error;
    return copyThroughMemory(from, copied, tick);
}

FileError UnixSink::keepAttributes(const NodeState &model)
{
    return setAttributes(m_file.get(), nullptr, model);
}

FileError UnixSink::flush()
{
    while (::fsync(m_file.get()) != 0) {
        if (errno != EINTR)
            return lastError();
    }
    return {};
}

NodeResult UnixSink::state()
{
    struct stat status {};
    if (::fstat(m_file.get(), &status) != 0)
        return {{}, lastError()};
    return {stateOf(status, m_lastingIdentities), {}};
}

bool UnixSink::shareBlocks([[maybe_unused]] int from, [[maybe_unused]] qint64 size)
{
#ifdef FICLONE
    constexpr qint64 worthACall = 64 << 10;
    return size >= worthACall && ::ioctl(m_file.get(), FICLONE, from) == 0;
#else
    return false;
#endif
}

FileError UnixSink::copyInSystem([[maybe_unused]] int from, [[maybe_unused]] qint64 size,
                                 [[maybe_unused]] qint64 &copied, [[maybe_unused]] const Tick &tick)
{
#if defined(__linux__) && defined(__GLIBC__)
    constexpr qint64 worthACall = 64 << 10;
    if (size < worthACall)
        return {};
    PieceSize piece;
    WriteBack writeBack(m_file.get(), copied);
    while (copied < size) {
        const ssize_t count = ::copy_file_range(from, nullptr, m_file.get(), nullptr, std::size_t(piece.next()), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG))
            return lastError();
        if (count <= 0) // another file system, or one that cannot; reading tells whether it is a real error
            return {};
        copied += count;
        writeBack.advanceTo(copied);
        if (!tick(copied))
            return {FileErrorKind::Stopped, {}};
    }
#endif
    return {};
}

FileError UnixSink::copyThroughMemory(UnixSource &from, qint64 copied, const Tick &tick)
{
    const NodeResult known = from.state();
    const qint64 blockSize = std::clamp<qint64>(known.node.size + 1, 4 << 10, 256 << 10); // one more shows the end
    WriteBack writeBack(m_file.get(), copied);
    const auto block = std::make_unique_for_overwrite<char[]>(std::size_t(blockSize));
    for (;;) {
        const FilePiece piece = from.read(block.get(), blockSize);
        if (piece.failed)
            return {FileErrorKind::ReadFailed, lastError().reason};
        if (const FileError error = write(block.get(), piece.length); error.isError())
            return error;
        copied += piece.length;
        writeBack.advanceTo(copied);
        if (piece.length > 0 && !tick(copied))
            return {FileErrorKind::Stopped, {}};
        if (piece.length < blockSize)
            return {};
    }
}

} // namespace velmora
