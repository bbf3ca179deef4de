#pragma once

#include "settings/dialogs/rule_list_model.h"

#include <QString>
#include <QStringList>

namespace velmora {

/// Every occurrence of `find` becomes `with`.
struct ReplacementRule {
    QString find;
    QString with;
};

/// The replacement rules of one side, in the order in which they apply.
class ReplacementRulesModel final : public RuleListModel<ReplacementRule> {
public:
    using Rule = ReplacementRule;
    using RuleListModel::RuleListModel;

    /// A replacement that `with` lacks is empty; one too many is dropped.
    void setTexts(const QStringList &find, const QStringList &with);
    [[nodiscard]] QStringList findTexts() const;
    [[nodiscard]] QStringList replacements() const;

protected:
    [[nodiscard]] QString text(const Rule &rule) const override;
};

} // namespace velmora
