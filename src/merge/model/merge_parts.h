#pragma once

#include "merge/model/merge_part.h"

namespace velmora {

/// Parts [first, first + removed) of a merge became [first, first + inserted).
struct PartsChange {
    qsizetype first = 0;
    qsizetype removed = 0;
    qsizetype inserted = 0;
};

/// A decision about parts, ready to be carried out: lines of the result that get others in their place, and the parts
/// as they are afterwards.
struct MergePlan {
    qsizetype firstLine = 0;
    qsizetype removedLines = 0;
    std::vector<LineRun> lines;
    qsizetype firstPart = 0;
    std::vector<MergePart> parts;
};

/// The parts of a merge while it is decided and its result edited, with a history beside that of the result's text.
///
/// The parts cover every line of each text and of the result exactly once. Each change of the result is told to
/// `follow`, whoever made it: what comes with a plan is that plan's decision, what undoes or redoes a step takes its
/// decisions back or on, and anything else is an edit by hand, after which the parts that it touched are by hand.
/// Where it touches lines that are the same in all texts, these become a part of their own.
///
/// Lives on one thread. What costs more than the parts that are touched is a step for each part behind them.
class MergeParts {
public:
    MergeParts() = default;
    explicit MergeParts(const std::vector<MergePart> &parts);

    [[nodiscard]] qsizetype count() const noexcept { return qsizetype(m_parts.size()); }
    [[nodiscard]] const MergePart &at(qsizetype part) const { return m_parts[std::size_t(part)]; }
    [[nodiscard]] const std::vector<MergePart> &all() const noexcept { return m_parts; }
    /// The first line of the result that `part`, which may be `count()`, has, or would have.
    [[nodiscard]] qsizetype resultStart(qsizetype part) const { return m_starts[std::size_t(part)]; }
    /// The part that holds a line of the result; the last one for a line behind the end, -1 without parts.
    [[nodiscard]] qsizetype partOfLine(qsizetype resultLine) const;

    [[nodiscard]] qsizetype conflicts() const; ///< decided or not
    [[nodiscard]] qsizetype openConflicts() const;
    /// The next open conflict, or else any conflict, behind or before `part`, which may be -1; -1 when there is none.
    [[nodiscard]] qsizetype nextConflict(qsizetype part, bool forward, bool openOnly) const;

    /// What `choice` does with `chosen`, which are in order. Parts between them stay, and so do those that a merge line
    /// by line leaves in conflict. Precondition: some are chosen, by neither an open choice nor one by hand, and
    /// `result` is the text as the parts have it.
    [[nodiscard]] MergePlan plan(const MergeTexts &texts, const EditSnapshot &result,
                                 const std::vector<qsizetype> &chosen, MergeChoice choice) const;
    /// What puts line `line` of `leftOut` of a part in before line `resultLine`, which the part has or ends with. The
    /// same preconditions for `result`.
    [[nodiscard]] MergePlan planToPutIn(const MergeTexts &texts, const EditSnapshot &result, qsizetype part,
                                        SourceLine line, qsizetype resultLine) const;
    /// The next change to follow carries out `plan`.
    void expect(MergePlan plan) { m_expected = std::move(plan); }

    /// Follows a change of the result, after which `step` is the number of its latest step. Lines that come in between
    /// parts belong to the part `near`, where that is possible.
    PartsChange follow(const LineChange &change, quint64 step, qsizetype near = -1);

private:
    struct Step {
        quint64 number = 0;
        qsizetype first = 0;
        std::vector<MergePart> before;
        std::vector<MergePart> after;
    };

    [[nodiscard]] Step edited(const LineChange &change, qsizetype near) const;
    [[nodiscard]] qsizetype receiver(qsizetype line, qsizetype near) const;
    [[nodiscard]] std::vector<MergePart> slice(qsizetype first, qsizetype end) const;
    void remember(Step step);
    PartsChange splice(qsizetype first, qsizetype removed, const std::vector<MergePart> &with);

    std::vector<MergePart> m_parts;
    std::vector<qsizetype> m_starts{0}; ///< of each part in the result, and behind the last one its end
    std::vector<Step> m_steps;
    std::size_t m_done = 0;
    std::optional<MergePlan> m_expected;
};

} // namespace velmora
