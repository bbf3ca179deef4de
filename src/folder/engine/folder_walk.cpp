#include "folder/engine/folder_walk.h"

#include "core/crew.h"
#include "core/path_names.h"
#include "core/progress.h"
#include "folder/engine/folder_engine.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>

namespace velmora {

namespace {

/// Folders that are read before other threads are called in: what is quickly done alone is.
constexpr int foldersReadAlone = 16;

} // namespace

/// The folders still to be read. The latest found comes first, so that reading goes about in the order of the result.
class FolderWalk::Stack {
public:
    void push(const std::vector<WalkNode *> &nodes)
    {
        if (nodes.empty())
            return;
        const std::lock_guard lock(m_mutex);
        m_waiting.insert(m_waiting.end(), nodes.rbegin(), nodes.rend());
        m_changed.notify_all();
    }

    /// The next folder; null when there will be none. While others may still find some, waits, calling `tick` at times.
    WalkNode *next(const std::function<void()> &tick)
    {
        std::unique_lock lock(m_mutex);
        while (!m_closed) {
            if (!m_waiting.empty()) {
                WalkNode *const node = m_waiting.back();
                m_waiting.pop_back();
                ++m_inWork;
                return node;
            }
            if (m_inWork == 0)
                return nullptr;
            if (m_changed.wait_for(lock, std::chrono::milliseconds(100)) == std::cv_status::timeout) {
                lock.unlock();
                tick();
                lock.lock();
            }
        }
        return nullptr;
    }

    void finishOne()
    {
        const std::lock_guard lock(m_mutex);
        if (--m_inWork == 0 && m_waiting.empty())
            m_changed.notify_all();
    }

    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        m_changed.notify_all();
    }

    [[nodiscard]] bool isEmpty()
    {
        const std::lock_guard lock(m_mutex);
        return m_waiting.empty();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<WalkNode *> m_waiting;
    int m_inWork = 0;
    bool m_closed = false;
};

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
    Stack stack;
    stack.push({root});
    const auto work = [&](int worker, int limit) {
        try {
            QString latest;
            for (int count = 0; count < limit; ++count) {
                WalkNode *const node = stack.next([&] {
                    if (worker == 0)
                        tell(latest);
                });
                if (!node)
                    return;
                if (worker == 0)
                    tell(latest = node->sides[node->sides.left.isThere() ? Side::Left : Side::Right].path);
                process(worker, *node, stack);
                stack.finishOne();
            }
        } catch (...) {
            stack.close();
            throw;
        }
    };
    constexpr int noLimit = std::numeric_limits<int>::max();
    work(0, m_threads > 1 ? foldersReadAlone : noLimit);
    if (!stack.isEmpty())
        runCrew(
            m_threads, [&work](int worker) { work(worker, noLimit); }, [&tell] { tell({}); });

    if (report.problems) {
        std::sort(m_problems.begin(), m_problems.end());
        report.problems->append(m_problems);
    }
    return root;
}

void FolderWalk::process(int worker, WalkNode &node, Stack &stack)
{
    if (m_cancel.isCancelled())
        return;
    Sides<Entries> entries{read(node.sides.left, Side::Left), read(node.sides.right, Side::Right)};
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

FolderWalk::Entries FolderWalk::read(const WalkSide &folder, Side side)
{
    Entries entries;
    if (!folder.isThere())
        return entries;
    const auto take = [&](FolderEntry &&entry) {
        entries.push_back(std::move(entry));
        return !m_cancel.isCancelled();
    };
    if (m_input.roots[side].source->readFolder(folder.path, m_input.hidden, take) == FolderRead::Unreadable)
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
