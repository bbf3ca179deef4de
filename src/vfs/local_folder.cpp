#include "vfs/local_folder.h"

#include "platform/system_attribute.h"

#include <QFileInfo>

namespace velmora {

FolderRead LocalFolder::readFolder(const QString &path, HiddenEntries hidden, const FileAccess::Sink &sink) const
{
    const FileAccess &files = hidden == HiddenEntries::Listed ? FileAccess::nativeWithHidden() : FileAccess::native();
    return files.readFolder(path, sink);
}

std::optional<FolderEntry> LocalFolder::describe(const QString &path, HiddenEntries hidden) const
{
    if (hidden == HiddenEntries::LeftOut && QFileInfo(path).isHidden())
        return std::nullopt;
    return FileAccess::native().describe(path);
}

std::unique_ptr<FileOpener> LocalFolder::makeOpener() const
{
    return FileAccess::native().makeOpener();
}

bool LocalFolder::isSystemFile(const QString &path) const
{
    {
        const std::lock_guard lock(m_mutex);
        const auto known = m_systemFiles.constFind(path);
        if (known != m_systemFiles.constEnd())
            return *known;
    }
    const bool isSystem = velmora::isSystemFile(path); // a drive that sleeps must not hold up the other threads
    const std::lock_guard lock(m_mutex);
    m_systemFiles.insert(path, isSystem);
    return isSystem;
}

LaidOutFile LocalFolder::layOut(const QString &path, const QString & /*folder*/, const CancelFlag & /*cancel*/) const
{
    return {path, {}};
}

TreeFolder localFolder(const QString &path)
{
    const Location location = Location::ofFolder(path);
    return path.isEmpty() ? TreeFolder() : TreeFolder{std::make_shared<const LocalFolder>(location), location.place};
}

Sides<TreeFolder> localFolders(const QString &left, const QString &right)
{
    return {localFolder(left), localFolder(right)};
}

} // namespace velmora
