#pragma once

#include "merge/engine/chunk_merge.h"
#include "session/pane/edit_buffer.h"

#include <QList>

#include <array>
#include <compare>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// The texts that are merged, in the order in which they are shown.
enum class MergeSource : quint8 { Left, Base, Right };
inline constexpr std::size_t mergeSourceCount = 3;

/// What the result has in the place of a part.
enum class MergeChoice : quint8 { Open, Base, Left, Right, LeftThenRight, RightThenLeft, ByHand, LineByLine };

/// A line of one of the texts that are merged.
struct SourceLine {
    MergeSource source = MergeSource::Base;
    qsizetype line = 0;

    friend auto operator<=>(const SourceLine &, const SourceLine &) = default;
};

/// One part of a merge: consecutive lines of the three texts, and what the result has for them.
struct MergePart {
    ChunkKind kind = ChunkKind::Unchanged;
    std::array<LineRange, mergeSourceCount> lines; ///< of the texts, by `MergeSource`
    MergeChoice choice = MergeChoice::Base;
    bool isByPerson = false; ///< else it was settled without asking, or is still open
    ChunkMark mark = ChunkMark::None;
    qsizetype resultCount = 0; ///< lines of the result
    QList<SourceLine> leftOut; ///< of the versions: what a merge line by line left out and nobody has put in; in order

    [[nodiscard]] const LineRange &of(MergeSource source) const { return lines[std::size_t(source)]; }
    [[nodiscard]] bool isOpen() const noexcept { return choice == MergeChoice::Open; }
    /// The same in all texts and in the result: what has to be told of no list.
    [[nodiscard]] bool isPlain() const noexcept
    {
        return kind == ChunkKind::Unchanged && choice != MergeChoice::ByHand;
    }
    friend bool operator==(const MergePart &, const MergePart &) = default;
};

/// The three texts, and which lines of a result come from them. Immutable; usable from any thread.
///
/// A result shares the memory of its texts, so that a line comes from where its bytes are. The last line of a text
/// without a line end is there twice: as it stands, and with the end that it needs where others follow it.
class MergeTexts {
public:
    MergeTexts() = default;
    MergeTexts(const TextLines &left, const TextLines &base, const TextLines &right);

    [[nodiscard]] const TextLines &text(MergeSource source) const { return *m_texts[std::size_t(source)].whole; }

    /// Appends lines of a text to what a result consists of. A line without an end that has to have one, since others
    /// follow, gets it: in `runs`, before the new ones.
    void append(std::vector<LineRun> &runs, MergeSource source, const LineRange &lines) const;
    /// The same with lines of a result.
    void append(std::vector<LineRun> &runs, const LineRun &run) const;
    void append(std::vector<LineRun> &runs, const std::vector<LineRun> &lines) const;

    /// How the lines of the texts end.
    [[nodiscard]] LineEnd usualEnd() const;
    /// Where line `number` of a run comes from; nothing for one that was written by hand.
    [[nodiscard]] std::optional<SourceLine> originOf(const LineRun &run, qsizetype number) const;

private:
    struct Text {
        std::shared_ptr<const TextLines> whole = std::make_shared<const TextLines>();
        std::shared_ptr<const TextLines> endedLast; ///< null where the last line has an end
    };

    [[nodiscard]] LineRun withEnd(const LineRun &last) const;

    std::array<Text, mergeSourceCount> m_texts;
};

/// The sources that a choice takes all lines from, in order; none for the other choices.
[[nodiscard]] std::vector<MergeSource> sourcesOf(MergeChoice choice);

/// The parts that a merge begins with: all but conflicts are settled.
[[nodiscard]] std::vector<MergePart> partsOf(const ChunkMerge &merge);

/// The result of these parts, which all are open or take all lines of their sources.
[[nodiscard]] std::vector<LineRun> resultOf(const MergeTexts &texts, const std::vector<MergePart> &parts);

} // namespace velmora
