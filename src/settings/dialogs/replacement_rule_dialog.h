#pragma once

#include "settings/dialogs/replacement_rules_model.h"

#include <QDialog>

class QLineEdit;

namespace velmora {

/// Asks for one replacement rule. Opened with open(); the result counts when `accepted` comes, and has a find text.
class ReplacementRuleDialog final : public QDialog {
    Q_OBJECT
public:
    ReplacementRuleDialog(const ReplacementRulesModel::Rule &rule, QWidget *parent);

    [[nodiscard]] ReplacementRulesModel::Rule rule() const;

private:
    QLineEdit *m_find;
    QLineEdit *m_with;
};

} // namespace velmora
