#include "folder/engine/duplicate_choice.h"

#include "core/path_names.h"

#include <algorithm>

namespace velmora {

namespace {

bool isBefore(const DuplicateCopy &a, const DuplicateCopy &b, KeepRule rule)
{
    switch (rule) {
    case KeepRule::Newest:
        return a.modifiedMs > b.modifiedMs;
    case KeepRule::Oldest:
        return a.modifiedMs < b.modifiedMs;
    case KeepRule::ShortestPath:
        return a.path.size() < b.path.size();
    case KeepRule::InFolders:
        break;
    }
    return false;
}

bool isInOneOf(const QString &path, const QStringList &folders)
{
    return std::any_of(folders.begin(), folders.end(), [&](const QString &folder) { return isInside(path, folder); });
}

QList<bool> stayInFolders(const DuplicateGroup &group, const QStringList &folders)
{
    QList<bool> stays;
    for (const DuplicateCopy &copy : group.copies)
        stays.append(isInOneOf(copy.path, folders));
    if (!stays.contains(true))
        stays.fill(true);
    return stays;
}

QList<bool> bestStays(const DuplicateGroup &group, KeepRule rule)
{
    const QList<DuplicateCopy> &copies = group.copies;
    QList<bool> stays(copies.size(), false);
    if (std::any_of(copies.begin(), copies.end(), [](const DuplicateCopy &copy) { return copy.isReference; }))
        return stays;
    auto best = copies.end();
    for (auto copy = copies.begin(); copy != copies.end(); ++copy) {
        if (!copy->isLink && (best == copies.end() || isBefore(*copy, *best, rule)))
            best = copy;
    }
    if (best != copies.end())
        stays[best - copies.begin()] = true;
    return stays;
}

} // namespace

QList<qsizetype> extraCopies(const DuplicateGroup &group, KeepRule rule, const QStringList &folders)
{
    const QList<bool> stays = rule == KeepRule::InFolders ? stayInFolders(group, folders) : bestStays(group, rule);
    QList<qsizetype> extra;
    for (qsizetype i = 0; i < group.copies.size(); ++i) {
        if (!stays.at(i) && !group.copies.at(i).isReference && !group.copies.at(i).isLink)
            extra.append(i);
    }
    return extra;
}

} // namespace velmora
