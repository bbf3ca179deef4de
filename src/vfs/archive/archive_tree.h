#pragma once

#include "vfs/archive/archive_entry.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/archive_names.h"
#include "vfs/archive/archive_problem.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringView>

#include <span>
#include <vector>

namespace velmora {

/// A name in the tree of an archive.
struct ArchiveNode {
    QString name;
    QString target;      ///< of links, as the archive has it
    qint32 parent = -1;  ///< the folder that it is in; -1 at the root
    qint32 entry = -1;   ///< which entry it is; -1 for the root and folders that only the names of others tell of
    qint32 leadsTo = -1; ///< of links: the node that they name; -1 where there is none
    ArchiveEntryKind kind = ArchiveEntryKind::Folder;
};

/// The entries of an archive as folders and files. Names are checked: what leads out of the archive is not in it, and
/// links lead to nodes or nowhere. Nodes are numbered from 0, the root.
class ArchiveTree {
public:
    /// Tells in `problems` what was left out.
    ArchiveTree(const std::vector<ArchiveEntry> &entries, const ArchiveNames &names, const ArchiveLimits &limits,
                QList<ArchiveProblem> &problems);

    static constexpr qint32 root = 0;

    [[nodiscard]] const ArchiveNode &node(qint32 number) const { return m_nodes[std::size_t(number)]; }
    [[nodiscard]] qint32 count() const { return qint32(m_nodes.size()); }
    /// Of a folder, by name.
    [[nodiscard]] std::span<const qint32> children(qint32 folder) const;
    /// The entry of that name in a folder; -1 when there is none.
    [[nodiscard]] qint32 child(qint32 folder, QStringView name) const;
    /// What stands at the end of links: the node itself where it is none; -1 when they lead nowhere or round.
    [[nodiscard]] qint32 behind(qint32 number) const;
    /// "/folder/name".
    [[nodiscard]] QString path(qint32 number) const;

private:
    class Builder;

    [[nodiscard]] qint32 target(qint32 from, const QStringList &parts) const;
    void resolveLinks(QList<ArchiveProblem> &problems);

    std::vector<ArchiveNode> m_nodes;
    std::vector<qint32> m_children;   ///< of all folders, one folder after the other
    std::vector<qint32> m_firstChild; ///< by node, in `m_children`, and one more for the end
};

} // namespace velmora
