#include "folder/engine/name_pairing.h"

#include <algorithm>
#include <map>
#include <set>

namespace velmora {

namespace {

using Entries = std::vector<FolderEntry>;
using EntryMap = std::map<QString, const FolderEntry *>;

/// Ends the sorting of a huge list. Never leaves this file.
struct SortingCancelled {};

/// False when cancelled.
bool sortByName(Entries &entries, const CancelFlag &cancel)
{
    constexpr unsigned interval = 0x1000;
    unsigned comparisons = 0;
    try {
        std::sort(entries.begin(), entries.end(), [&](const FolderEntry &left, const FolderEntry &right) {
            if (++comparisons % interval == 0 && cancel.isCancelled())
                throw SortingCancelled();
            return left.name < right.name;
        });
    } catch (const SortingCancelled &) {
        return false;
    }
    return true;
}

std::vector<PairedEntry> merged(const Entries &left, const Entries &right)
{
    std::vector<PairedEntry> pairs;
    pairs.reserve(std::max(left.size(), right.size()));
    auto l = left.begin();
    auto r = right.begin();
    while (l != left.end() || r != right.end()) {
        const int order = l == left.end() ? 1 : r == right.end() ? -1 : l->name.compare(r->name);
        PairedEntry pair;
        if (order <= 0)
            pair.left = &*l++;
        if (order >= 0)
            pair.right = &*r++;
        pair.name = pair.left ? pair.left->name : pair.right->name;
        pairs.push_back(std::move(pair));
    }
    return pairs;
}

EntryMap mapOf(const Entries &entries)
{
    EntryMap map;
    for (const FolderEntry &entry : entries)
        map.emplace_hint(map.end(), entry.name, &entry);
    return map;
}

const FolderEntry *entryOf(const EntryMap &map, const QString &name)
{
    const auto found = map.find(name);
    return found == map.end() ? nullptr : found->second;
}

/// The names of `map` that match, sorted without regard to case; those that differ in case only as the map has them.
QStringList matchingNames(const EntryMap &map, const Wildcard &mask)
{
    QStringList names;
    for (const auto &[name, entry] : map) {
        if (mask.matches(name))
            names.append(name);
    }
    std::stable_sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        return left.compare(right, Qt::CaseInsensitive) < 0;
    });
    return names;
}

} // namespace

NamePairing::NamePairing(const QList<ManualAlignRule> &rules)
{
    m_rules.reserve(std::size_t(rules.size()));
    for (const ManualAlignRule &rule : rules)
        m_rules.push_back({Wildcard::fromPattern(rule.left), Wildcard::fromPattern(rule.right)});
}

std::vector<PairedEntry> NamePairing::pair(Entries &left, Entries &right, const CancelFlag &cancel) const
{
    if (!sortByName(left, cancel) || !sortByName(right, cancel))
        return {};
    return m_rules.empty() || left.empty() || right.empty() ? merged(left, right) : pairAligned(left, right);
}

std::vector<PairedEntry> NamePairing::pairAligned(const Entries &left, const Entries &right) const
{
    const EntryMap leftMap = mapOf(left);
    const EntryMap rightNames = mapOf(right);
    EntryMap rightMap = rightNames;
    std::set<QString> names;
    for (const EntryMap *map : {&leftMap, static_cast<const EntryMap *>(&rightMap)}) {
        for (const auto &[name, entry] : *map)
            names.insert(name);
    }

    for (const Rule &rule : m_rules) {
        const QStringList lefts = matchingNames(leftMap, rule.left);
        const QStringList rights = matchingNames(rightMap, rule.right);
        for (qsizetype i = 0; i < std::min(lefts.size(), rights.size()); ++i) {
            const auto partner = rightMap.find(rights.at(i));
            if (lefts.at(i) == rights.at(i) || partner == rightMap.end())
                continue;
            rightMap.insert_or_assign(lefts.at(i), partner->second);
            rightMap.erase(partner);
            names.insert(lefts.at(i));
            names.erase(rights.at(i));
        }
    }

    std::vector<PairedEntry> pairs;
    pairs.reserve(names.size());
    for (const QString &name : names) {
        const FolderEntry *const partner = entryOf(rightMap, name);
        const bool displaced = partner && partner->name != name;
        pairs.push_back({name, entryOf(leftMap, name), partner, displaced ? entryOf(rightNames, name) : nullptr});
    }
    return pairs;
}

} // namespace velmora
