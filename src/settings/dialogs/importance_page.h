#pragma once

#include "settings/dialogs/settings_page.h"

class QCheckBox;
class QPushButton;
class QStringListModel;

namespace velmora {

class GrammarBoxes;
class RuleListEditor;

/// The tab that says which differences matter: presets, grammar elements, lines as a whole, unimportant texts, and the
/// files that carry these rules from one program to another.
class ImportancePage final : public SettingsPage {
    Q_OBJECT
public:
    explicit ImportancePage(QWidget *parent = nullptr);

    void load(const TextSessionOptions &options) override;
    void store(TextSessionOptions &options) const override;

Q_SIGNALS:
    /// A person wants the preset of this name, which concerns other tabs, too.
    void presetChosen(const QString &name);

private:
    [[nodiscard]] QPushButton *makePresetButton();
    [[nodiscard]] QPushButton *makeGrammarButton();
    [[nodiscard]] QPushButton *makeClipboardButton();
    /// The line of what sets many rules at once.
    [[nodiscard]] QLayout *makeSources();
    void editGrammar();
    void addUnimportant();
    void editUnimportant(int row);
    void copyUnimportant();
    void pasteUnimportant();
    void importRules();
    void exportRules();

    GrammarBoxes *m_grammar;
    QCheckBox *m_orphans;
    QCheckBox *m_lineEndings;
    QCheckBox *m_blankLines;
    QStringListModel *m_unimportant;
    RuleListEditor *m_unimportantEditor;
};

} // namespace velmora
