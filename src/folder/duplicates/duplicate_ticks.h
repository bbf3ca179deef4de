#pragma once

#include "folder/engine/duplicate_choice.h"

#include <vector>

namespace velmora {

/// Which copies of a scan's groups are ticked to be deleted. References, and links to somewhere else, never are.
class DuplicateTicks {
public:
    /// Nothing is ticked in `groups`.
    explicit DuplicateTicks(const QList<DuplicateGroup> &groups = {});

    [[nodiscard]] bool isTicked(qsizetype group, qsizetype copy) const
    {
        return m_ticks[m_first[std::size_t(group)] + std::size_t(copy)] != 0;
    }
    [[nodiscard]] static bool mayTick(const DuplicateCopy &copy) { return !copy.isReference && !copy.isLink; }

    void set(const DuplicateGroup &group, qsizetype number, qsizetype copy, bool ticked);
    /// Ticks `copies` of a group and no others.
    void choose(const DuplicateGroup &group, qsizetype number, const QList<qsizetype> &copies);

    /// The ticked copies of a group.
    [[nodiscard]] QList<qsizetype> of(qsizetype group) const;
    /// Whether a file of the group would stay: one that is not ticked and no link to somewhere else.
    [[nodiscard]] bool leavesOne(const DuplicateGroup &group, qsizetype number) const;

    [[nodiscard]] qsizetype groups() const { return qsizetype(m_ticked.size()); }
    [[nodiscard]] qint64 files() const { return m_files; }
    [[nodiscard]] qint64 bytes() const { return m_bytes; }     ///< of the ticked files
    [[nodiscard]] qint64 staying() const { return m_staying; } ///< files that stay in groups with ticks

private:
    [[nodiscard]] qint64 stayingOf(qsizetype group) const;

    std::vector<std::size_t> m_first; ///< of each group the place of its first copy; then the end
    std::vector<char> m_ticks;        ///< of all copies
    std::vector<qint32> m_ticked;     ///< of each group how many
    qint64 m_files = 0;
    qint64 m_bytes = 0;
    qint64 m_staying = 0;
};

} // namespace velmora
