#pragma once

#include "filetypes/table/engine/column_rule.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace velmora {

/// Asks for the rule of a column, but for whether it is compared at all.
class RuleEditor final : public QWidget {
    Q_OBJECT
public:
    explicit RuleEditor(QWidget *parent = nullptr);

    [[nodiscard]] ColumnRule rule() const;
    /// Does not tell of a change.
    void setRule(const ColumnRule &rule);

Q_SIGNALS:
    void changed();

private:
    void showMeaning();

    QComboBox *m_meaning;
    QLineEdit *m_tolerance;
    QComboBox *m_bound;
    QCheckBox *m_case;
    QCheckBox *m_space;
};

} // namespace velmora
