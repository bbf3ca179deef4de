#pragma once

#include "vfs/tree_source.h"

#include <QHash>

#include <mutex>

namespace velmora {

/// The file system of this machine, seen from one of its folders. Any absolute path may be asked for.
class LocalFolder final : public TreeSource {
public:
    explicit LocalFolder(const Location &location) : TreeSource(location) {}

    [[nodiscard]] FolderRead readFolder(const QString &path, HiddenEntries hidden,
                                        const FileAccess::Sink &sink) const override;
    [[nodiscard]] std::optional<FolderEntry> describe(const QString &path, HiddenEntries hidden) const override;
    [[nodiscard]] std::unique_ptr<FileOpener> makeOpener() const override;
    /// Asks the system once for each path.
    [[nodiscard]] bool isSystemFile(const QString &path) const override;
    [[nodiscard]] WriteBar writeBar() const override { return WriteBar::None; }
    [[nodiscard]] LaidOutFile layOut(const QString &path, const QString &folder,
                                     const CancelFlag &cancel) const override;

private:
    mutable std::mutex m_mutex;
    mutable QHash<QString, bool> m_systemFiles; ///< guarded by the mutex
};

/// The folder at `path`, which may be relative; none when that is empty.
[[nodiscard]] TreeFolder localFolder(const QString &path);
[[nodiscard]] Sides<TreeFolder> localFolders(const QString &left, const QString &right);

} // namespace velmora
