#pragma once

#include "platform/descriptor_unix.h"

#include <cerrno>
#include <memory>
#include <utility>

#include <dirent.h>

namespace velmora {

/// The entries of an open folder one after the other, itself and the one above left out.
class EntryReader {
public:
    explicit EntryReader(Descriptor folder) : m_stream(::fdopendir(folder.get()))
    {
        if (m_stream)
            m_folder = folder.release(); // the stream closes it
    }

    /// False, with errno set, when the folder cannot be listed.
    [[nodiscard]] bool isOpen() const noexcept { return m_stream != nullptr; }
    [[nodiscard]] int folder() const noexcept { return m_folder; }

    /// The next entry, until it is called again; null at the end, where errno is 0, and when the reading fails.
    [[nodiscard]] const dirent *next()
    {
        for (;;) {
            errno = 0;
            const dirent *raw = ::readdir(m_stream.get());
            if (!raw || !isItselfOrAbove(raw->d_name))
                return raw;
        }
    }

private:
    static bool isItselfOrAbove(const char *name)
    {
        return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
    }

    struct Closer {
        void operator()(DIR *stream) const { ::closedir(stream); }
    };

    std::unique_ptr<DIR, Closer> m_stream;
    int m_folder = -1;
};

/// Calls `bool take(int folder, const dirent &entry)` for the entries of the folder at `path`, with those whose names
/// begin with a dot if `withHidden`, until it returns false.
template <typename Take>
[[nodiscard]] FolderRead listFolder(const QString &path, bool withHidden, const Take &take)
{
    const ReachablePath place(path);
    Descriptor folder;
    if (place.isReachable())
        folder = Descriptor(openAgain(place.base(), place.name(), O_RDONLY | O_DIRECTORY | O_NONBLOCK));
    if (!folder.isOpen())
        return errno == ENOENT || errno == ENOTDIR ? FolderRead::Missing : FolderRead::Unreadable;
    EntryReader entries(std::move(folder));
    if (!entries.isOpen())
        return FolderRead::Unreadable;
    while (const dirent *entry = entries.next()) {
        if ((withHidden || entry->d_name[0] != '.') && !take(entries.folder(), *entry))
            return FolderRead::Stopped;
    }
    return errno == 0 ? FolderRead::Complete : FolderRead::Unreadable;
}

} // namespace velmora
