#pragma once

#include "platform/file_access.h"
#include "platform/long_path_win.h"

#include <string>
#include <string_view>
#include <utility>

#include <windows.h>

namespace velmora {

/// The entries of a folder one after the other, itself and the one above left out.
class EntrySearch {
public:
    /// `folder`: with the separator at its end.
    explicit EntrySearch(const std::wstring &folder)
        : m_search(::FindFirstFileExW((folder + L'*').c_str(), FindExInfoBasic, &m_entry, FindExSearchNameMatch,
                                      nullptr, FIND_FIRST_EX_LARGE_FETCH)),
          m_error(m_search == INVALID_HANDLE_VALUE ? ::GetLastError() : NO_ERROR)
    {}
    ~EntrySearch()
    {
        if (isOpen())
            ::FindClose(m_search);
    }
    EntrySearch(const EntrySearch &) = delete;
    EntrySearch &operator=(const EntrySearch &) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return m_search != INVALID_HANDLE_VALUE; }
    /// What went wrong; NO_ERROR at the end of the folder.
    [[nodiscard]] DWORD error() const noexcept { return m_error == ERROR_NO_MORE_FILES ? NO_ERROR : m_error; }

    /// The next entry, until it is called again; null at the end and when the reading fails.
    [[nodiscard]] const WIN32_FIND_DATAW *next()
    {
        while (std::exchange(m_isFirst, false) || ::FindNextFileW(m_search, &m_entry)) {
            const std::wstring_view name(m_entry.cFileName);
            if (name != L"." && name != L"..")
                return &m_entry;
        }
        m_error = ::GetLastError();
        return nullptr;
    }

private:
    WIN32_FIND_DATAW m_entry{};
    HANDLE m_search;
    DWORD m_error;
    bool m_isFirst = true;
};

/// The form of the path of a folder that names can be put behind.
[[nodiscard]] inline std::wstring folderPrefix(const QString &path)
{
    std::wstring folder = longPath(path);
    if (folder.empty() || folder.back() != L'\\')
        folder += L'\\';
    return folder;
}

/// Calls `bool take(const WIN32_FIND_DATAW &entry)` for the entries of `folder`, in the form of `folderPrefix`, until
/// it returns false.
template <typename Take>
[[nodiscard]] FolderRead listFolder(const std::wstring &folder, const Take &take)
{
    EntrySearch entries(folder);
    if (!entries.isOpen()) {
        switch (entries.error()) {
        case ERROR_FILE_NOT_FOUND: // the root of an empty volume
            return ::GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES ? FolderRead::Complete
                                                                                   : FolderRead::Missing;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
        case ERROR_INVALID_NAME:
            return FolderRead::Missing;
        default:
            return FolderRead::Unreadable;
        }
    }
    while (const WIN32_FIND_DATAW *entry = entries.next()) {
        if (!take(*entry))
            return FolderRead::Stopped;
    }
    return entries.error() == NO_ERROR ? FolderRead::Complete : FolderRead::Unreadable;
}

} // namespace velmora
