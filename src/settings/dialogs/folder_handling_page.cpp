#include "settings/dialogs/folder_handling_page.h"

#include "session/translate.h"
#include "settings/dialogs/mask_dialog.h"
#include "settings/dialogs/rule_list_editor.h"

#include <QLabel>
#include <QListView>
#include <QVBoxLayout>

namespace velmora {

QString AlignmentRulesModel::text(const ManualAlignRule &rule) const
{
    return Velmora::tr("%1  <->  %2").arg(rule.left, rule.right);
}

FolderHandlingPage::FolderHandlingPage(QWidget *parent)
    : FolderSettingsPage(parent), m_rules(new AlignmentRulesModel(this))
{
    m_editor = new RuleListEditor(*m_rules, QStringLiteral("alignOverrides"),
                                  {Velmora::tr("Add an alignment override"),
                                   Velmora::tr("Edit the selected alignment override"),
                                   Velmora::tr("Remove the selected alignment override")});
    m_editor->addMoveButtons();
    auto *label = new QLabel(Velmora::tr("Alignment overrides (&G):"));
    label->setBuddy(&m_editor->list());
    auto *explanation =
        new QLabel(Velmora::tr("Each override pairs the names of a folder that match its left mask with the names "
                               "that match its right one, in alphabetical order. \"*\" is any run of characters, \"?\" "
                               "any one."));
    explanation->setWordWrap(true);

    auto *column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(m_editor, 1);
    column->addWidget(explanation);

    connect(m_editor, &RuleListEditor::addRequested, this, &FolderHandlingPage::addRule);
    connect(m_editor, &RuleListEditor::editRequested, this, &FolderHandlingPage::editRule);
    connect(m_rules, &QAbstractItemModel::dataChanged, this, &SettingsPageBase::changed);
    connect(m_rules, &QAbstractItemModel::rowsInserted, this, &SettingsPageBase::changed);
    connect(m_rules, &QAbstractItemModel::rowsRemoved, this, &SettingsPageBase::changed);
    connect(m_rules, &QAbstractItemModel::rowsMoved, this, &SettingsPageBase::changed);
}

void FolderHandlingPage::load(const FolderSessionOptions &options)
{
    m_rules->setRules(options.alignOverrides);
}

void FolderHandlingPage::store(FolderSessionOptions &options) const
{
    options.alignOverrides = m_rules->rules();
}

void FolderHandlingPage::askForRule(const ManualAlignRule &rule, std::function<void(const ManualAlignRule &)> take)
{
    const QList<MaskDialog::Field> fields{
        {Velmora::tr("Left file mask:"), QStringLiteral("alignLeftMask"), rule.left},
        {Velmora::tr("Right file mask:"), QStringLiteral("alignRightMask"), rule.right}};
    auto *dialog = new MaskDialog(Velmora::tr("Alignment override"), MaskSyntax::Plain, fields, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [dialog, take = std::move(take)] {
        const QStringList masks = dialog->masks();
        take({masks[0], masks[1]});
    });
    dialog->open();
}

void FolderHandlingPage::addRule()
{
    askForRule({}, [this](const ManualAlignRule &rule) {
        m_rules->append(rule);
        m_editor->selectRow(m_rules->rowCount() - 1);
    });
}

void FolderHandlingPage::editRule(int row)
{
    askForRule(m_rules->rule(row), [this, row](const ManualAlignRule &rule) { m_rules->setRule(row, rule); });
}

} // namespace velmora
