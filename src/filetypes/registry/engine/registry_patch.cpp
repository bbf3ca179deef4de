#include "filetypes/registry/engine/registry_patch.h"

#include <algorithm>

namespace velmora {

namespace {

/// The value that the other side's one becomes, or its deletion.
RegistryValue wanted(const RegistryComparison &comparison, const RegistryRow &row, Side changed)
{
    if (const RegistryValue *value = comparison.value(row, otherSide(changed)))
        return *value;
    RegistryValue deletion;
    deletion.name = comparison.value(row, changed)->name;
    deletion.isDeletion = true;
    return deletion;
}

/// The key of a tree, null where it has none of that path.
const RegistryKey *find(const RegistryTree &tree, const QString &path)
{
    const auto at =
        std::lower_bound(tree.keys.begin(), tree.keys.end(), path,
                         [](const RegistryKey &key, const QString &p) { return comparePaths(key.path, p) < 0; });
    return at != tree.keys.end() && comparePaths(at->path, path) == 0 ? &*at : nullptr;
}

const RegistryValue *find(const RegistryKey &key, const QString &name)
{
    const auto at = std::find_if(key.values.begin(), key.values.end(),
                                 [&](const RegistryValue &value) { return compareNames(value.name, name) == 0; });
    return at != key.values.end() ? &*at : nullptr;
}

/// A deletion of the uppermost key of `path` that the tree does not have, nor anything in it: what a patch made.
QString firstMissing(const RegistryTree &tree, const QString &path)
{
    for (qsizetype end = path.indexOf(u'\\'); end >= 0; end = path.indexOf(u'\\', end + 1)) {
        const QString part = path.first(end);
        const auto at =
            std::lower_bound(tree.keys.begin(), tree.keys.end(), part,
                             [](const RegistryKey &key, const QString &p) { return comparePaths(key.path, p) < 0; });
        if (part.contains(u'\\') && (at == tree.keys.end() || !isWithin(at->path, part)))
            return part;
    }
    return path;
}

} // namespace

RegistryTree registryPatch(const RegistryComparison &comparison, Side changed)
{
    RegistryTree patch;
    QString deleted; // the key that goes whole, and with it what is in it
    for (const RegistryKeyPair &pair : comparison.keys) {
        const RegistryKey &key = comparison.key(pair);
        const bool isGone = pair.keys[otherSide(changed)] < 0;
        if (isGone && !deleted.isEmpty() && isWithin(key.path, deleted))
            continue;
        RegistryKey out{key.path};
        bool isWanted = false;
        for (qsizetype k = pair.firstRow; k < pair.firstRow + pair.rowCount; ++k) {
            const RegistryRow &row = comparison.rows[std::size_t(k)];
            if (row.status == PairStatus::Same || row.isNoise)
                continue;
            isWanted = true;
            if (!row.isKey() && !isGone)
                out.values.push_back(wanted(comparison, row, changed));
            else if (!isGone) // a file that deletes the key first, or does not
                out.isDeletion =
                    comparison.trees[otherSide(changed)].keys[std::size_t(pair.keys[otherSide(changed)])].isDeletion;
        }
        if (isWanted && isGone) {
            out.isDeletion = true;
            deleted = key.path;
        }
        if (isWanted)
            patch.keys.push_back(std::move(out));
    }
    return patch;
}

RegistryTree registryUndo(const RegistryTree &tree, const RegistryTree &patch)
{
    RegistryTree undo;
    for (const RegistryKey &change : patch.keys) {
        if (change.isDeletion) {
            for (const RegistryKey &key : tree.keys) {
                if (isWithin(key.path, change.path))
                    undo.keys.push_back(key);
            }
        }
        const RegistryKey *now = find(tree, change.path);
        if (!now && !change.isDeletion) {
            undo.keys.push_back({firstMissing(tree, change.path), true});
            continue;
        }
        RegistryKey back{change.path};
        for (const RegistryValue &value : change.values) {
            const RegistryValue *old = now ? find(*now, value.name) : nullptr;
            RegistryValue deletion;
            deletion.name = value.name;
            deletion.isDeletion = true;
            if (old || !change.isDeletion)
                back.values.push_back(old ? *old : deletion);
        }
        if (!back.values.empty())
            undo.keys.push_back(std::move(back));
    }
    undo.settle();
    return undo;
}

} // namespace velmora
