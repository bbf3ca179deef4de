#pragma once

#include "folder/engine/duplicate_scan.h"
#include "platform/file_access.h"

#include <vector>

namespace velmora {

/// A file that was listed for a scan. Its name stands in its folder.
struct ScannedFile {
    qint64 size = 0;
    qint64 modifiedMs = 0;
    FileIdentity identity; ///< both numbers 0 where the listing does not tell
    qint32 folder = 0;
    quint32 nameStart = 0;
    quint32 nameLength = 0;
    bool isLink = false;

    [[nodiscard]] bool hasIdentity() const noexcept { return identity != FileIdentity(); }
};

/// A folder that was listed for a scan, with the files in it by their names.
struct ScannedFolder {
    QString path;
    qint32 parent = -1; ///< index into the table; -1 of a root
    qint32 root = 0;
    bool isReference = false;
    bool isWhole = true;   ///< false where something in it was passed over, or could not be listed
    quint32 firstFile = 0; ///< the number of the first one of `files`
    std::vector<ScannedFile> files;
    QString names; ///< of the files, one behind the other

    [[nodiscard]] QStringView nameOf(const ScannedFile &file) const
    {
        return QStringView(names).mid(file.nameStart, file.nameLength);
    }
};

/// All folders, each behind the one that it is in, and all files, numbered in the order of the folders. Costs 56 bytes
/// a file beside its name.
struct ScannedFiles {
    std::vector<ScannedFolder> folders;

    ScannedFiles() = default;
    ScannedFiles(ScannedFiles &&) = default;
    ScannedFiles(const ScannedFiles &) = delete;
    ScannedFiles &operator=(const ScannedFiles &) = delete;

    [[nodiscard]] std::size_t fileCount() const { return m_files.size(); }
    [[nodiscard]] const ScannedFile &file(quint32 number) const { return *m_files[number]; }
    [[nodiscard]] const ScannedFolder &folderOf(quint32 file) const
    {
        return folders[std::size_t(m_files[file]->folder)];
    }
    [[nodiscard]] QString pathOf(quint32 file) const;

    /// Numbers the files once all folders are there.
    void number();

private:
    std::vector<const ScannedFile *> m_files;
};

/// Lists what a scan goes through. `scan.roots` are its roots; files, problems and the cancelled flag are set in it.
/// `inner`: folders below the roots that are a root of their own kind, whose role holds for what is in them.
[[nodiscard]] ScannedFiles listForDuplicates(const DuplicateQuestion &question, const QList<DuplicateRoot> &inner,
                                             DuplicateScan &scan, const CancelFlag &cancel, Progress &progress);

/// Whether the folder is one where a system keeps what was deleted, by its path.
[[nodiscard]] bool isRecycleBin(const QString &folder);

} // namespace velmora
