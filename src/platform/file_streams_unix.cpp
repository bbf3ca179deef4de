#include "platform/file_streams_unix.h"

#include "platform/file_contents_unix.h"
#include "platform/file_error_unix.h"

#include <array>

#ifdef __linux__
#include <sys/vfs.h>
#endif

namespace velmora {

namespace {

constexpr qint64 nanoseconds = 1'000'000'000;

/// False on file systems that number files anew whenever they come into memory.
bool hasLastingIdentities([[maybe_unused]] int place)
{
#ifdef __linux__
    struct statfs status {};
    if (::fstatfs(place, &status) == 0) {
        const auto type = static_cast<unsigned long>(status.f_type);
        return type != 0x4D44 && type != 0x2011'BAB0; // FAT, exFAT
    }
#endif
    return true;
}

timespec modificationTime(const struct stat &status)
{
#ifdef __APPLE__
    return status.st_mtimespec;
#else
    return status.st_mtim;
#endif
}

/// For a call that sets times: that of the last access stays.
std::array<timespec, 2> timesOf(const NodeState &model)
{
    const qint64 fraction = (model.modifiedNs % nanoseconds + nanoseconds) % nanoseconds;
    std::array<timespec, 2> times{};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = static_cast<time_t>((model.modifiedNs - fraction) / nanoseconds);
    times[1].tv_nsec = static_cast<long>(fraction);
    return times;
}

} // namespace

FileError lastError()
{
    return fileErrorOf(errno);
}

bool LastingIdentities::of(int place, const struct stat &status)
{
    if (m_volume && *m_volume == status.st_dev)
        return m_last;
    const bool last = hasLastingIdentities(place);
    struct stat own {};
    if (::fstat(place, &own) != 0 || own.st_dev != status.st_dev) // an entry that another volume is mounted on
        return last;
    m_volume = own.st_dev;
    m_last = last;
    return last;
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

FileError setLinkTime(int base, const char *name, const NodeState &model)
{
    const auto times = timesOf(model);
    return ::utimensat(base, name, times.data(), AT_SYMLINK_NOFOLLOW) == 0 ? FileError() : lastError();
}

FileError setAttributes(int file, const NodeState &model, const CarriedAttributes &carried)
{
    FileError error;
    // The permissions first: with the owner's right to write taken away the time can still be set, by the owner. Of a
    // new file they are refused only where the file system has none of its own, as FAT.
    if (::fchmod(file, mode_t(model.permissions) & ~carried.withheld) != 0 && errno != EPERM)
        error = lastError();
    const auto times = timesOf(model);
    if (::futimens(file, times.data()) != 0 && !error.isError())
        error = lastError();
    return error.isError() || carried.error == 0 ? error : fileErrorOf(carried.error);
}

NodeResult UnixSource::state()
{
    struct stat status {};
    if (::fstat(m_file.get(), &status) != 0)
        return {{}, lastError()};
    return {stateOf(status, m_identities.of(m_file.get(), status)), {}};
}

FilePiece UnixSource::read(char *buffer, qint64 length)
{
    return readPiece(m_file.get(), buffer, length);
}

void UnixSource::readAhead(qint64 most)
{
    m_hasNoAttributes = !hasAttributes(m_file.get());
    struct stat status {};
    if (::fstat(m_file.get(), &status) != 0 || status.st_size > std::min(most, largestThroughMemory))
        return;
    std::string contents(std::size_t(status.st_size) + 1, '\0'); // one more shows the end
    const FilePiece piece = readPiece(m_file.get(), contents.data(), qint64(contents.size()));
    contents.resize(std::size_t(piece.length));
    if (!piece.failed && piece.length == status.st_size)
        m_contents = std::move(contents);
    else // whoever copies it finds out what is the matter
        (void)::lseek(m_file.get(), 0, SEEK_SET);
}

FileError UnixSink::write(const char *bytes, qint64 length)
{
    return writePiece(m_file.get(), bytes, length);
}

FileError UnixSink::copyFrom(FileSource &source, const Tick &tick)
{
    const auto &file = static_cast<UnixSource &>(source);
    const FileError error = file.contents() ? copyContents(*file.contents(), m_file.get(), tick)
                                            : copyContents(file.descriptor(), m_file.get(), tick);
    if (!error.isError())
        m_carried = carryAttributes(file.attributes(), m_file.get());
    return error;
}

FileError UnixSink::keepAttributes(const NodeState &model)
{
    return setAttributes(m_file.get(), model, m_carried);
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
    return {stateOf(status, m_identities.of(m_file.get(), status)), {}};
}

} // namespace velmora
