#include "folder/engine/snapshot_usage.h"

#include "core/path_names.h"
#include "folder/engine/folder_snapshot.h"

namespace velmora {

namespace {

struct SnapshotNode {
    qint32 parent;
    QStringView name;
    qint64 size;
    bool isFolder;
};

/// A folder that the next path may be in.
struct OpenFolder {
    QStringView path; ///< with a "/" at its end; empty for the root
    qint32 node;
};

std::vector<SnapshotNode> nodesOf(const FolderSnapshot &snapshot, const QString &rootName)
{
    std::vector<SnapshotNode> nodes{{-1, rootName, 0, true}};
    std::vector<OpenFolder> open{{{}, 0}};
    for (const FolderSnapshotEntry &entry : snapshot.entries) {
        const QStringView path = entry.path;
        // In the order of the code units, what is in one folder stands together.
        while (!path.startsWith(open.back().path))
            open.pop_back();
        qsizetype from = open.back().path.size();
        for (qsizetype slash = path.indexOf(u'/', from); slash >= 0; slash = path.indexOf(u'/', from)) {
            nodes.push_back({open.back().node, path.mid(from, slash - from), 0, true});
            open.push_back({path.left(slash + 1), qint32(nodes.size()) - 1});
            from = slash + 1;
        }
        nodes.push_back({open.back().node, path.mid(from), entry.size, false});
    }
    for (std::size_t i = nodes.size(); i-- > 1;)
        nodes[std::size_t(nodes[i].parent)].size += nodes[i].size;
    return nodes;
}

} // namespace

UsageTree snapshotUsage(const FolderSnapshot &snapshot)
{
    UsageTree tree(snapshot.root);
    const QString rootName = bareName(snapshot.root);
    for (const SnapshotNode &known : nodesOf(snapshot, rootName)) {
        UsageTree::Node node;
        node.parent = known.parent;
        node.size = known.size;
        node.isFolder = known.isFolder;
        tree.append(node, known.name);
    }
    tree.complete();
    return tree;
}

} // namespace velmora
