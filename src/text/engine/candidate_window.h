#pragma once

#include <QtGlobal>

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace velmora {

/// Hashes of starts and of ends of one line, for a rising series of lengths.
class LineMarks {
public:
    /// The lengths. They grow by a fifth or so: a line that agrees in somewhat less than it would have to seldom
    /// passes.
    static constexpr std::array<qint32, 17> lengths{1, 2, 3, 4, 5, 6, 8, 10, 12, 15, 18, 22, 27, 33, 40, 50, 64};
    /// The mark of a start or end that is longer than the line; no other mark is 0.
    static constexpr quint16 absent = 0;

    /// Marks are only compared with those of lines in the same kind of unit.
    template <typename Unit>
    explicit LineMarks(std::basic_string_view<Unit> line) noexcept;

    /// The index of the greatest of `lengths` that is at most `length`. Precondition: length >= 1.
    [[nodiscard]] static size_t step(qint64 length) noexcept;

    std::array<quint16, lengths.size()> starts{};
    std::array<quint16, lengths.size()> ends{};
};

/// The marks of a row of lines that moves on: finds those that may have enough in common with a given line without a
/// look at their text, eight at a time.
class CandidateWindow {
public:
    /// Starts anew with no lines; the first one appended will have index `first`.
    void reset(qint32 first);
    /// One more than the index of the last line.
    [[nodiscard]] qint32 end() const noexcept { return m_first + m_count; }
    void append(const LineMarks &marks);
    /// Gives up the lines before `index`. Precondition: index <= end().
    void dropBefore(qint32 index);

    /// The first line of [from, to) that may share a start and an end of together at least `units` units with the line
    /// whose marks are given; `to` when there is none. Precondition: units >= 1; [from, to) is in the window.
    [[nodiscard]] qint32 find(const LineMarks &marks, qint64 units, qint32 from, qint32 to) const noexcept;

private:
    /// Lines whose start or end, each of some length, has these marks.
    struct Condition {
        const quint16 *starts;
        const quint16 *ends;
        quint16 start;
        quint16 end;
    };

    [[nodiscard]] static quint32 matches(std::span<const Condition> conditions, size_t slot) noexcept;

    qint32 m_first = 0;
    qint32 m_count = 0;
    size_t m_dropped = 0; ///< slots at the front that are no longer in use
    std::array<std::vector<quint16>, LineMarks::lengths.size()> m_starts;
    std::array<std::vector<quint16>, LineMarks::lengths.size()> m_ends;
};

} // namespace velmora
