#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace velmora {

/// What a file is for, told by the ending of its name.
enum class FileKind : quint8 { Other, Picture, Sound, Film, Document, Archive, Program, Code };

inline constexpr int fileKindCount = int(FileKind::Code) + 1;

[[nodiscard]] FileKind fileKind(QStringView name);

/// How the space in a folder is divided, as a tree: node 0 is the folder, each node comes before what is in it, and
/// siblings stand by descending size, those of one size by their names. About 56 bytes a node beside its name.
class UsageTree {
public:
    struct Node {
        qint64 size = 0;      ///< bytes of all files in it
        qint64 allocated = 0; ///< bytes on the medium; a file with several names counts at the first of them
        qint32 parent = -1;   ///< -1 at the root
        qint32 end = 0;       ///< the node after the last one in it
        qint32 files = 0;     ///< in it, at any depth; 0 for a file, as the next
        qint32 folders = 0;
        qsizetype nameStart = 0;
        quint16 nameLength = 0;
        quint16 depth = 0;
        FileKind kind = FileKind::Other; ///< of a folder the one that takes most of it
        bool isFolder = true;
        bool unreadable = false;      ///< it could not be listed, or not to its end
        bool countsElsewhere = false; ///< another name of this file has its room on the medium
    };

    [[nodiscard]] qint32 size() const noexcept { return qint32(m_nodes.size()); }
    [[nodiscard]] bool isEmpty() const noexcept { return m_nodes.empty(); }
    [[nodiscard]] const Node &node(qint32 node) const { return m_nodes[std::size_t(node)]; }
    [[nodiscard]] const Node &root() const { return m_nodes.front(); }
    [[nodiscard]] QStringView name(qint32 node) const;
    /// Absolute, with "/".
    [[nodiscard]] QString path(qint32 node) const;
    [[nodiscard]] const QString &rootPath() const noexcept { return m_rootPath; }
    /// The node at an absolute path, -1 when there is none. Looks at siblings one by one.
    [[nodiscard]] qint32 find(const QString &path) const;

    /// The part of the whole that a node takes, in percent; 0 when there is nothing.
    [[nodiscard]] double share(qint32 node) const;

    // For who makes it: nodes in their order.
    explicit UsageTree(const QString &rootPath = {}) : m_rootPath(rootPath) {}
    /// `node` without `end` and the place of its name.
    void append(Node node, QStringView name);
    /// Fills in what follows from what was appended: the ends, and what folders take on the medium, which has been that
    /// of their own unlisted files so far.
    void complete();

private:
    QString m_rootPath;
    QString m_names;
    std::vector<Node> m_nodes;
};

/// By how many bytes each node of `now` has grown since `before`, in which it is found by its path below the root;
/// what was not there has grown by all of its size.
[[nodiscard]] std::vector<qint64> usageGrowth(const UsageTree &now, const UsageTree &before);

/// A share as it is shown, without a sign: two decimals below 10, one from 10 up, with a point.
[[nodiscard]] QString shareText(double percent);

} // namespace velmora
