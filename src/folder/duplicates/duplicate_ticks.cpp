#include "folder/duplicates/duplicate_ticks.h"

#include "folder/operations/duplicate_plan.h"

namespace velmora {

DuplicateTicks::DuplicateTicks(const QList<DuplicateGroup> &groups)
{
    m_ticks.reserve(std::size_t(groups.size()));
    for (const DuplicateGroup &group : groups)
        m_ticks.emplace_back(std::size_t(group.copies.size()), char(0));
}

void DuplicateTicks::set(const DuplicateGroup &group, qsizetype number, qsizetype copy, bool ticked)
{
    char &tick = m_ticks[std::size_t(number)][std::size_t(copy)];
    if ((tick != 0) == ticked || !mayTick(group.copies.at(copy)))
        return;
    tick = ticked ? 1 : 0;
    m_files += ticked ? 1 : -1;
    m_bytes += ticked ? group.size : -group.size;
}

void DuplicateTicks::choose(const DuplicateGroup &group, qsizetype number, const QList<qsizetype> &copies)
{
    for (qsizetype copy = 0; copy < group.copies.size(); ++copy)
        set(group, number, copy, copies.contains(copy));
}

QList<qsizetype> DuplicateTicks::of(qsizetype group) const
{
    QList<qsizetype> copies;
    const std::vector<char> &ticks = m_ticks[std::size_t(group)];
    for (std::size_t copy = 0; copy < ticks.size(); ++copy) {
        if (ticks[copy] != 0)
            copies.append(qsizetype(copy));
    }
    return copies;
}

bool DuplicateTicks::leavesOne(const DuplicateGroup &group, qsizetype number) const
{
    return keepsOne({group, of(number)});
}

} // namespace velmora
