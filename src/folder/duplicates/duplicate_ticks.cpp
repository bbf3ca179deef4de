#include "folder/duplicates/duplicate_ticks.h"

#include "folder/operations/duplicate_plan.h"

namespace velmora {

DuplicateTicks::DuplicateTicks(const QList<DuplicateGroup> &groups)
{
    m_first.reserve(std::size_t(groups.size()) + 1);
    m_first.push_back(0);
    for (const DuplicateGroup &group : groups)
        m_first.push_back(m_first.back() + std::size_t(group.copies.size()));
    m_ticks.resize(m_first.back());
    m_ticked.resize(std::size_t(groups.size()));
}

qint64 DuplicateTicks::stayingOf(qsizetype group) const
{
    const auto number = std::size_t(group);
    return m_ticked[number] == 0 ? 0 : qint64(m_first[number + 1] - m_first[number]) - m_ticked[number];
}

void DuplicateTicks::set(const DuplicateGroup &group, qsizetype number, qsizetype copy, bool ticked)
{
    char &tick = m_ticks[m_first[std::size_t(number)] + std::size_t(copy)];
    if ((tick != 0) == ticked || !mayTick(group.copies.at(copy)))
        return;
    tick = ticked ? 1 : 0;
    m_staying -= stayingOf(number);
    m_ticked[std::size_t(number)] += ticked ? 1 : -1;
    m_staying += stayingOf(number);
    m_files += ticked ? 1 : -1;
    m_bytes += ticked ? group.size : -group.size;
}

void DuplicateTicks::choose(const DuplicateGroup &group, qsizetype number, const QList<qsizetype> &copies)
{
    std::vector<char> chosen(std::size_t(group.copies.size()));
    for (const qsizetype copy : copies)
        chosen[std::size_t(copy)] = 1;
    for (qsizetype copy = 0; copy < group.copies.size(); ++copy)
        set(group, number, copy, chosen[std::size_t(copy)] != 0);
}

QList<qsizetype> DuplicateTicks::of(qsizetype group) const
{
    QList<qsizetype> copies;
    if (m_ticked[std::size_t(group)] == 0)
        return copies;
    const std::size_t first = m_first[std::size_t(group)];
    for (std::size_t place = first; place < m_first[std::size_t(group) + 1]; ++place) {
        if (m_ticks[place] != 0)
            copies.append(qsizetype(place - first));
    }
    return copies;
}

bool DuplicateTicks::leavesOne(const DuplicateGroup &group, qsizetype number) const
{
    return keepsOne({group, of(number)});
}

} // namespace velmora
