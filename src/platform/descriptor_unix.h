#pragma once

#include "platform/file_access.h"

#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

/// Opens a folder only to reach what is in it.
#ifdef O_PATH
inline constexpr int passThroughFlags = O_PATH | O_DIRECTORY;
#else
inline constexpr int passThroughFlags = O_RDONLY | O_DIRECTORY;
#endif

/// Owns an open file of the system.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) noexcept : m_fd(fd) {}
    Descriptor(Descriptor &&other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int get() const noexcept { return m_fd; }
    [[nodiscard]] int release() noexcept { return std::exchange(m_fd, -1); }
    [[nodiscard]] bool isOpen() const noexcept { return m_fd >= 0; }

private:
    int m_fd;
};

/// Opens a file, again after every interruption; -1 with errno set when it fails.
inline int openAgain(int base, const char *path, int flags)
{
    int fd = -1;
    do {
        fd = ::openat(base, path, flags | O_CLOEXEC);
    } while (fd < 0 && errno == EINTR);
    return fd;
}

/// A path in the form that one system call takes: a name seen from a folder that is held open. Short paths need none.
class ReachablePath {
public:
    explicit ReachablePath(QStringView path) : m_bytes(nativeName(path))
    {
        if (m_bytes.find('\0') != std::string::npos) { // the system would take what stands before it for the whole path
            errno = ENOENT;
            m_failed = true;
            return;
        }
        while (m_bytes.size() - m_begin >= PATH_MAX) {
            const std::size_t cut = m_bytes.rfind('/', m_begin + PATH_MAX - 1);
            if (cut == std::string::npos || cut <= m_begin) { // a single name beyond what any file system holds
                errno = ENAMETOOLONG;
                m_failed = true;
                return;
            }
            m_bytes[cut] = '\0';
            Descriptor next(openAgain(base(), m_bytes.data() + m_begin, passThroughFlags));
            m_bytes[cut] = '/';
            if (!next.isOpen()) {
                m_failed = true;
                return;
            }
            m_folder = std::move(next);
            m_begin = cut + 1;
        }
    }

    /// False when a folder on the way could not be passed; errno says why.
    [[nodiscard]] bool isReachable() const noexcept { return !m_failed; }
    [[nodiscard]] int base() const noexcept { return m_folder.isOpen() ? m_folder.get() : AT_FDCWD; }
    [[nodiscard]] const char *name() const noexcept { return m_bytes.c_str() + m_begin; }

private:
    std::string m_bytes;
    std::size_t m_begin = 0;
    Descriptor m_folder;
    bool m_failed = false;
};

inline FileIdentity identityOf(const struct stat &status)
{
    return {quint64(status.st_dev), quint64(status.st_ino)};
}

} // namespace velmora
