#pragma once

#include "settings/dialogs/rule_list_model.h"
#include "settings/dialogs/settings_page.h"

class QCheckBox;

namespace velmora {

class FileFormatsModel;
class RuleListEditor;
struct FileFormatGroup;

/// Masks in a list.
class MaskListModel final : public RuleListModel<QString> {
public:
    using RuleListModel::RuleListModel;

protected:
    [[nodiscard]] QString text(const QString &rule) const override { return rule; }
};

/// The tab with the other things that decide which files are shown: exclusion rules, the operating system's own files,
/// and the file formats.
class FolderOtherFiltersPage final : public FolderSettingsPage {
    Q_OBJECT
public:
    explicit FolderOtherFiltersPage(QWidget *parent = nullptr);

    void load(const FolderSessionOptions &options) override;
    void store(FolderSessionOptions &options) const override;

private:
    [[nodiscard]] QWidget *makeExclusions();
    [[nodiscard]] QWidget *makeFormats();
    void askForRule(const QString &rule, std::function<void(const QString &)> take);
    void addFormat();
    void editFormat(int row);
    /// Of row `row`, or of a new one for -1.
    void askForFormat(const FileFormatGroup &group, int row, std::function<void(const FileFormatGroup &)> take);

    MaskListModel *m_exclusions;
    RuleListEditor *m_editor;
    QCheckBox *m_excludeOsFiles;
    QCheckBox *m_showHidden;
    FileFormatsModel *m_formats;
    RuleListEditor *m_formatEditor;
};

} // namespace velmora
