#pragma once

#include "folder/operations/operation_plan.h"

#include <map>
#include <thread>

namespace velmora {

/// Brings what a run writes to the disk while it writes more, on a thread of its own, so that little is left to wait
/// for in the end. Used by one thread. The layer must live as long as the process: nobody can stop a disk that is at
/// work, and whoever has cancelled a run does not wait for it.
class WriteAlong {
public:
    /// Null when that cannot be done here. For all roots of `plan` that get new files.
    [[nodiscard]] static std::unique_ptr<WriteAlong> start(const OperationPlan &plan, FileLayer &files);
    /// No more is begun; what is under way ends by itself.
    ~WriteAlong();
    WriteAlong(const WriteAlong &) = delete;
    WriteAlong &operator=(const WriteAlong &) = delete;

    /// Waits for what is under way; no more is begun. The first error for each root that had one: the system tells of
    /// it only once.
    [[nodiscard]] std::map<int, FileError> end();

private:
    struct Shared; // outlives both

    explicit WriteAlong(std::shared_ptr<Shared> shared);
    static void run(FileLayer &files, const QList<PlanRoot> &roots, const std::vector<int> &written, Shared &shared);

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};

} // namespace velmora
