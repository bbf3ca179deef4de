#pragma once

#include "folder/operations/plan_entries.h"

#include <QSet>

namespace velmora {

/// Copies or moves a selection into a folder that no comparison knows. Used for one plan; the input must outlive it.
class PlacePlan {
public:
    /// `kind` is `Copy` or `Move`.
    PlacePlan(const PlanInput &input, Side source, const QString &destination, OperationKind kind, IfPresent ifPresent);

    [[nodiscard]] OperationPlan build(const PlanSelection &selection);

private:
    void take(std::size_t index, const std::vector<char> &marks);
    void append(const PlanEntry &entry, const QString &target);

    PlanEntries m_entries;
    Side m_source;
    OperationKind m_kind;
    bool m_mayReplace;
    OperationPlan m_plan;
    QList<OperationStep> m_deletions;
    std::vector<QString> m_targets; ///< of each entry; empty: not taken
    QSet<QString> m_names;
};

} // namespace velmora
