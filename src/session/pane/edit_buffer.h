#pragma once

#include "session/pane/line_source.h"

#include <QByteArray>

#include <compare>
#include <memory>
#include <vector>

namespace velmora {

/// A place in an editable text: a line, 0-based, and the UTF-16 code units before it in that line.
struct EditPosition {
    qsizetype line = 0;
    qsizetype unit = 0;

    friend auto operator<=>(const EditPosition &, const EditPosition &) = default;
};

/// Consecutive lines of a text that never changes.
struct LineRun {
    std::shared_ptr<const TextLines> text;
    qsizetype first = 0;
    qsizetype count = 0;
};

/// One state of an editable text. Immutable and usable from any thread, as every source.
class EditSnapshot final : public LineSource {
public:
    EditSnapshot() = default;
    explicit EditSnapshot(std::vector<LineRun> runs);

    [[nodiscard]] qsizetype count() const override { return m_starts.empty() ? 0 : m_starts.back(); }
    [[nodiscard]] std::string_view bytes(qsizetype line) const override;
    [[nodiscard]] LineEnd lineEnd(qsizetype line) const;

    /// The lines [first, first + count) as runs.
    [[nodiscard]] std::vector<LineRun> runs(qsizetype first, qsizetype count) const;

    /// The text in one piece, each line with its own end. Shares the memory of a text that was never edited.
    [[nodiscard]] TextLines toLines() const;
    /// Whether this is line for line and byte for byte the same text.
    [[nodiscard]] bool holdsSameAs(const TextLines &text) const;

private:
    struct Place {
        const TextLines *text;
        qsizetype line;
    };
    [[nodiscard]] Place find(qsizetype line) const;

    std::vector<LineRun> m_runs;
    std::vector<qsizetype> m_starts; ///< of each run, and behind the last one the number of lines
};

/// What one change did: lines [first, first + removed) became [first, first + inserted).
struct LineChange {
    qsizetype first = 0;
    qsizetype removed = 0;
    qsizetype inserted = 0;
    EditPosition caret; ///< where the change leaves the caret
};

/// The lines of one side while they are edited, with undo.
///
/// A piece table by lines: what was read stays where it is, edited lines are kept beside it, and a state of the text is
/// a list of runs of both. An edit costs the lines that it touches and the number of runs, whatever the length of the
/// text. Each line keeps its own end; new lines get the end that is usual around them, and only the last line may have
/// none. Behind a last line that has one, {count(), 0} is a place too, where text begins a line without an end.
/// Positions are clamped. Lives on one thread; `snapshot` may be read on any.
class EditBuffer {
public:
    /// Which successive edits become one undo step.
    enum class Merge { Never, Typing, Erasing };

    EditBuffer() : EditBuffer(TextLines()) {}
    explicit EditBuffer(const TextLines &text);
    /// A text put together from parts of others, which it shares. Only the very last line may have no end.
    explicit EditBuffer(const std::vector<LineRun> &runs);

    [[nodiscard]] const std::shared_ptr<const EditSnapshot> &snapshot() const noexcept { return m_snapshot; }
    [[nodiscard]] qsizetype count() const { return m_snapshot->count(); }

    /// Puts `text` in the place of what stands from `start` to `end`. Line feeds, carriage returns and pairs of them
    /// in `text` all start a new line.
    LineChange replace(EditPosition start, EditPosition end, const QString &text, Merge merge = Merge::Never);

    /// What `move` did, and where the text that was moved begins now; the change's caret is its end.
    struct Moved {
        LineChange change;
        EditPosition start;
    };
    /// Moves what stands from `start` to `end` to `to`, as one step. Precondition: start < end, and `to` is outside.
    Moved move(EditPosition start, EditPosition end, EditPosition to);

    /// Inserts whole lines before `line`, which may be `count()`. A line break at the end of `text` adds no line.
    LineChange insertLines(qsizetype line, const QString &text);

    /// Puts the lines [from, from + fromCount) of `source` in the place of [first, first + count). A line whose text
    /// stays the same takes over the line end, too.
    LineChange copyLines(qsizetype first, qsizetype count, const EditSnapshot &source, qsizetype from,
                         qsizetype fromCount);

    /// Puts the lines of `with`, as they stand, in the place of [first, first + removed). The caret is at `caret`
    /// before and after that.
    LineChange replaceLines(qsizetype first, qsizetype removed, const TextLines &with, EditPosition caret);
    /// The same with lines of any texts, which are shared.
    LineChange replaceLines(qsizetype first, qsizetype removed, const std::vector<LineRun> &with, EditPosition caret);

    /// A number for the latest step that is in effect, 0 for none. No two steps ever have the same, and a step keeps
    /// its own while edits are merged with it and over undo and redo: so who keeps a history beside this one can
    /// follow.
    [[nodiscard]] quint64 latestStep() const noexcept { return m_done > 0 ? m_steps[m_done - 1].number : 0; }

    [[nodiscard]] bool canUndo() const noexcept { return m_done > 0; }
    [[nodiscard]] bool canRedo() const noexcept { return m_done < m_steps.size(); }
    /// Preconditions: canUndo(), canRedo().
    LineChange undo();
    LineChange redo();

    /// Whether the text is another one than at the latest `markClean`, or at first.
    [[nodiscard]] bool isModified() const noexcept { return m_done != m_clean; }
    void markClean() noexcept { m_clean = m_done; }
    /// The text is to count as changed whatever is undone: no file holds it.
    void markUnsaved() noexcept { m_clean = nowhere; }

    /// The text as it is now goes into a file. It is the clean one from the moment when `endSave` says that it got
    /// there, also when it was edited meanwhile.
    void beginSave() noexcept { m_saving = m_done; }
    void endSave(bool saved) noexcept
    {
        if (saved)
            m_clean = m_saving;
        m_saving = nowhere;
    }

private:
    struct NewLine {
        QByteArray utf8;
        LineEnd end = LineEnd::Lf;
    };
    struct Step {
        qsizetype first = 0;
        std::vector<LineRun> removed;
        std::vector<LineRun> inserted;
        EditPosition before; ///< the caret's place
        EditPosition after;
        Merge merge = Merge::Never;
        quint64 number = 0;
    };

    /// A place that exists, and the bytes before it in its line.
    struct Spot {
        EditPosition at;
        qsizetype byte = 0;
    };

    [[nodiscard]] Spot spotAt(EditPosition position) const;
    [[nodiscard]] bool isBehindLastEnd(EditPosition position) const;
    /// Those of the line; none for the place behind the last one.
    [[nodiscard]] std::string_view bytesAt(qsizetype line) const;
    [[nodiscard]] EditPosition clamped(EditPosition position) const { return spotAt(position).at; }
    [[nodiscard]] QString textBetween(EditPosition start, EditPosition end) const;
    [[nodiscard]] LineEnd usualEnd(qsizetype line) const;
    LineChange change(qsizetype first, qsizetype removed, std::vector<NewLine> lines, EditPosition before,
                      EditPosition after, Merge merge);
    LineChange put(qsizetype first, qsizetype removed, const std::vector<LineRun> &with, EditPosition before,
                   EditPosition after, Merge merge);
    void splice(qsizetype first, qsizetype removed, const std::vector<LineRun> &inserted);
    void remember(Step step);

    /// No number of steps leads to that text.
    static constexpr std::size_t nowhere = std::size_t(-1);

    std::shared_ptr<const EditSnapshot> m_snapshot;
    std::vector<Step> m_steps;
    std::size_t m_done = 0; ///< steps that are in effect; the others can be redone
    std::size_t m_clean = 0;
    quint64 m_lastNumber = 0;
    std::size_t m_saving = nowhere; ///< the steps in effect when the running save began
};

} // namespace velmora
