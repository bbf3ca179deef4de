#include "filetypes/version/engine/version_compare.h"

#include <algorithm>
#include <array>
#include <vector>

namespace velmora {

namespace {

int order(const FactValue &a, const FactValue &b)
{
    if (a.fact != b.fact)
        return int(a.fact) - int(b.fact);
    return a.item.compare(b.item, Qt::CaseInsensitive);
}

std::vector<const FactValue *> sorted(const ProgramFacts &facts)
{
    std::vector<const FactValue *> values;
    for (const FactValue &value : facts.values)
        values.push_back(&value);
    std::stable_sort(values.begin(), values.end(),
                     [](const FactValue *a, const FactValue *b) { return order(*a, *b) < 0; });
    return values;
}

VersionRow rowOf(const FactValue *left, const FactValue *right)
{
    const FactValue &first = left ? *left : *right;
    VersionRow row{first.fact, first.item};
    if (left)
        row.values.left = left->value, row.offsets.left = left->offset;
    if (right)
        row.values.right = right->value, row.offsets.right = right->offset;
    if (left && right)
        row.status = left->value == right->value ? PairStatus::Same : PairStatus::Changed;
    else
        row.status = left ? PairStatus::LeftOnly : PairStatus::RightOnly;
    return row;
}

} // namespace

const char *versionVerdictName(VersionVerdict verdict)
{
    static constexpr std::array names{"sameFile",   "sameButStamps", "leftNewer",
                                      "rightNewer", "sameVersion",   "unversioned"};
    return names[std::size_t(verdict)];
}

VersionVerdict judgeVersions(const ProgramFacts &left, const ProgramFacts &right)
{
    if (left.fileHash == right.fileHash)
        return VersionVerdict::SameFile;
    if (left.essence == right.essence)
        return VersionVerdict::SameButStamps;
    if (!left.fileVersion || !right.fileVersion)
        return VersionVerdict::Unversioned;
    const std::pair leftVersions(*left.fileVersion, left.productVersion.value_or(0));
    const std::pair rightVersions(*right.fileVersion, right.productVersion.value_or(0));
    if (leftVersions == rightVersions)
        return VersionVerdict::SameVersion;
    return leftVersions > rightVersions ? VersionVerdict::LeftNewer : VersionVerdict::RightNewer;
}

QList<VersionRow> compareVersions(const ProgramFacts &left, const ProgramFacts &right)
{
    const std::vector<const FactValue *> lefts = sorted(left);
    const std::vector<const FactValue *> rights = sorted(right);
    QList<VersionRow> rows;
    auto l = lefts.begin();
    auto r = rights.begin();
    while (l != lefts.end() || r != rights.end()) {
        const int sign = l == lefts.end() ? 1 : r == rights.end() ? -1 : order(**l, **r);
        rows.append(rowOf(sign <= 0 ? *l++ : nullptr, sign >= 0 ? *r++ : nullptr));
    }
    return rows;
}

} // namespace velmora
