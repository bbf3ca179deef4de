#include "folder/engine/name_conflicts.h"

#include "core/path_names.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace velmora {

namespace {

/// What names that may meet have in common.
QString likeness(const QString &name)
{
    const bool isPlain = std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
    const QString bare = bareName(name);
    const QString folded =
        isPlain ? bare.toLower()
                : bare.normalized(QString::NormalizationForm_C).toCaseFolded().normalized(QString::NormalizationForm_C);
    return parentPath(name) + u'/' + folded;
}

bool isOneForm(const QString &one, const QString &other)
{
    return one.normalized(QString::NormalizationForm_C) == other.normalized(QString::NormalizationForm_C);
}

/// The side to which an item brings its name; nothing when it brings none.
std::optional<Side> sideOfNewName(const SyncPlanItem &item)
{
    switch (item.syncAction()) {
    case SyncAction::CopyToRight:
    case SyncAction::MoveOnRight:
        return item.rightPath.isEmpty() ? std::optional(Side::Right) : std::nullopt;
    case SyncAction::CopyToLeft:
    case SyncAction::MoveOnLeft:
        return item.leftPath.isEmpty() ? std::optional(Side::Left) : std::nullopt;
    case SyncAction::Skip:
    case SyncAction::DeleteRight:
    case SyncAction::DeleteLeft:
        break;
    }
    return std::nullopt;
}

/// What names of one side have in common that is there more than once, by its number: names are many, and few are
/// alike.
using CrowdedNames = Sides<QSet<size_t>>;

QSet<size_t> moreThanOnce(std::vector<size_t> numbers)
{
    std::sort(numbers.begin(), numbers.end());
    QSet<size_t> found;
    for (auto twice = numbers.begin(); (twice = std::adjacent_find(twice, numbers.end())) != numbers.end(); ++twice)
        found.insert(*twice);
    return found;
}

CrowdedNames crowdedNames(const QList<FolderDiffItem> &items, const QList<SyncPlanItem> &plan)
{
    Sides<std::vector<size_t>> numbers;
    for (const SyncPlanItem &item : plan) {
        if (const std::optional<Side> side = sideOfNewName(item))
            numbers[*side].push_back(qHash(likeness(item.name)));
    }
    const Sides<bool> isBrought{!numbers.left.empty(), !numbers.right.empty()};
    for (const FolderDiffItem &item : items) {
        for (const Side side : bothSides) {
            if (isBrought[side] && !pathOn(item, side).isEmpty())
                numbers[side].push_back(qHash(likeness(item.name)));
        }
    }
    return {moreThanOnce(std::move(numbers.left)), moreThanOnce(std::move(numbers.right))};
}

/// Names of one side by what they have in common.
using NamesByLikeness = QHash<QString, QStringList>;

/// What stands then where the plan brings names to and there are others like them, and elsewhere nothing.
Sides<NamesByLikeness> namesThen(const QList<FolderDiffItem> &items, const QList<SyncPlanItem> &plan)
{
    const CrowdedNames crowded = crowdedNames(items, plan);
    Sides<NamesByLikeness> names;
    if (crowded.left.isEmpty() && crowded.right.isEmpty())
        return names;
    for (const SyncPlanItem &item : plan) {
        const std::optional<Side> side = sideOfNewName(item);
        if (!side)
            continue;
        if (const QString key = likeness(item.name); crowded[*side].contains(qHash(key)))
            names[*side][key].append(item.name);
    }
    for (const FolderDiffItem &item : items) {
        const QString key = likeness(item.name);
        for (const Side side : bothSides) {
            if (pathOn(item, side).isEmpty())
                continue;
            if (const auto brought = names[side].find(key); brought != names[side].end())
                brought->append(item.name);
        }
    }
    return names;
}

constexpr qsizetype longestName = 255;

} // namespace

bool isWindowsName(QStringView name)
{
    static constexpr std::array devices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    static constexpr QStringView forbidden = u"<>:\"/\\|?*";
    const bool hasForbidden =
        std::any_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x20 || forbidden.contains(c); });
    if (name.isEmpty() || hasForbidden || name.back() == u'.' || name.back() == u' ')
        return false;
    const QString stem = name.left(name.indexOf(u'.') < 0 ? name.size() : name.indexOf(u'.')).trimmed().toString();
    const bool isDevice = std::any_of(devices.begin(), devices.end(), [&stem](const char *device) {
        return stem.compare(QLatin1String(device), Qt::CaseInsensitive) == 0;
    });
    const bool isPort = stem.size() == 4 &&
                        (stem.startsWith(QLatin1String("COM"), Qt::CaseInsensitive) ||
                         stem.startsWith(QLatin1String("LPT"), Qt::CaseInsensitive)) &&
                        stem.back() >= u'1' && stem.back() <= u'9';
    return !isDevice && !isPort;
}

QList<NameConflict> findNameConflicts(const QList<FolderDiffItem> &items, const QList<SyncPlanItem> &plan)
{
    const Sides<NamesByLikeness> names = namesThen(items, plan);
    QList<NameConflict> conflicts;
    for (const SyncPlanItem &item : plan) {
        const std::optional<Side> side = sideOfNewName(item);
        if (!side)
            continue;
        const QString bare = bareName(item.name);
        if (!isWindowsName(bare))
            conflicts.append({NameConflict::Kind::NotAllowed, item.name, {}});
        if (bare.size() * 3 > longestName && bare.toUtf8().size() > longestName)
            conflicts.append({NameConflict::Kind::TooLong, item.name, {}});
        const QStringList alike = names[*side].isEmpty() ? QStringList() : names[*side].value(likeness(item.name));
        for (const QString &other : alike) {
            if (other != item.name && other != item.movedFrom) {
                const bool isForm = isOneForm(item.name, other);
                conflicts.append({isForm ? NameConflict::Kind::Form : NameConflict::Kind::Case, item.name, other});
                break;
            }
        }
    }
    return conflicts;
}

} // namespace velmora
