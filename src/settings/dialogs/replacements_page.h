#pragma once

#include "settings/dialogs/settings_page.h"

namespace velmora {

class ReplacementRulesModel;
class RuleListEditor;

/// The tab with the replacement rules of both sides.
class ReplacementsPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit ReplacementsPage(QWidget *parent = nullptr);

    void load(const TextSessionOptions &options) override;
    void store(TextSessionOptions &options) const override;

private:
    [[nodiscard]] QWidget *makeSide(const QString &title, const QString &prefix, ReplacementRulesModel &rules);
    void addRule(ReplacementRulesModel &rules, RuleListEditor &editor);
    void editRule(ReplacementRulesModel &rules, int row);

    ReplacementRulesModel *m_left;
    ReplacementRulesModel *m_right;
};

} // namespace velmora
