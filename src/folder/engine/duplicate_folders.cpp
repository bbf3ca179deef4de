#include "folder/engine/duplicate_folders.h"

#include "core/path_names.h"

#include <QHash>

#include <algorithm>
#include <tuple>

namespace velmora {

namespace {

constexpr qint32 emptyFile = -2;
constexpr qint32 unlike = -1; ///< the number of folders that are like no other

/// Gives folders numbers, from the leaves up, that those of the same files and folders share.
class FolderNumbers {
public:
    FolderNumbers(const ScannedFiles &listed, const std::vector<qint32> &contents)
        : m_listed(listed), m_contents(contents), m_folders(listed.folders.size()), m_children(listed.folders.size())
    {
        for (std::size_t i = 0; i < listed.folders.size(); ++i) {
            if (const qint32 parent = listed.folders[i].parent; parent >= 0)
                m_children[std::size_t(parent)].push_back(i);
        }
        for (std::size_t i = listed.folders.size(); i-- > 0;)
            number(i);
    }

    struct Numbered {
        qint32 number = unlike;
        qint64 files = 0;
        qint64 bytes = 0;
    };
    [[nodiscard]] const Numbered &at(std::size_t folder) const { return m_folders[folder]; }
    [[nodiscard]] std::size_t size() const { return m_folders.size(); }
    [[nodiscard]] std::size_t count() const { return std::size_t(m_numbers.size()); }

private:
    void number(std::size_t index)
    {
        Numbered &folder = m_folders[index];
        QByteArray key;
        bool isAlike = m_listed.folders[index].isWhole;
        const ScannedFolder &listed = m_listed.folders[index];
        for (std::size_t i = 0; isAlike && i < listed.files.size(); ++i) {
            const ScannedFile &file = listed.files[i];
            const qint32 contents = file.size == 0 ? emptyFile : m_contents[listed.firstFile + i];
            isAlike = contents != unlike && !file.isLink;
            add(key, 'f', listed.nameOf(file), contents);
            ++folder.files;
            folder.bytes += file.size;
        }
        for (const std::size_t child : m_children[index]) {
            const Numbered &inner = m_folders[child];
            isAlike = isAlike && inner.number != unlike;
            if (!isAlike)
                return;
            add(key, 'd', bareName(m_listed.folders[child].path), inner.number);
            folder.files += inner.files;
            folder.bytes += inner.bytes;
        }
        if (!isAlike)
            return;
        const auto known = m_numbers.constFind(key);
        folder.number = known != m_numbers.constEnd() ? *known : qint32(m_numbers.size());
        if (known == m_numbers.constEnd())
            m_numbers.insert(key, folder.number);
    }

    /// Names cannot hold a NUL.
    static void add(QByteArray &key, char kind, QStringView name, qint32 number)
    {
        key += kind;
        key.append(reinterpret_cast<const char *>(name.utf16()), name.size() * qsizetype(sizeof(char16_t)));
        key.append(2, '\0');
        key.append(reinterpret_cast<const char *>(&number), qsizetype(sizeof number));
    }

    const ScannedFiles &m_listed;
    const std::vector<qint32> &m_contents;
    std::vector<Numbered> m_folders;
    std::vector<std::vector<std::size_t>> m_children;
    QHash<QByteArray, qint32> m_numbers;
};

/// Whether the folders that `members` lie in are copies of each other, each with one of these: then that is told.
bool isToldByParents(const std::vector<std::size_t> &members, const ScannedFiles &listed, const FolderNumbers &numbers,
                     const std::vector<std::vector<std::size_t>> &alike)
{
    const auto parentNumber = [&](std::size_t folder) {
        const qint32 parent = listed.folders[folder].parent;
        return parent < 0 ? unlike : numbers.at(std::size_t(parent)).number;
    };
    const qint32 first = parentNumber(members.front());
    return first != unlike && alike[std::size_t(first)].size() == members.size() &&
           std::all_of(members.begin(), members.end(),
                       [&](std::size_t folder) { return parentNumber(folder) == first; });
}

} // namespace

QList<DuplicateFolders> findDuplicateFolders(const ScannedFiles &listed, const std::vector<qint32> &contents)
{
    const FolderNumbers numbers(listed, contents);
    std::vector<std::vector<std::size_t>> alike(numbers.count());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (numbers.at(i).number != unlike)
            alike[std::size_t(numbers.at(i).number)].push_back(i);
    }
    QList<DuplicateFolders> found;
    for (const std::vector<std::size_t> &members : alike) {
        if (members.size() < 2 || numbers.at(members.front()).bytes == 0 ||
            isToldByParents(members, listed, numbers, alike))
            continue;
        DuplicateFolders folders{{}, numbers.at(members.front()).files, numbers.at(members.front()).bytes};
        for (const std::size_t folder : members)
            folders.paths.append(listed.folders[folder].path);
        found.append(folders);
    }
    std::sort(found.begin(), found.end(), [](const DuplicateFolders &a, const DuplicateFolders &b) {
        return std::tuple(-a.bytes, a.paths.first()) < std::tuple(-b.bytes, b.paths.first());
    });
    return found;
}

} // namespace velmora
