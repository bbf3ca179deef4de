#pragma once

#include "folder/operations/folder_chain.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace velmora {

/// The source of a copy, found as the plan has it, and open.
struct OpenedSource {
    NodeState node;
    std::unique_ptr<FileSource> file;
};

/// Opens the sources of the next copies of a surveyed plan on a thread of its own, and reads small ones, while those
/// before them are written: with small files that is half of the work. Only where no step of the plan changes anything
/// in or around the root that a source is in, so that it makes no difference when the source is opened. What cannot be
/// opened, or is not as the plan has it, is left to the caller, who finds out the same and can say it.
///
/// Used by one thread; the plan and the layer must outlive it. The destructor waits for the file at work.
class SourceAhead {
public:
    /// Null when nothing is gained, or `files` is for one thread. `chain` holds the roots of `plan`.
    [[nodiscard]] static std::unique_ptr<SourceAhead> start(const OperationPlan &plan, FileLayer &files,
                                                            const FolderChain &chain);
    ~SourceAhead();
    SourceAhead(const SourceAhead &) = delete;
    SourceAhead &operator=(const SourceAhead &) = delete;

    /// The source of a step; steps must be asked for in their order. Nothing when the caller is to open it.
    [[nodiscard]] std::optional<OpenedSource> take(qsizetype step);

private:
    SourceAhead(const OperationPlan &plan, FileLayer &files, std::vector<qsizetype> steps);

    void runToEnd();
    void run();
    [[nodiscard]] std::optional<OpenedSource> open(const FolderChain &chain, qsizetype step) const;

    struct Waiting {
        qsizetype step;
        OpenedSource source;
    };

    const OperationPlan &m_plan;
    FileLayer &m_files;
    const std::vector<qsizetype> m_steps; ///< that are opened ahead, in their order

    std::mutex m_mutex; ///< for what follows, but the thread itself
    std::condition_variable m_changed;
    std::deque<Waiting> m_opened;
    std::size_t m_next = 0;   ///< into `m_steps`
    qsizetype m_atWork = -1;  ///< the step whose source is being opened
    qsizetype m_askedFor = 0; ///< no step before this will be asked for any more
    bool m_ends = false;
    std::thread m_thread;
};

} // namespace velmora
