#include "settings/dialogs/replacements_page.h"

#include "session/translate.h"
#include "settings/dialogs/replacement_rule_dialog.h"
#include "settings/dialogs/replacement_rules_model.h"
#include "settings/dialogs/rule_list_editor.h"
#include "settings/options/text_session_options.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace velmora {

ReplacementsPage::ReplacementsPage(QWidget *parent)
    : SettingsPage(parent), m_left(new ReplacementRulesModel(this)), m_right(new ReplacementRulesModel(this))
{
    auto *explanation =
        new QLabel(Velmora::tr("Before lines are compared, each rule replaces every occurrence of its text, in "
                               "the order of the list. The files themselves stay as they are."));
    explanation->setWordWrap(true);
    auto *sides = new QHBoxLayout;
    sides->setSpacing(12);
    sides->addWidget(makeSide(Velmora::tr("&Left"), QStringLiteral("leftReplace"), *m_left), 1);
    sides->addWidget(makeSide(Velmora::tr("&Right"), QStringLiteral("rightReplace"), *m_right), 1);
    auto *column = new QVBoxLayout(this);
    column->addWidget(explanation);
    column->addSpacing(6);
    column->addLayout(sides, 1);
}

void ReplacementsPage::load(const TextSessionOptions &options)
{
    m_left->setTexts(options.leftReplaceFind, options.leftReplaceWith);
    m_right->setTexts(options.rightReplaceFind, options.rightReplaceWith);
}

void ReplacementsPage::store(TextSessionOptions &options) const
{
    options.leftReplaceFind = m_left->findTexts();
    options.leftReplaceWith = m_left->replacements();
    options.rightReplaceFind = m_right->findTexts();
    options.rightReplaceWith = m_right->replacements();
}

QWidget *ReplacementsPage::makeSide(const QString &title, const QString &prefix, ReplacementRulesModel &rules)
{
    auto *editor =
        new RuleListEditor(rules, prefix,
                           {Velmora::tr("Add a replacement rule"), Velmora::tr("Edit the selected replacement rule"),
                            Velmora::tr("Remove the selected replacement rule")});
    editor->addMoveButtons();
    connect(editor, &RuleListEditor::addRequested, this, [this, &rules, editor] { addRule(rules, *editor); });
    connect(editor, &RuleListEditor::editRequested, this, [this, &rules](int row) { editRule(rules, row); });
    auto *side = new QGroupBox(title);
    auto *column = new QVBoxLayout(side);
    column->addWidget(editor);
    return side;
}

void ReplacementsPage::addRule(ReplacementRulesModel &rules, RuleListEditor &editor)
{
    auto *dialog = new ReplacementRuleDialog({}, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [&rules, &editor, dialog] {
        rules.append(dialog->rule());
        editor.selectRow(rules.rowCount() - 1);
    });
    dialog->open();
}

void ReplacementsPage::editRule(ReplacementRulesModel &rules, int row)
{
    auto *dialog = new ReplacementRuleDialog(rules.rule(row), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [&rules, dialog, row] { rules.setRule(row, dialog->rule()); });
    dialog->open();
}

} // namespace velmora
