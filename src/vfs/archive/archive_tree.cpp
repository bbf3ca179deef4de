#include "vfs/archive/archive_tree.h"

#include <algorithm>
#include <numeric>

namespace velmora {

namespace {

/// A chain of links that is longer goes round.
constexpr int mostLinks = 40;

} // namespace

/// Puts nodes where their names say.
class ArchiveTree::Builder {
public:
    Builder(ArchiveTree &tree, const ArchiveLimits &limits, QList<ArchiveProblem> &problems)
        : m_nodes(tree.m_nodes), m_limits(limits), m_problems(problems)
    {}

    void add(const ArchiveEntry &entry, qint32 number, const ArchiveNames &names)
    {
        using enum ArchiveProblem::Kind;
        const QString name = names.text(entry.name);
        const ArchiveNameParts parts = partsOfName(name);
        if (parts.fault != ArchiveNameFault::None) {
            noteProblem(m_problems, parts.fault == ArchiveNameFault::LeadsOut ? NameLeadsOut : NameUnfit, name);
        } else if (parts.parts.size() > m_limits.depth) {
            noteProblem(m_problems, TooDeep, name);
        } else if (entry.kind == ArchiveEntryKind::Folder) {
            m_nodes[std::size_t(folderAt(parts.parts))].entry = number;
        } else if (parts.parts.isEmpty()) {
            noteProblem(m_problems, NameUnfit, name);
        } else {
            const qint32 folder = folderAt(parts.parts.first(parts.parts.size() - 1));
            m_nodes.push_back({parts.parts.last(), names.text(entry.target), folder, number, -1, entry.kind});
        }
    }

private:
    qint32 folderAt(const QStringList &parts)
    {
        if (parts.isEmpty())
            return root;
        const QString path = parts.join(u'/');
        if (path == m_lastPath)
            return m_lastFolder;
        qint32 folder = m_folders.value(path, -1);
        if (folder < 0) {
            const qint32 parent = folderAt(parts.first(parts.size() - 1));
            folder = qint32(m_nodes.size());
            m_nodes.push_back({parts.last(), {}, parent, -1, -1, ArchiveEntryKind::Folder});
            m_folders.insert(path, folder);
        }
        m_lastPath = path;
        m_lastFolder = folder;
        return folder;
    }

    std::vector<ArchiveNode> &m_nodes;
    const ArchiveLimits &m_limits;
    QList<ArchiveProblem> &m_problems;
    QHash<QString, qint32> m_folders;
    QString m_lastPath;
    qint32 m_lastFolder = root;
};

ArchiveTree::ArchiveTree(const std::vector<ArchiveEntry> &entries, const ArchiveNames &names,
                         const ArchiveLimits &limits, QList<ArchiveProblem> &problems)
{
    m_nodes.reserve(entries.size() + entries.size() / 8 + 1);
    m_nodes.emplace_back();
    Builder builder(*this, limits, problems);
    for (std::size_t i = 0; i < entries.size(); ++i)
        builder.add(entries[i], qint32(i), names);

    std::vector<qint32> order(m_nodes.size() - 1);
    std::iota(order.begin(), order.end(), 1);
    // Of several with one name the folder stands first, and then the last in the archive, which unpacking would leave.
    std::sort(order.begin(), order.end(), [this](qint32 a, qint32 b) {
        const ArchiveNode &left = node(a);
        const ArchiveNode &right = node(b);
        if (left.parent != right.parent)
            return left.parent < right.parent;
        if (const int byName = left.name.compare(right.name); byName != 0)
            return byName < 0;
        const bool leftIsFolder = left.kind == ArchiveEntryKind::Folder;
        const bool rightIsFolder = right.kind == ArchiveEntryKind::Folder;
        return leftIsFolder != rightIsFolder ? leftIsFolder : a > b;
    });
    m_firstChild.assign(m_nodes.size() + 1, 0);
    m_children.reserve(order.size());
    for (const qint32 number : order) {
        const ArchiveNode &added = node(number);
        const bool isTaken = !m_children.empty() && node(m_children.back()).parent == added.parent &&
                             node(m_children.back()).name == added.name;
        if (isTaken) {
            noteProblem(problems, ArchiveProblem::Kind::SameName, path(number));
            continue;
        }
        m_children.push_back(number);
        ++m_firstChild[std::size_t(added.parent) + 1];
    }
    std::partial_sum(m_firstChild.begin(), m_firstChild.end(), m_firstChild.begin());
    resolveLinks(problems);
}

std::span<const qint32> ArchiveTree::children(qint32 folder) const
{
    const auto first = std::size_t(m_firstChild[std::size_t(folder)]);
    return std::span(m_children).subspan(first, std::size_t(m_firstChild[std::size_t(folder) + 1]) - first);
}

qint32 ArchiveTree::child(qint32 folder, QStringView name) const
{
    const std::span<const qint32> all = children(folder);
    const auto found = std::lower_bound(all.begin(), all.end(), name, [this](qint32 number, QStringView wanted) {
        return node(number).name.compare(wanted) < 0;
    });
    return found != all.end() && node(*found).name == name ? *found : -1;
}

qint32 ArchiveTree::behind(qint32 number) const
{
    for (int links = 0; number >= 0 && links <= mostLinks; ++links) {
        const ArchiveEntryKind kind = node(number).kind;
        if (kind != ArchiveEntryKind::Link && kind != ArchiveEntryKind::HardLink)
            return number;
        number = node(number).leadsTo;
    }
    return -1;
}

QString ArchiveTree::path(qint32 number) const
{
    QString path;
    for (; number > root; number = node(number).parent)
        path.prepend(u'/' + node(number).name);
    return path.isEmpty() ? QStringLiteral("/") : path;
}

/// The node that the parts of a link's target lead to; -1 when there is none. Links on the way count as far as they are
/// resolved already.
qint32 ArchiveTree::target(qint32 from, const QStringList &parts) const
{
    qint32 at = from;
    for (const QString &part : parts) {
        if (part.isEmpty() || part == u".")
            continue;
        const qint32 folder = behind(at);
        if (folder < 0)
            return -1;
        at = part == u".." ? node(folder).parent : child(folder, part);
        if (at < 0)
            return -1;
    }
    return at;
}

void ArchiveTree::resolveLinks(QList<ArchiveProblem> &problems)
{
    // The second time finds what leads over links that stand behind it.
    for (const bool isLast : {false, true}) {
        for (qint32 number = 1; number < count(); ++number) {
            ArchiveNode &link = m_nodes[std::size_t(number)];
            if (link.leadsTo >= 0)
                continue;
            if (link.kind == ArchiveEntryKind::HardLink) {
                link.leadsTo = target(root, partsOfName(link.target).parts);
                continue;
            }
            if (link.kind != ArchiveEntryKind::Link)
                continue;
            int height = 0; // of the folder above the root that the target leads to, if it does
            for (qint32 up = link.parent; up > root; up = node(up).parent)
                ++height;
            bool leadsOut =
                partsOfName(link.target).fault == ArchiveNameFault::LeadsOut && link.target.startsWith(u'/');
            const QStringList parts = link.target.split(u'/');
            for (const QString &part : parts) {
                if (!part.isEmpty() && part != u".")
                    height += part == u".." ? -1 : 1;
                leadsOut = leadsOut || height < 0;
            }
            if (!leadsOut)
                link.leadsTo = target(link.parent, parts);
            else if (isLast)
                noteProblem(problems, ArchiveProblem::Kind::LinkLeadsOut, path(number), link.target);
        }
    }
}

} // namespace velmora
