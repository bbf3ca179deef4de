#include "folder/operations/write_along.h"

#include "folder/operations/folder_chain.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>

namespace velmora {

namespace {

/// Long enough for short runs never to come to it and for the disk to get much at once, short enough to leave it little
/// for the end.
constexpr std::chrono::milliseconds pause{400};

std::vector<int> rootsWithNewFiles(const OperationPlan &plan)
{
    std::vector<int> roots;
    for (const OperationStep &step : plan.steps) {
        if (step.copies() && std::find(roots.begin(), roots.end(), step.to.root) == roots.end())
            roots.push_back(step.to.root);
    }
    return roots;
}

} // namespace

struct WriteAlong::Shared {
    std::mutex mutex;
    std::condition_variable ending;
    bool ends = false;
    std::map<int, FileError> errors; ///< the thread's until it has ended

    void end()
    {
        {
            const std::lock_guard lock(mutex);
            ends = true;
        }
        ending.notify_all();
    }
};

std::unique_ptr<WriteAlong> WriteAlong::start(const OperationPlan &plan, FileLayer &files)
{
    if (!files.canSettle() || !files.isForThreads())
        return nullptr;
    std::vector<int> written = rootsWithNewFiles(plan);
    if (written.empty())
        return nullptr;
    const auto shared = std::make_shared<Shared>();
    std::unique_ptr<WriteAlong> along(new WriteAlong(shared));
    try {
        along->m_thread = std::thread([&files, roots = plan.roots, written = std::move(written), shared] {
            run(files, roots, written, *shared);
        });
    } catch (const std::system_error &) { // no more threads to be had
        return nullptr;
    }
    return along;
}

WriteAlong::WriteAlong(std::shared_ptr<Shared> shared) : m_shared(std::move(shared)) {}

WriteAlong::~WriteAlong()
{
    m_shared->end();
    if (m_thread.joinable())
        m_thread.detach();
}

std::map<int, FileError> WriteAlong::end()
{
    m_shared->end();
    if (m_thread.joinable())
        m_thread.join();
    return std::move(m_shared->errors);
}

void WriteAlong::run(FileLayer &files, const QList<PlanRoot> &roots, const std::vector<int> &written, Shared &shared)
{
    const FolderChain chain(files, roots); // handles are for one thread each
    std::unique_lock lock(shared.mutex);
    while (!shared.ending.wait_for(lock, pause, [&shared] { return shared.ends; })) {
        lock.unlock();
        for (const int root : written) {
            const FileError error = chain.root(root) ? chain.root(root)->settle() : FileError();
            if (error.isError())
                shared.errors.emplace(root, error);
        }
        lock.lock();
    }
}

} // namespace velmora
