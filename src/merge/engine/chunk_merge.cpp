#include "merge/engine/chunk_merge.h"

#include "core/crew.h"
#include "merge/engine/line_changes.h"
#include "merge/engine/line_numbers.h"
#include "merge/engine/repeated_insertions.h"
#include "text/engine/cancel_poll.h"

#include <algorithm>
#include <array>
#include <span>

namespace velmora {

namespace {

/// Comparing fewer takes less time than starting a thread for it.
constexpr size_t linesWorthAThread = 20000;

enum Text : size_t { Base, Left, Right };

using Numbers = std::span<const qint32>;

Numbers part(Numbers lines, LineRange range)
{
    return lines.subspan(size_t(range.first), size_t(range.count));
}

/// Each change that replaces lines by as many, line by line.
std::vector<ChangedLines> lineByLine(const std::vector<ChangedLines> &changes, Numbers base, Numbers other)
{
    std::vector<ChangedLines> result;
    for (const ChangedLines &change : changes) {
        if (change.base.count != change.other.count) {
            result.push_back(change);
            continue;
        }
        for (qsizetype k = 0; k < change.base.count; ++k) {
            if (base[size_t(change.base.first + k)] != other[size_t(change.other.first + k)])
                result.push_back({{change.base.first + k, 1}, {change.other.first + k, 1}});
        }
    }
    return result;
}

/// The changes that one text has made, taken one after the other.
class ChangeQueue {
public:
    explicit ChangeQueue(const std::vector<ChangedLines> &changes) : m_next(changes.begin()), m_end(changes.end()) {}

    [[nodiscard]] bool isEmpty() const noexcept { return m_next == m_end; }
    [[nodiscard]] LineRange next() const noexcept { return m_next->base; }

    void startGroup() noexcept { m_firstOfGroup = m_next; }
    void take() noexcept
    {
        m_offset = m_next->other.end() - m_next->base.end();
        ++m_next;
    }

    [[nodiscard]] qsizetype sizeOfGroup() const noexcept { return m_next - m_firstOfGroup; }
    [[nodiscard]] const ChangedLines &firstOfGroup() const noexcept { return *m_firstOfGroup; }
    /// How much further down the lines of this text are behind what has been taken.
    [[nodiscard]] qsizetype offset() const noexcept { return m_offset; }

private:
    std::vector<ChangedLines>::const_iterator m_next;
    std::vector<ChangedLines>::const_iterator m_end;
    std::vector<ChangedLines>::const_iterator m_firstOfGroup;
    qsizetype m_offset = 0;
};

/// What left and right have changed, found at the same time where that pays.
std::array<std::vector<ChangedLines>, 2> changesOf(const NumberedTexts &numbered, const CancelFlag &cancel)
{
    std::array<std::vector<ChangedLines>, 2> changes;
    const auto size = int(changes.size());
    const int crew = numbered.texts[Base].size() < linesWorthAThread ? 1 : std::min(size, crewSize());
    runCrew(
        crew,
        [&](int worker) {
            CancelPoll poll(cancel);
            for (auto side = size_t(worker); side < changes.size(); side += size_t(crew))
                changes[side] = lineChanges(numbered.texts[Base], numbered.texts[side + 1], numbered.count, poll);
        },
        [] {});
    return changes;
}

bool startsBefore(LineRange one, LineRange other) noexcept
{
    return one.first != other.first ? one.first < other.first : one.count < other.count;
}

/// Puts the changes of both texts together to chunks.
class Chunker {
public:
    Chunker(const NumberedTexts &numbered, const std::vector<ChangedLines> &left,
            const std::vector<ChangedLines> &right, bool joinTouching)
        : m_numbered(numbered), m_left(left), m_right(right), m_joinTouching(joinTouching)
    {}

    std::vector<MergeChunk> chunks()
    {
        while (!m_left.isEmpty() || !m_right.isEmpty())
            appendGroup();
        appendUpTo(qsizetype(m_numbered.texts[Base].size()), ChunkKind::Unchanged);
        return std::move(m_chunks);
    }

private:
    ChangeQueue &earlier() noexcept
    {
        if (m_left.isEmpty() || m_right.isEmpty())
            return m_left.isEmpty() ? m_right : m_left;
        return startsBefore(m_right.next(), m_left.next()) ? m_right : m_left;
    }

    /// The changes that are in each other's way.
    void appendGroup()
    {
        LineRange group = earlier().next();
        appendUpTo(group.first, ChunkKind::Unchanged);
        m_left.startGroup();
        m_right.startGroup();
        bool grown = true;
        while (grown) {
            grown = false;
            for (ChangeQueue *queue : {&m_left, &m_right}) {
                while (!queue->isEmpty() && belongs(queue->next(), group)) {
                    group.count = std::max(group.end(), queue->next().end()) - group.first;
                    queue->take();
                    grown = true;
                }
            }
        }
        const qsizetype leftChanges = m_left.sizeOfGroup();
        const qsizetype rightChanges = m_right.sizeOfGroup();
        if (leftChanges > 0 && rightChanges > 0)
            appendUpTo(group.end(), ChunkKind::Conflict);
        else
            appendUpTo(group.end(), leftChanges > 0 ? ChunkKind::Left : ChunkKind::Right);
    }

    [[nodiscard]] bool belongs(LineRange change, LineRange group) const noexcept
    {
        if (m_joinTouching)
            return change.first <= group.end();
        // Of an empty group and of the change that has just begun it, the place is all that can be the same.
        return change.first < group.end() || change == group;
    }

    /// Everything up to line `baseEnd` of the base, with what the changes taken so far have made of it.
    void appendUpTo(qsizetype baseEnd, ChunkKind kind)
    {
        const auto range = [](qsizetype first, qsizetype end) { return LineRange{first, end - first}; };
        MergeChunk chunk{kind, ChunkMark::None, range(m_end.base.end(), baseEnd),
                         range(m_end.left.end(), baseEnd + m_left.offset()),
                         range(m_end.right.end(), baseEnd + m_right.offset())};
        if (chunk.base.isEmpty() && chunk.left.isEmpty() && chunk.right.isEmpty())
            return;
        if (kind == ChunkKind::Conflict && sameText(chunk.left, chunk.right))
            chunk.kind = ChunkKind::Both;
        m_end = chunk;
        if (m_chunks.empty() || m_chunks.back().kind != chunk.kind) {
            m_chunks.push_back(chunk);
            return;
        }
        MergeChunk &last = m_chunks.back();
        last.base.count += chunk.base.count;
        last.left.count += chunk.left.count;
        last.right.count += chunk.right.count;
    }

    [[nodiscard]] bool sameText(LineRange left, LineRange right) const
    {
        return std::ranges::equal(part(m_numbered.texts[Left], left), part(m_numbered.texts[Right], right));
    }

    const NumberedTexts &m_numbered;
    ChangeQueue m_left;
    ChangeQueue m_right;
    bool m_joinTouching;
    MergeChunk m_end; ///< what was appended last
    std::vector<MergeChunk> m_chunks;
};

} // namespace

qsizetype ChunkMerge::conflicts() const noexcept
{
    return std::ranges::count(chunks, ChunkKind::Conflict, &MergeChunk::kind);
}

ChunkMerge mergeChunks(const TextLines &base, const TextLines &left, const TextLines &right,
                       const ChunkMergeOptions &options, const CancelFlag &cancel, Progress &progress)
{
    if (cancel.isCancelled())
        return {};
    progress.report(NumberingLines, 0, base.count() + left.count() + right.count());
    return mergeChunks(LineNumbering(base, options.compareLineEnds, cancel), left, right, options, cancel, progress);
}

ChunkMerge mergeChunks(LineNumbering &&base, const TextLines &left, const TextLines &right,
                       const ChunkMergeOptions &options, const CancelFlag &cancel, Progress &progress)
{
    const NumberedTexts numbered = std::move(base).with(left, right, cancel);
    CancelPoll poll(cancel);
    if (poll.look())
        return {};
    progress.report(ComparingWithBase, 0, 2);
    std::array<std::vector<ChangedLines>, 2> changes = changesOf(numbered, cancel);
    if (poll.look())
        return {};
    auto &[ofLeft, ofRight] = changes;
    if (!options.joinTouching) {
        ofLeft = lineByLine(ofLeft, numbered.texts[Base], numbered.texts[Left]);
        ofRight = lineByLine(ofRight, numbered.texts[Base], numbered.texts[Right]);
    }
    ChunkMerge merge{Chunker(numbered, ofLeft, ofRight, options.joinTouching).chunks()};
    markInsertions(merge.chunks, left, numbered.texts[Left], numbered.texts[Right]);
    return poll.look() ? ChunkMerge() : merge;
}

} // namespace velmora
