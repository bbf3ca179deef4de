#pragma once

#include "settings/dialogs/settings_page.h"

class QButtonGroup;
class QCheckBox;
class QSpinBox;

namespace velmora {

/// The tab that says how lines are brought together. A method that nobody knows shows as the standard one, which is how
/// it is compared.
class AlignmentPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit AlignmentPage(QWidget *parent = nullptr);

    void load(const TextSessionOptions &options) override;
    void store(TextSessionOptions &options) const override;

private:
    [[nodiscard]] QLayout *makeTolerance();

    QButtonGroup *m_methods;
    QCheckBox *m_neverAlign;
    QSpinBox *m_tolerance;
    QCheckBox *m_nearby;
};

} // namespace velmora
