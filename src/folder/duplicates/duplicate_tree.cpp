#include "folder/duplicates/duplicate_tree.h"

#include "core/path_names.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <numeric>
#include <utility>

namespace velmora {

namespace {

/// In the order of the rows.
std::vector<qint32> pathCounts(const DuplicateScan &scan)
{
    std::vector<qint32> counts;
    counts.reserve(std::size_t(scan.folders.size() + scan.groups.size() + scan.manyNamed.size()));
    for (const DuplicateFolders &folders : scan.folders)
        counts.push_back(qint32(folders.paths.size()));
    for (const DuplicateGroup &group : scan.groups)
        counts.push_back(qint32(group.copies.size()));
    for (const ManyNamedFile &file : scan.manyNamed)
        counts.push_back(qint32(file.paths.size()));
    return counts;
}

std::vector<quint16> depthsOf(const DuplicateScan &scan)
{
    std::vector<quint16> depths;
    for (const qint32 count : pathCounts(scan)) {
        depths.push_back(0);
        depths.insert(depths.end(), std::size_t(count), 1);
    }
    return depths;
}

/// A group without some of its copies, and which of the rest are ticked.
struct Rest {
    DuplicateGroup group;
    QList<qsizetype> ticked;
};

Rest restOf(const DuplicateGroup &group, const QSet<qsizetype> &gone, const QList<qsizetype> &ticked)
{
    Rest rest{group, {}};
    rest.group.copies.clear();
    for (qsizetype copy = 0; copy < group.copies.size(); ++copy) {
        if (gone.contains(copy))
            continue;
        if (ticked.contains(copy))
            rest.ticked.append(rest.group.copies.size());
        rest.group.copies.append(group.copies.at(copy));
    }
    return rest;
}

} // namespace

DuplicateTree::DuplicateTree(DuplicateScan scan) : DuplicateTree(std::move(scan), DuplicateTicks()) {}

DuplicateTree::DuplicateTree(DuplicateScan scan, DuplicateTicks ticks)
    : FixedRowTree(depthsOf(scan)), m_scan(std::move(scan)), m_ticks(std::move(ticks))
{
    if (m_ticks.groups() != m_scan.groups.size())
        m_ticks = DuplicateTicks(m_scan.groups);
    addEntries();
    setAllExpanded(-1, true);
    rankNames();
    findTimes();
}

void DuplicateTree::addEntries()
{
    const auto add = [this](Kind kind, qsizetype count) {
        for (qsizetype number = 0; number < count; ++number)
            m_entries.push_back({kind, qint32(number)});
    };
    add(Kind::Folders, m_scan.folders.size());
    add(Kind::Files, m_scan.groups.size());
    add(Kind::Names, m_scan.manyNamed.size());
    const std::vector<qint32> counts = pathCounts(m_scan);
    m_entryOf.reserve(std::size_t(count()));
    for (std::size_t entry = 0; entry < counts.size(); ++entry)
        m_entryOf.insert(m_entryOf.end(), std::size_t(counts[entry]) + 1, qint32(entry));
}

void DuplicateTree::findTimes()
{
    m_times.resize(std::size_t(count()));
    for (qint32 node = 0; node < count(); ++node) {
        const std::optional<CopyPlace> place = copyAt(node);
        if (!place)
            continue;
        qint64 &latest = m_times[std::size_t(parent(node))];
        m_times[std::size_t(node)] = at(*place).modifiedMs;
        latest = std::max(latest, at(*place).modifiedMs);
    }
}

/// Names are compared once, here, not whenever rows are sorted.
void DuplicateTree::rankNames()
{
    m_ranks.resize(std::size_t(count()));
    std::vector<qint32> siblings;
    const auto rank = [&] {
        // A group stands where its first file would.
        const auto name = [this](qint32 node) -> const QString & { return pathAt(isGroup(node) ? node + 1 : node); };
        std::stable_sort(siblings.begin(), siblings.end(), [&](qint32 one, qint32 other) {
            return name(one).compare(name(other), Qt::CaseInsensitive) < 0;
        });
        for (std::size_t place = 0; place < siblings.size(); ++place)
            m_ranks[std::size_t(siblings[place])] = qint32(place);
        siblings.clear();
    };
    for (qint32 group = 0; group < count(); group = end(group)) {
        siblings.resize(std::size_t(pathCount(group)));
        std::iota(siblings.begin(), siblings.end(), group + 1);
        rank();
    }
    for (qint32 group = 0; group < count(); group = end(group))
        siblings.push_back(group);
    rank();
}

const QString &DuplicateTree::pathAt(qint32 node) const
{
    const Entry &entry = entryOf(node);
    const qint32 row = node - parent(node) - 1;
    switch (entry.kind) {
    case Kind::Folders:
        return m_scan.folders.at(entry.number).paths.at(row);
    case Kind::Files:
        return m_scan.groups.at(entry.number).copies.at(row).path;
    case Kind::Names:
        break;
    }
    return m_scan.manyNamed.at(entry.number).paths.at(row);
}

qint32 DuplicateTree::groupOf(qint32 node) const
{
    return entryOf(node).kind == Kind::Files ? entryOf(node).number : -1;
}

std::optional<CopyPlace> DuplicateTree::copyAt(qint32 node) const
{
    const qint32 group = isGroup(node) ? -1 : groupOf(node);
    return group < 0 ? std::nullopt : std::optional(CopyPlace{group, node - parent(node) - 1});
}

// Ticks --------------------------------------------------------------------------------------------------------------

bool DuplicateTree::hasTick(qint32 node) const
{
    const std::optional<CopyPlace> place = m_ticking ? copyAt(node) : std::nullopt;
    return place && DuplicateTicks::mayTick(at(*place));
}

void DuplicateTree::tick(qint32 node, bool ticked)
{
    if (const std::optional<CopyPlace> place = copyAt(node))
        m_ticks.set(m_scan.groups.at(place->group), place->group, place->copy, ticked);
}

void DuplicateTree::tickByRule(const QList<qint32> &groups, KeepRule rule, const QStringList &folders)
{
    for (const qint32 number : groups) {
        const DuplicateGroup &group = m_scan.groups.at(number);
        m_ticks.choose(group, number, extraCopies(group, rule, folders));
    }
}

void DuplicateTree::tickFolder(const QList<qint32> &groups, const QString &folder, bool ticked)
{
    for (const qint32 number : groups) {
        const DuplicateGroup &group = m_scan.groups.at(number);
        for (qsizetype copy = 0; copy < group.copies.size(); ++copy) {
            if (isInside(group.copies.at(copy).path, folder))
                m_ticks.set(group, number, copy, ticked);
        }
    }
}

void DuplicateTree::clearTicks()
{
    m_ticks = DuplicateTicks(m_scan.groups);
}

// What is left of one -------------------------------------------------------------------------------------------------

std::unique_ptr<DuplicateTree> treeWithout(const DuplicateScan &scan, const DuplicateTicks &ticks,
                                           const CopyPlaces &gone)
{
    QHash<qint32, QSet<qsizetype>> removed;
    QSet<QString> changed; // folders that a copy has gone from, at any depth
    for (const CopyPlace &place : gone) {
        removed[place.group].insert(place.copy);
        QString folder = parentPath(scan.groups.at(place.group).copies.at(place.copy).path);
        while (!folder.isEmpty() && !changed.contains(folder)) {
            changed.insert(folder);
            folder = parentPath(folder);
        }
    }
    DuplicateScan left = scan;
    left.folders.removeIf([&changed](const DuplicateFolders &folders) {
        return std::any_of(folders.paths.begin(), folders.paths.end(),
                           [&](const QString &folder) { return changed.contains(folder); });
    });
    left.groups.clear();
    QList<QList<qsizetype>> ticked;
    for (qint32 number = 0; number < scan.groups.size(); ++number) {
        Rest rest = restOf(scan.groups.at(number), removed.value(number), ticks.of(number));
        if (rest.group.copies.size() < 2)
            continue;
        left.groups.append(rest.group);
        ticked.append(rest.ticked);
    }
    DuplicateTicks others(left.groups);
    for (qsizetype number = 0; number < left.groups.size(); ++number)
        others.choose(left.groups.at(number), number, ticked.at(number));
    return std::make_unique<DuplicateTree>(std::move(left), std::move(others));
}

} // namespace velmora
