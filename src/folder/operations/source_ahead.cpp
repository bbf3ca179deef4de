#include "folder/operations/source_ahead.h"

#include <new>
#include <system_error>

namespace velmora {

namespace {

/// Enough for the writer seldom to wait, and few enough open files for any limit of the system.
constexpr std::size_t most = 32;
/// Read into memory; what is larger keeps a disk busy by itself. With `most` of them 2 MiB.
constexpr qint64 smallFile = 64 << 10;
/// A thread is not worth its start for a handful.
constexpr std::size_t fewSteps = 8;

/// For each root whether it stays as it is: neither it nor what it lies in or holds is changed.
std::vector<bool> restingRoots(const OperationPlan &plan, const FolderChain &chain)
{
    std::vector<bool> changed(std::size_t(plan.roots.size()), false);
    for (const OperationStep &step : plan.steps) {
        for (int root = 0; root < int(changed.size()); ++root)
            changed[std::size_t(root)] = changed[std::size_t(root)] || step.changes(root);
    }
    const auto isApart = [&](int root, int other) {
        FolderHandle *const a = chain.root(root);
        FolderHandle *const b = chain.root(other);
        return a && b && !a->liesIn(*b) && !b->liesIn(*a);
    };
    std::vector<bool> rests(changed.size(), false);
    for (int root = 0; root < int(changed.size()); ++root) {
        bool isResting = !changed[std::size_t(root)];
        for (int other = 0; isResting && other < int(changed.size()); ++other)
            isResting = !changed[std::size_t(other)] || isApart(root, other);
        rests[std::size_t(root)] = isResting;
    }
    return rests;
}

std::vector<qsizetype> stepsToOpen(const OperationPlan &plan, const FolderChain &chain)
{
    const std::vector<bool> rests = restingRoots(plan, chain);
    std::vector<qsizetype> steps;
    for (qsizetype i = 0; i < plan.steps.size(); ++i) {
        const OperationStep &step = plan.steps[i];
        if (step.copies() && step.fromSeen.kind == NodeKind::File && rests[std::size_t(step.from.root)])
            steps.push_back(i);
    }
    return steps;
}

} // namespace

std::unique_ptr<SourceAhead> SourceAhead::start(const OperationPlan &plan, FileLayer &files, const FolderChain &chain)
{
    if (!files.isForThreads())
        return nullptr;
    std::vector<qsizetype> steps = stepsToOpen(plan, chain);
    if (steps.size() < fewSteps)
        return nullptr;
    std::unique_ptr<SourceAhead> ahead(new SourceAhead(plan, files, std::move(steps)));
    try {
        ahead->m_thread = std::thread([&self = *ahead] { self.runToEnd(); });
    } catch (const std::system_error &) { // no more threads to be had
        return nullptr;
    }
    return ahead;
}

SourceAhead::SourceAhead(const OperationPlan &plan, FileLayer &files, std::vector<qsizetype> steps)
    : m_plan(plan), m_files(files), m_steps(std::move(steps))
{}

SourceAhead::~SourceAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

std::optional<OpenedSource> SourceAhead::take(qsizetype step)
{
    std::unique_lock lock(m_mutex);
    m_askedFor = step;
    m_changed.wait(lock, [this, step] { return m_atWork != step; });
    m_askedFor = step + 1;
    const bool wasFilling = m_opened.size() <= most / 2;
    std::optional<OpenedSource> source;
    for (; !m_opened.empty() && m_opened.front().step <= step; m_opened.pop_front()) {
        if (m_opened.front().step == step)
            source = std::move(m_opened.front().source);
    }
    if (!wasFilling && m_opened.size() <= most / 2)
        m_changed.notify_all();
    return source;
}

void SourceAhead::runToEnd()
{
    try {
        run();
    } catch (const std::bad_alloc &) { // the caller will find out by itself, or find enough
        const std::lock_guard lock(m_mutex);
        m_atWork = -1;
        m_changed.notify_all();
    }
}

void SourceAhead::run()
{
    const FolderChain chain(m_files, m_plan.roots); // handles are for one thread each
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || m_opened.size() <= most / 2; });
        while (!m_ends && m_opened.size() < most) {
            while (m_next < m_steps.size() && m_steps[m_next] < m_askedFor) // the caller was faster
                ++m_next;
            if (m_next == m_steps.size())
                return;
            m_atWork = m_steps[m_next++];
            lock.unlock();
            std::optional<OpenedSource> source = open(chain, m_atWork);
            lock.lock();
            if (source)
                m_opened.push_back({m_atWork, std::move(*source)});
            const bool isAwaited = m_atWork == m_askedFor;
            m_atWork = -1;
            if (isAwaited)
                m_changed.notify_all();
        }
        if (m_ends)
            return;
    }
}

std::optional<OpenedSource> SourceAhead::open(const FolderChain &chain, qsizetype step) const
{
    const OperationStep &copy = m_plan.steps[step];
    const ReachedPlace place = chain.reach(copy.from);
    if (!place.folder)
        return std::nullopt;
    const NodeResult found = place.folder->stat(place.name);
    if (found.error.isError() || !copy.fromSeen.isStill(found.node))
        return std::nullopt;
    FileError error;
    std::unique_ptr<FileSource> file = place.folder->openFile(place.name, error);
    if (!file)
        return std::nullopt;
    file->readAhead(smallFile);
    return OpenedSource{found.node, std::move(file)};
}

} // namespace velmora
