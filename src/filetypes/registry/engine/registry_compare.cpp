#include "filetypes/registry/engine/registry_compare.h"

#include "filetypes/registry/engine/registry_noise.h"

namespace velmora {

namespace {

PairStatus statusOf(bool onLeft, bool onRight, bool same)
{
    if (onLeft && onRight)
        return same ? PairStatus::Same : PairStatus::Changed;
    return onLeft ? PairStatus::LeftOnly : PairStatus::RightOnly;
}

class Comparer {
public:
    explicit Comparer(RegistryComparison &comparison) : m_comparison(comparison) {}

    void run();

private:
    void addKey(qint32 left, qint32 right);
    void addValues(const RegistryKey *left, const RegistryKey *right, Sides<qint32> keys);
    [[nodiscard]] const RegistryKey *at(Side side, qint32 number) const
    {
        return number < 0 ? nullptr : &m_comparison.trees[side].keys[std::size_t(number)];
    }

    RegistryComparison &m_comparison;
};

void Comparer::run()
{
    const auto &lefts = m_comparison.trees.left.keys;
    const auto &rights = m_comparison.trees.right.keys;
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < lefts.size() || r < rights.size()) {
        const int order = l == lefts.size() ? 1 : r == rights.size() ? -1 : comparePaths(lefts[l].path, rights[r].path);
        const qint32 left = order <= 0 ? qint32(l++) : -1;
        addKey(left, order >= 0 ? qint32(r++) : -1);
    }
}

void Comparer::addKey(qint32 left, qint32 right)
{
    const RegistryKey *leftKey = at(Side::Left, left);
    const RegistryKey *rightKey = at(Side::Right, right);
    const qsizetype first = qsizetype(m_comparison.rows.size());
    const bool leftDeletes = leftKey && leftKey->isDeletion;
    const bool rightDeletes = rightKey && rightKey->isDeletion;
    if (!leftKey || !rightKey || leftDeletes || rightDeletes)
        m_comparison.rows.push_back(
            {{left, right}, {-1, -1}, statusOf(leftKey, rightKey, leftDeletes == rightDeletes), false});
    addValues(leftKey, rightKey, {left, right});
    m_comparison.keys.push_back({{left, right}, first, qsizetype(m_comparison.rows.size()) - first, {}});
}

void Comparer::addValues(const RegistryKey *left, const RegistryKey *right, Sides<qint32> keys)
{
    static const std::vector<RegistryValue> none;
    const std::vector<RegistryValue> &lefts = left ? left->values : none;
    const std::vector<RegistryValue> &rights = right ? right->values : none;
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < lefts.size() || r < rights.size()) {
        const int order = l == lefts.size() ? 1 : r == rights.size() ? -1 : compareNames(lefts[l].name, rights[r].name);
        const bool isSame = order == 0 && lefts[l].holdsSame(rights[r]);
        const Sides<qint32> values{order <= 0 ? qint32(l++) : -1, order >= 0 ? qint32(r++) : -1};
        m_comparison.rows.push_back({keys, values, statusOf(order <= 0, order >= 0, isSame), false});
    }
}

} // namespace

const RegistryKey &RegistryComparison::key(const RegistryKeyPair &pair) const
{
    const Side side = pair.keys.left >= 0 ? Side::Left : Side::Right;
    return trees[side].keys[std::size_t(pair.keys[side])];
}

const RegistryValue *RegistryComparison::value(const RegistryRow &row, Side side) const
{
    return row.values[side] < 0 ? nullptr
                                : &trees[side].keys[std::size_t(row.keys[side])].values[std::size_t(row.values[side])];
}

QString RegistryComparison::name(const RegistryRow &row) const
{
    const RegistryValue *left = value(row, Side::Left);
    const RegistryValue *known = left ? left : value(row, Side::Right);
    return known ? known->name : QString();
}

const QString &RegistryComparison::path(const RegistryRow &row) const
{
    const Side side = row.keys.left >= 0 ? Side::Left : Side::Right;
    return trees[side].keys[std::size_t(row.keys[side])].path;
}

RegistryComparison compareRegistry(RegistryTree left, RegistryTree right, const RegistryNoise &noise)
{
    RegistryComparison comparison;
    comparison.trees = {std::move(left), std::move(right)};
    Comparer(comparison).run();
    judgeNoise(comparison, noise);
    return comparison;
}

void judgeNoise(RegistryComparison &comparison, const RegistryNoise &noise)
{
    comparison.counts = {};
    comparison.noise = 0;
    for (RegistryKeyPair &pair : comparison.keys) {
        pair.counts = {};
        for (qsizetype k = pair.firstRow; k < pair.firstRow + pair.rowCount; ++k) {
            RegistryRow &row = comparison.rows[std::size_t(k)];
            row.isNoise = row.status != PairStatus::Same && noise.holds(comparison.path(row), comparison.name(row));
            if (row.isNoise) {
                ++comparison.noise;
                continue;
            }
            pair.counts.add(row.status);
            comparison.counts.add(row.status);
        }
    }
}

} // namespace velmora
