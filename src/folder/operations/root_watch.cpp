#include "folder/operations/root_watch.h"

namespace velmora {

namespace {

/// Short enough for a person to call what was done since the last look "the last moment", and long enough to cost
/// nothing where thousands of small files are copied in a second.
constexpr std::chrono::milliseconds interval{10};

} // namespace

RootWatch::RootWatch(const OperationPlan &plan, const FolderChain &chain) : m_plan(plan), m_chain(chain)
{
    std::vector<bool> isUsed(std::size_t(plan.roots.size()), false);
    for (const OperationStep &step : plan.steps) {
        for (const Place *place : {&step.from, &step.to, &step.counterpart.get(), &step.keptCopy.get()}) {
            if (place->isSet())
                isUsed[std::size_t(place->root)] = true;
        }
    }
    for (int root = 0; root < int(isUsed.size()); ++root) {
        if (!isUsed[std::size_t(root)])
            continue;
        m_used.push_back(root);
        if (!m_lost && !chain.root(root)) // between the preview and the run
            m_lost = LostRoot{root, chain.rootError(root)};
    }
}

bool RootWatch::look(qsizetype ended)
{
    for (const int root : m_used) {
        if (m_lost)
            break;
        const FileError error = m_chain.root(root)->checkPath(m_plan.roots[root].path);
        if (error.isError())
            m_lost = LostRoot{root, error};
    }
    m_nextLook = std::chrono::steady_clock::now() + interval;
    m_sure = m_lost ? m_sure : ended;
    return !m_lost;
}

bool RootWatch::lookNowAndThen(qsizetype ended)
{
    return !m_lost && (std::chrono::steady_clock::now() < m_nextLook || look(ended));
}

} // namespace velmora
