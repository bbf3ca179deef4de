#include "filetypes/registry/engine/registry_tree.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

/// A value that orders letters as paths are ordered: the backslash before all others.
char16_t rank(QChar letter)
{
    const char16_t unit = letter.unicode();
    if (unit == u'\\')
        return 0;
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 0x20) : unit;
    return letter.toCaseFolded().unicode();
}

template <typename Rank>
int compareRanked(QStringView one, QStringView other, Rank ranked)
{
    const qsizetype shared = std::min(one.size(), other.size());
    for (qsizetype k = 0; k < shared; ++k) {
        if (one[k] == other[k])
            continue;
        const int difference = int(ranked(one[k])) - int(ranked(other[k]));
        if (difference != 0)
            return difference;
    }
    return one.size() < other.size() ? -1 : one.size() > other.size() ? 1 : 0;
}

void settleValues(std::vector<RegistryValue> &values)
{
    const auto before = [](const RegistryValue &a, const RegistryValue &b) { return compareNames(a.name, b.name) < 0; };
    if (!std::is_sorted(values.begin(), values.end(), before))
        std::stable_sort(values.begin(), values.end(), before);
    std::size_t kept = 0;
    for (std::size_t k = 0; k < values.size(); ++k) {
        const bool isAgain = kept > 0 && compareNames(values[kept - 1].name, values[k].name) == 0;
        RegistryValue &place = values[isAgain ? kept - 1 : kept++];
        if (&place != &values[k])
            place = std::move(values[k]);
    }
    values.resize(kept);
}

/// Takes up a later mention of a key.
void addTo(RegistryKey &key, RegistryKey &&later)
{
    if (later.isDeletion) { // whatever was written before it is gone
        key = std::move(later);
        return;
    }
    std::move(later.values.begin(), later.values.end(), std::back_inserter(key.values));
}

} // namespace

QString registryTypeName(RegistryType type)
{
    static constexpr std::array names{"REG_NONE",
                                      "REG_SZ",
                                      "REG_EXPAND_SZ",
                                      "REG_BINARY",
                                      "REG_DWORD",
                                      "REG_DWORD_BIG_ENDIAN",
                                      "REG_LINK",
                                      "REG_MULTI_SZ",
                                      "REG_RESOURCE_LIST",
                                      "REG_FULL_RESOURCE_DESCRIPTOR",
                                      "REG_RESOURCE_REQUIREMENTS_LIST",
                                      "REG_QWORD"};
    const auto number = std::size_t(type);
    return number < names.size() ? QString::fromLatin1(names[number])
                                 : QStringLiteral("0x%1").arg(quint32(type), 0, 16);
}

int comparePaths(QStringView one, QStringView other)
{
    return compareRanked(one, other, rank);
}

int compareNames(QStringView one, QStringView other)
{
    return compareRanked(one, other, rank);
}

bool isWithin(QStringView path, QStringView key)
{
    return path.size() >= key.size() && compareNames(path.first(key.size()), key) == 0 &&
           (path.size() == key.size() || path[key.size()] == u'\\');
}

void RegistryTree::settle()
{
    const auto before = [](const RegistryKey &a, const RegistryKey &b) { return comparePaths(a.path, b.path) < 0; };
    if (!std::is_sorted(keys.begin(), keys.end(), before))
        std::stable_sort(keys.begin(), keys.end(), before);
    std::size_t kept = 0;
    for (std::size_t k = 0; k < keys.size(); ++k) {
        if (kept > 0 && comparePaths(keys[kept - 1].path, keys[k].path) == 0)
            addTo(keys[kept - 1], std::move(keys[k]));
        else if (kept++ != k)
            keys[kept - 1] = std::move(keys[k]);
    }
    keys.resize(kept);
    for (RegistryKey &key : keys)
        settleValues(key.values);
}

} // namespace velmora
