#include "folder/engine/same_contents.h"

#include "core/crew.h"

#include <QHash>
#include <QRandomGenerator>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <utility>

namespace velmora {

namespace {

/// What a worker reads into. Classes of files that fit in together are read whole, once, and compared there.
constexpr qint64 bufferSize = 4 << 20;
/// Read from the begin and the end of files that do not. Files of one size that differ at all mostly differ there.
constexpr qint64 endSize = 4 << 10;
constexpr qint64 largestBlock = 1 << 20;
/// Read side by side at most; no system lets a process have fewer than some hundred files open.
constexpr std::size_t mostSideBySide = 32;
/// Files of a unit where each is read by itself.
constexpr std::size_t filesOfUnit = 64;

/// Splits `files` by a key that each has; those whose key is the empty one are dropped.
template <typename Key>
std::vector<FileClass> splitByKeys(const FileClass &files, const std::vector<Key> &keys)
{
    std::map<Key, FileClass> found;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (keys[i] != Key())
            found[keys[i]].push_back(files[i]);
    }
    std::vector<FileClass> classes;
    for (auto &[key, members] : found) {
        if (members.size() > 1)
            classes.push_back(std::move(members));
    }
    return classes;
}

/// Files in work with the place of the block of each that was read last.
struct Strand {
    quint32 file = 0;
    std::unique_ptr<OpenFile> open;
    const char *block = nullptr;
    std::size_t hash = 0;
};
using Strands = std::vector<Strand>;

/// Splits strands into those whose blocks have the same `length` bytes; single ones are dropped.
std::vector<Strands> splitByBlocks(Strands strands, qint64 length)
{
    for (Strand &strand : strands)
        strand.hash = qHashBits(strand.block, std::size_t(length), 0);
    const auto less = [length](const Strand &a, const Strand &b) {
        return a.hash != b.hash ? a.hash < b.hash : std::memcmp(a.block, b.block, std::size_t(length)) < 0;
    };
    const auto same = [length](const Strand &a, const Strand &b) {
        return a.hash == b.hash && std::memcmp(a.block, b.block, std::size_t(length)) == 0;
    };
    if (strands.size() > 2)
        std::stable_sort(strands.begin(), strands.end(), less);
    std::vector<Strands> found;
    for (auto first = strands.begin(); first != strands.end();) {
        const auto end = std::find_if_not(first, strands.end(), [&](const Strand &one) { return same(*first, one); });
        if (end - first > 1) {
            Strands &members = found.emplace_back(std::make_move_iterator(first), std::make_move_iterator(end));
            std::sort(members.begin(), members.end(), [](const Strand &a, const Strand &b) { return a.file < b.file; });
        }
        first = end;
    }
    return found;
}

} // namespace

/// Reads files on one thread.
class SameContents::Worker {
public:
    Worker(const ScannedFiles &listed, const QList<DuplicateRoot> &roots, CancelFlag cancel, std::size_t seed)
        : m_listed(listed), m_cancel(std::move(cancel)), m_buffer(new char[std::size_t(bufferSize)]), m_seed(seed)
    {
        for (const DuplicateRoot &root : roots)
            m_openers.push_back(root.folder.source->makeOpener());
    }

    /// Files that fit into the buffer together.
    void readWhole(const FileClass &files)
    {
        const qint64 size = sizeOf(files.front());
        Strands strands;
        char *place = m_buffer.get();
        for (const quint32 file : files) {
            const std::unique_ptr<OpenFile> open = this->open(file);
            if (!open || !read(*open, file, 0, place, size))
                continue;
            strands.push_back({file, nullptr, place});
            place += size;
        }
        for (const Strands &members : splitByBlocks(std::move(strands), size))
            m_found.push_back(filesOf(members));
    }

    /// The key of the first and last blocks; 0 where they cannot be read.
    [[nodiscard]] quint64 readEnds(quint32 file)
    {
        const std::unique_ptr<OpenFile> open = this->open(file);
        const qint64 size = sizeOf(file);
        const qint64 tail = std::min(endSize, std::max<qint64>(size - endSize, 0));
        const qint64 head = std::min(endSize, size);
        char *const block = m_buffer.get();
        if (!open || !read(*open, file, 0, block, head) || !read(*open, file, size - tail, block + head, tail))
            return 0;
        return quint64(qHashBits(block, std::size_t(head + tail), m_seed)) | 1U;
    }

    /// A key of all bytes; 0 where they cannot be read.
    [[nodiscard]] quint64 readKey(quint32 file)
    {
        const std::unique_ptr<OpenFile> open = this->open(file);
        std::size_t key = m_seed;
        for (qint64 offset = 0; open && offset < sizeOf(file); offset += largestBlock) {
            const qint64 length = std::min(largestBlock, sizeOf(file) - offset);
            if (m_cancel.isCancelled() || !read(*open, file, offset, m_buffer.get(), length))
                return 0;
            key = qHashBits(m_buffer.get(), std::size_t(length), key);
        }
        return open ? quint64(key) | 1U : 0;
    }

    /// At most `mostSideBySide` files, block by block; those that differ from all others are read no further.
    [[nodiscard]] std::vector<FileClass> readSideBySide(const FileClass &files)
    {
        std::vector<FileClass> found;
        struct Task {
            Strands strands;
            qint64 offset;
        };
        std::vector<Task> tasks(1);
        for (const quint32 file : files) {
            if (std::unique_ptr<OpenFile> open = this->open(file))
                tasks.front().strands.push_back({file, std::move(open)});
        }
        tasks.front().offset = 0;
        const qint64 size = sizeOf(files.front());
        while (!tasks.empty() && !m_cancel.isCancelled()) {
            Task task = std::move(tasks.back());
            tasks.pop_back();
            const qint64 room = bufferSize / std::max<qint64>(qint64(task.strands.size()), 1);
            const qint64 length = std::min({largestBlock, room, size - task.offset});
            readBlocks(task.strands, task.offset, length);
            const qint64 end = task.offset + length;
            for (Strands &members : splitByBlocks(std::move(task.strands), length)) {
                if (end == size)
                    found.push_back(filesOf(members));
                else
                    tasks.push_back({std::move(members), end});
            }
        }
        return found;
    }

    void keep(std::vector<FileClass> found) { std::move(found.begin(), found.end(), std::back_inserter(m_found)); }
    [[nodiscard]] std::vector<FileClass> takeFound() { return std::exchange(m_found, {}); }
    [[nodiscard]] FileClass takeUnreadable() { return std::exchange(m_unreadable, {}); }

private:
    [[nodiscard]] qint64 sizeOf(quint32 file) const { return m_listed.file(file).size; }

    [[nodiscard]] FileOpener &openerOf(quint32 file) { return *m_openers[std::size_t(m_listed.folderOf(file).root)]; }

    [[nodiscard]] std::unique_ptr<OpenFile> open(quint32 file)
    {
        if (m_cancel.isCancelled())
            return nullptr;
        std::unique_ptr<OpenFile> open = openerOf(file).open(m_listed.pathOf(file), OpenHint::ListedAsFile);
        if (!open)
            m_unreadable.push_back(file);
        return open;
    }

    [[nodiscard]] bool read(OpenFile &open, quint32 file, qint64 offset, char *place, qint64 length)
    {
        const bool isRead = length == 0 || open.readAt(offset, place, length).length == length;
        if (!isRead)
            m_unreadable.push_back(file);
        return isRead;
    }

    /// Drops the strands that cannot be read.
    void readBlocks(Strands &strands, qint64 offset, qint64 length)
    {
        char *place = m_buffer.get();
        for (Strand &strand : strands) {
            const bool isRead = !m_cancel.isCancelled() && read(*strand.open, strand.file, offset, place, length);
            strand.block = isRead ? place : nullptr;
            place += length;
        }
        std::erase_if(strands, [](const Strand &strand) { return !strand.block; });
    }

    static FileClass filesOf(const Strands &members)
    {
        FileClass files;
        files.reserve(members.size());
        for (const Strand &strand : members)
            files.push_back(strand.file);
        return files;
    }

    const ScannedFiles &m_listed;
    CancelFlag m_cancel;
    std::unique_ptr<char[]> m_buffer;
    std::vector<std::unique_ptr<FileOpener>> m_openers; ///< one for each root
    std::vector<FileClass> m_found;
    FileClass m_unreadable;
    std::size_t m_seed;
};

SameContents::SameContents(const ScannedFiles &listed, const QList<DuplicateRoot> &roots, int threads,
                           CancelFlag cancel)
    : m_listed(listed),
      m_roots(roots),
      m_threads(threads),
      m_cancel(std::move(cancel)),
      m_seed(QRandomGenerator::global()->generate())
{}

qint64 SameContents::sizeOf(const FileClass &files) const
{
    return m_listed.file(files.front()).size * qint64(files.size());
}

void SameContents::collect(Worker &worker)
{
    for (FileClass &found : worker.takeFound())
        m_found.push_back(std::move(found));
    for (const quint32 file : worker.takeUnreadable())
        m_unreadable.push_back(file);
}

void SameContents::runUnits(const std::vector<Unit> &units, const std::function<void(qint64)> &tell)
{
    if (units.empty())
        return;
    const auto size = int(std::min<std::size_t>(std::size_t(m_threads), units.size()));
    std::vector<std::unique_ptr<Worker>> workers;
    workers.reserve(std::size_t(size));
    for (int i = 0; i < size; ++i)
        workers.push_back(std::make_unique<Worker>(m_listed, m_roots, m_cancel, m_seed));
    std::atomic<std::size_t> next{0};
    const auto work = [&](int worker) {
        try {
            for (std::size_t i = next++; i < units.size() && !m_cancel.isCancelled(); i = next++) {
                units[i](*workers[std::size_t(worker)]);
                if (worker == 0)
                    tell(m_settled);
            }
        } catch (...) {
            next = units.size();
            throw;
        }
    };
    runCrew(size, work, [&] { tell(m_settled); });
    for (const auto &worker : workers)
        collect(*worker);
}

std::vector<FileClass> SameContents::splitByEnds(std::vector<FileClass> classes,
                                                 const std::function<void(qint64)> &tell)
{
    std::vector<std::vector<quint64>> keys(classes.size());
    std::vector<Unit> units;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        keys[i].resize(classes[i].size());
        for (std::size_t first = 0; first < classes[i].size(); first += filesOfUnit) {
            units.push_back([&files = classes[i], &found = keys[i], first](Worker &worker) {
                for (std::size_t at = first; at < std::min(first + filesOfUnit, files.size()); ++at)
                    found[at] = worker.readEnds(files[at]);
            });
        }
    }
    runUnits(units, tell);
    std::vector<FileClass> left;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        m_settled += sizeOf(classes[i]);
        for (FileClass &same : splitByKeys(classes[i], keys[i])) {
            m_settled -= sizeOf(same);
            left.push_back(std::move(same));
        }
    }
    return left;
}

void SameContents::splitMany(const std::vector<FileClass> &classes, const std::function<void(qint64)> &tell)
{
    std::vector<std::vector<quint64>> keys(classes.size());
    std::vector<Unit> units;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        keys[i].resize(classes[i].size());
        for (std::size_t at = 0; at < classes[i].size(); ++at) {
            units.push_back(
                [file = classes[i][at], &key = keys[i][at]](Worker &worker) { key = worker.readKey(file); });
        }
    }
    runUnits(units, tell);
    std::vector<FileClass> alike;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        for (FileClass &same : splitByKeys(classes[i], keys[i]))
            alike.push_back(std::move(same));
    }
    while (!alike.empty() && !m_cancel.isCancelled())
        alike = settleFirsts(alike, tell);
}

std::vector<FileClass> SameContents::settleFirsts(const std::vector<FileClass> &classes,
                                                  const std::function<void(qint64)> &tell)
{
    struct Batch {
        std::size_t number; ///< of the class
        FileClass files;    ///< its first, and others
        std::vector<FileClass> found = {};
    };
    std::vector<Batch> batches;
    for (std::size_t number = 0; number < classes.size(); ++number) {
        const FileClass &files = classes[number];
        for (std::size_t at = 1; at < files.size(); at += mostSideBySide - 1) {
            Batch &batch = batches.emplace_back(Batch{number, {files.front()}});
            const std::size_t end = std::min(at + mostSideBySide - 1, files.size());
            batch.files.insert(batch.files.end(), files.begin() + std::ptrdiff_t(at),
                               files.begin() + std::ptrdiff_t(end));
        }
    }
    std::vector<Unit> units;
    units.reserve(batches.size());
    for (Batch &batch : batches) {
        units.push_back([this, &batch](Worker &worker) {
            batch.found = worker.readSideBySide(batch.files);
            m_settled += sizeOf(batch.files);
        });
    }
    runUnits(units, tell);
    std::vector<FileClass> same(classes.size());
    for (const Batch &batch : batches) {
        for (const FileClass &found : batch.found) {
            if (found.front() == batch.files.front())
                same[batch.number].insert(same[batch.number].end(), found.begin() + 1, found.end());
        }
    }
    std::vector<FileClass> rest;
    for (std::size_t number = 0; number < classes.size(); ++number) {
        FileClass left;
        std::set_difference(classes[number].begin() + 1, classes[number].end(), same[number].begin(),
                            same[number].end(), std::back_inserter(left));
        if (left.size() > 1)
            rest.push_back(std::move(left));
        if (!same[number].empty()) {
            same[number].insert(same[number].begin(), classes[number].front());
            m_found.push_back(std::move(same[number]));
        }
    }
    return rest;
}

std::vector<FileClass> SameContents::split(std::vector<FileClass> classes, const std::function<void(qint64)> &tell)
{
    const auto isSmall = [this](const FileClass &files) { return sizeOf(files) <= bufferSize; };
    const auto middle = std::stable_partition(classes.begin(), classes.end(), isSmall);
    std::vector<FileClass> large(std::make_move_iterator(middle), std::make_move_iterator(classes.end()));
    classes.erase(middle, classes.end());
    large = splitByEnds(std::move(large), tell);
    // The longest work first, so that nobody waits for it at the end.
    std::sort(large.begin(), large.end(),
              [this](const FileClass &a, const FileClass &b) { return sizeOf(a) > sizeOf(b); });

    std::vector<FileClass> many;
    std::vector<Unit> units;
    for (FileClass &files : large) {
        if (!isSmall(files) && files.size() > mostSideBySide) {
            many.push_back(std::move(files));
        } else if (!isSmall(files)) {
            units.push_back([this, &files](Worker &worker) {
                worker.keep(worker.readSideBySide(files));
                m_settled += sizeOf(files);
            });
        } else {
            classes.push_back(std::move(files));
        }
    }
    splitMany(many, tell);
    for (const FileClass &files : classes) {
        units.push_back([this, &files](Worker &worker) {
            worker.readWhole(files);
            m_settled += sizeOf(files);
        });
    }
    runUnits(units, tell);
    return std::exchange(m_found, {});
}

} // namespace velmora
