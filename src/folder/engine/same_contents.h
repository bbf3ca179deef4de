#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/duplicate_files.h"

#include <atomic>
#include <functional>
#include <vector>

namespace velmora {

/// Numbers of files in `ScannedFiles`, of those that may have, or have, the same contents.
using FileClass = std::vector<quint32>;

/// Splits classes of files of one size into those of the same bytes.
class SameContents {
public:
    /// What is given must outlive the object. `roots`: where the files of each root are read from.
    SameContents(const ScannedFiles &listed, const QList<DuplicateRoot> &roots, int threads, CancelFlag cancel);

    /// Each class that comes has two files at least, and so has each that is returned; no file is in two of them, and
    /// one that cannot be read is in none. In no order; each in the order that the files came in. `tell` is called on
    /// this thread at times with the bytes that need no more reading.
    [[nodiscard]] std::vector<FileClass> split(std::vector<FileClass> classes, const std::function<void(qint64)> &tell);

    /// The files that could not be read to the end that the listing told, after `split`.
    [[nodiscard]] const FileClass &unreadable() const noexcept { return m_unreadable; }

private:
    class Worker;
    /// A piece of the work, done by one worker.
    using Unit = std::function<void(Worker &)>;

    void runUnits(const std::vector<Unit> &units, const std::function<void(qint64)> &tell);
    [[nodiscard]] std::vector<FileClass> splitByEnds(std::vector<FileClass> classes,
                                                     const std::function<void(qint64)> &tell);
    /// Splits classes of more files than are read side by side.
    void splitMany(const std::vector<FileClass> &classes, const std::function<void(qint64)> &tell);
    /// Finds the files that are as the first one of their class. Returns the rest of the classes.
    [[nodiscard]] std::vector<FileClass> settleFirsts(const std::vector<FileClass> &classes,
                                                      const std::function<void(qint64)> &tell);
    [[nodiscard]] qint64 sizeOf(const FileClass &files) const;
    void collect(Worker &worker);

    const ScannedFiles &m_listed;
    const QList<DuplicateRoot> &m_roots;
    int m_threads;
    CancelFlag m_cancel;
    std::size_t m_seed; ///< of keys, so that nobody can make files whose keys are the same
    std::vector<FileClass> m_found;
    FileClass m_unreadable;
    std::atomic<qint64> m_settled{0}; ///< bytes
};

} // namespace velmora
