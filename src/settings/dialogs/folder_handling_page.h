#pragma once

#include "settings/dialogs/rule_list_model.h"
#include "settings/dialogs/settings_page.h"
#include "settings/options/folder_session_options.h"

namespace velmora {

class RuleListEditor;

/// The alignment overrides of a comparison, in the order in which they apply.
class AlignmentRulesModel final : public RuleListModel<ManualAlignRule> {
public:
    using RuleListModel::RuleListModel;

protected:
    [[nodiscard]] QString text(const ManualAlignRule &rule) const override;
};

/// The tab with the alignment overrides, which pair files and folders of different names.
class FolderHandlingPage final : public FolderSettingsPage {
    Q_OBJECT
public:
    explicit FolderHandlingPage(QWidget *parent = nullptr);

    void load(const FolderSessionOptions &options) override;
    void store(FolderSessionOptions &options) const override;

private:
    void askForRule(const ManualAlignRule &rule, std::function<void(const ManualAlignRule &)> take);
    void addRule();
    void editRule(int row);

    AlignmentRulesModel *m_rules;
    RuleListEditor *m_editor;
};

} // namespace velmora
