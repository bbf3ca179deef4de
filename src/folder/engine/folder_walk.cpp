#include "folder/engine/folder_walk.h"

#include "core/path_names.h"
#include "core/progress.h"
#include "core/work_stack.h"
#include "folder/engine/folder_engine.h"

#include <algorithm>

namespace velmora {

FolderWalk::FolderWalk(const FolderInput &input, int threads, CancelFlag cancel, Visitor visitor)
    : m_input(input), m_threads(threads), m_cancel(std::move(cancel)), m_visitor(std::move(visitor))
{}

WalkNode *FolderWalk::run(const FolderRunReport &report)
{
    WalkNode *const root = &m_nodes.emplace_back();
    root->name = m_input.prefix;
    for (const Side side : bothSides) {
        root->sides[side].path = m_input.roots[side].path;
        root->sides[side].identity = identityOf(root->sides[side], side);
    }

    const auto tell = [&](const QString &path) {
        if (report.progress)
            report.progress->report(int(FolderPhase::Reading), m_entries, 0, path);
    };
    QString latest; // of the calling thread
    WorkStack<WalkNode *> stack;
    stack.push({root});
    stack.workOff(
        m_threads,
        [&](int worker, WalkNode *node) {
            if (worker == 0)
                tell(latest = node->sides[node->sides.left.isThere() ? Side::Left : Side::Right].path);
            process(worker, *node, stack);
        },
        [&] { tell(latest); });

    if (report.problems) {
        std::sort(m_problems.begin(), m_problems.end());
        report.problems->append(m_problems);
    }
    return root;
}

void FolderWalk::process(int worker, WalkNode &node, WorkStack<WalkNode *> &stack)
{
    if (m_cancel.isCancelled())
        return;
    Sides<Entries> entries{read(node, Side::Left), read(node, Side::Right)};
    if (m_cancel.isCancelled())
        return;
    m_entries += qint64(entries.left.size() + entries.right.size());

    const std::vector<WalkDescent> descents = m_visitor(worker, node, entries);
    std::vector<WalkNode *> found;
    found.reserve(descents.size());
    node.children.reserve(descents.size());
    for (const WalkDescent &descent : descents) {
        WalkNode next;
        next.parent = &node;
        next.name = descent.name;
        for (const Side side : bothSides)
            next.sides[side] = descend(node, descent.entries[side], side);
        if (!next.sides.left.isThere() && !next.sides.right.isThere())
            continue;
        const std::lock_guard lock(m_mutex);
        WalkNode *const kept = &m_nodes.emplace_back(std::move(next));
        node.children.push_back({descent.item, kept});
        found.push_back(kept);
    }
    stack.push(found);
}

FolderWalk::Entries FolderWalk::read(const WalkNode &node, Side side)
{
    const WalkSide &folder = node.sides[side];
    Entries entries;
    if (!folder.isThere())
        return entries;
    const auto take = [&](FolderEntry &&entry) {
        entries.push_back(std::move(entry));
        return !m_cancel.isCancelled();
    };
    const FolderRead end = m_input.roots[side].source->readFolder(folder.path, m_input.hidden, take);
    const bool hasVanished = end == FolderRead::Missing && node.parent; // it was listed a moment ago
    if (end == FolderRead::Unreadable || hasVanished)
        note(FolderProblem::Kind::UnreadableFolder, folder.path, side);
    return entries;
}

WalkSide FolderWalk::descend(const WalkNode &node, const FolderEntry *entry, Side side)
{
    if (!entry)
        return {};
    WalkSide next{joinedPath(node.sides[side].path, entry->name), entry->identity};
    if (!closesCycle(node, next, entry->isLink, side))
        return next;
    note(FolderProblem::Kind::LinkCycle, next.path, side);
    return {};
}

bool FolderWalk::closesCycle(const WalkNode &node, const WalkSide &next, bool isLink, Side side) const
{
    // Where the listing gives no identities, only a link is worth asking for them.
    if (!next.identity && !isLink)
        return false;
    const std::optional<FileIdentity> identity = identityOf(next, side);
    if (!identity)
        return false;
    for (const WalkNode *ancestor = &node; ancestor && ancestor->sides[side].isThere(); ancestor = ancestor->parent) {
        if (identityOf(ancestor->sides[side], side) == identity)
            return true;
    }
    return false;
}

std::optional<FileIdentity> FolderWalk::identityOf(const WalkSide &folder, Side side) const
{
    if (folder.identity || !folder.isThere())
        return folder.identity;
    const std::optional<FolderEntry> entry = m_input.roots[side].source->describe(folder.path, HiddenEntries::Listed);
    return entry ? entry->identity : std::nullopt;
}

void FolderWalk::note(FolderProblem::Kind kind, const QString &path, Side side)
{
    const std::lock_guard lock(m_mutex);
    m_problems.append({kind, path, side});
}

} // namespace velmora
