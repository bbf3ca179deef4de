#include "folder/operations/tree_summary.h"

#include <QStringBuilder>

namespace velmora {

namespace {

/// The finaliser of SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
quint64 mixed(quint64 value)
{
    value ^= value >> 30U;
    value *= 0xBF58'476D'1CE4'E5B9U;
    value ^= value >> 27U;
    value *= 0x94D0'49BB'1331'11EBU;
    return value ^ value >> 31U;
}

/// Folders deeper than this are given up: each level holds one handle.
constexpr int deepest = 500;

FileError visitLevel(FolderHandle &folder, const QString &prefix, const TreeVisitor &visit, bool &stopped, int depth)
{
    if (depth > deepest)
        return {FileErrorKind::Unsupported, {}};
    std::vector<std::pair<QString, NodeState>> entries;
    const FileError listed = folder.list([&](const QString &name, const NodeState &node) {
        entries.emplace_back(name, node);
        return true;
    });
    if (listed.isError())
        return listed;
    for (const auto &[name, node] : entries) {
        const QString relative = prefix.isEmpty() ? name : QString(prefix % u'/' % name);
        if (node.kind == NodeKind::Folder) {
            FileError error;
            const std::unique_ptr<FolderHandle> inner = folder.openFolder(name, error);
            if (inner)
                error = visitLevel(*inner, relative, visit, stopped, depth + 1);
            if (error.isError() || stopped)
                return error;
        }
        if (!visit(relative, node)) {
            stopped = true;
            return {};
        }
    }
    return {};
}

} // namespace

FileError visitTree(FolderHandle &folder, const TreeVisitor &visit)
{
    bool stopped = false;
    return visitLevel(folder, {}, visit, stopped, 0);
}

void TreeSummary::add(const QString &relative, const NodeState &node)
{
    quint64 hash = quint64(node.kind) + 1;
    for (const QChar unit : relative)
        hash = mixed(hash ^ unit.unicode());
    if (node.kind != NodeKind::Folder) {
        hash = mixed(hash ^ quint64(node.size));
        hash = mixed(hash ^ quint64(node.modifiedNs));
        ++files;
        bytes += node.kind == NodeKind::File ? node.size : 0;
    }
    if (node.identity)
        hash = mixed(mixed(hash ^ node.identity->volume) ^ node.identity->number);
    fingerprint += hash;
}

} // namespace velmora
