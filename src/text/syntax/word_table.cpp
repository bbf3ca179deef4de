#include "text/syntax/word_table.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

char16_t folded(QChar unit)
{
    const char16_t value = unit.unicode();
    return value >= u'A' && value <= u'Z' ? char16_t(value + (u'a' - u'A')) : value;
}

} // namespace

std::size_t WordTable::hashOf(QStringView word) const
{
    // FNV-1a; a function of its own because the case may not count.
    quint32 hash = 2166136261U;
    for (const QChar unit : word)
        hash = (hash ^ (m_ignoresCase ? folded(unit) : unit.unicode())) * 16777619U;
    return hash;
}

bool WordTable::areSame(QStringView a, QStringView b) const
{
    if (!m_ignoresCase)
        return a == b;
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](QChar x, QChar y) { return folded(x) == folded(y); });
}

std::size_t WordTable::slotOf(QStringView word) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hashOf(word) & mask;
    while (!m_slots[slot].word.isEmpty() && !areSame(m_slots[slot].word, word))
        slot = (slot + 1) & mask;
    return slot;
}

void WordTable::grow()
{
    const std::vector<Entry> before = std::exchange(m_slots, {});
    m_slots.resize(std::max<std::size_t>(before.size() * 2, 64));
    for (const Entry &entry : before) {
        if (!entry.word.isEmpty())
            m_slots[slotOf(entry.word)] = entry;
    }
}

void WordTable::add(const QString &word, SyntaxRole role)
{
    if (word.isEmpty())
        return;
    // Half of the slots stay empty, so that a search ends after a step or two.
    if (m_slots.size() < 2 * (m_count + 1))
        grow();
    Entry &entry = m_slots[slotOf(word)];
    if (!entry.word.isEmpty())
        return;
    entry = {word, role};
    ++m_count;
    m_longest = std::max(m_longest, word.size());
}

SyntaxRole WordTable::roleOf(QStringView word) const
{
    if (m_count == 0 || word.isEmpty() || word.size() > m_longest)
        return SyntaxRole::Text;
    return m_slots[slotOf(word)].role;
}

} // namespace velmora
