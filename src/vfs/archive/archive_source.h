#pragma once

#include "vfs/archive/archive_contents.h"
#include "vfs/archive/archive_entry.h"
#include "vfs/archive/archive_tree.h"
#include "vfs/tree_source.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmora {

/// What an archive is made of, for `ArchiveSource`.
struct ArchiveParts {
    Location location;
    QByteArray format; ///< "ZIP", "GNU tar format, gzip"
    qint64 size = 0;   ///< of the archive itself
    std::shared_ptr<const std::vector<ArchiveEntry>> entries;
    std::shared_ptr<const ArchiveTree> tree;
    std::shared_ptr<const ArchiveContents> contents;
    bool hasFileTimes = true;          ///< as `TreeSource::hasFileTimes`
    QHash<qint32, QByteArray> digests; ///< by entry: the content's name as that of a Git blob
    ContentIdentity::Algorithm digestKind = ContentIdentity::Algorithm::GitBlobSha1; ///< of all of them
    /// Archives within that are shown as folders, by node.
    std::map<qint32, std::shared_ptr<const class ArchiveSource>> within;
};

/// An archive as a tree. Folders that no entry tells of are there; links are followed within the archive, and left out
/// where they lead nowhere, as in a local folder.
class ArchiveSource final : public TreeSource {
public:
    explicit ArchiveSource(ArchiveParts parts);
    ~ArchiveSource() override;

    [[nodiscard]] FolderRead readFolder(const QString &path, HiddenEntries hidden,
                                        const FileAccess::Sink &sink) const override;
    [[nodiscard]] std::optional<FolderEntry> describe(const QString &path, HiddenEntries hidden) const override;
    [[nodiscard]] std::unique_ptr<FileOpener> makeOpener() const override;
    /// The checksum of the directory of a zip; else what was found when the archive was opened for that.
    [[nodiscard]] std::optional<ContentIdentity> contentIdentity(const QString &path) const override;
    [[nodiscard]] bool hasFileTimes() const override { return m_parts.hasFileTimes; }
    [[nodiscard]] std::optional<ContentIdentity::Algorithm> identityKind() const override;
    [[nodiscard]] qsizetype identitiesAtOnce() const override { return m_parts.contents->identitiesAtOnce(); }
    [[nodiscard]] std::vector<std::optional<ContentIdentity>>
    contentIdentities(const QStringList &paths, ContentIdentity::Algorithm algorithm,
                      const CancelFlag &cancel) const override;
    [[nodiscard]] LaidOutFile layOut(const QString &path, const QString &folder,
                                     const CancelFlag &cancel) const override;

    [[nodiscard]] const ArchiveParts &parts() const noexcept { return m_parts; }
    [[nodiscard]] const ArchiveTree &tree() const noexcept { return *m_parts.tree; }
    /// What the directory says of a node; nothing of a folder that no entry tells of.
    [[nodiscard]] const ArchiveEntry *entryOf(qint32 node) const;
    /// The archive within that stands in the place of a node; null when there is none.
    [[nodiscard]] const ArchiveSource *within(qint32 node) const;
    [[nodiscard]] bool isEncrypted() const;

    /// A node of this archive or of one within.
    struct Spot {
        const ArchiveSource *archive = nullptr;
        qint32 node = -1;

        [[nodiscard]] bool isThere() const noexcept { return node >= 0; }
    };
    /// What `path` leads to, links followed.
    [[nodiscard]] Spot find(const QString &path) const;

private:
    class Opener;

    /// The root of the archive within where one stands at a node, links followed.
    [[nodiscard]] Spot entered(qint32 node) const;
    [[nodiscard]] std::optional<FolderEntry> listed(qint32 node) const;

    ArchiveParts m_parts;
};

} // namespace velmora
