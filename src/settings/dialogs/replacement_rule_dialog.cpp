#include "settings/dialogs/replacement_rule_dialog.h"

#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace velmora {

namespace {

constexpr int usualWidth = 440;

} // namespace

ReplacementRuleDialog::ReplacementRuleDialog(const ReplacementRulesModel::Rule &rule, QWidget *parent)
    : QDialog(parent), m_find(new QLineEdit(rule.find)), m_with(new QLineEdit(rule.with))
{
    setWindowTitle(Velmora::tr("Replacement rule"));
    m_find->setObjectName(QStringLiteral("replacementFind"));
    m_with->setObjectName(QStringLiteral("replacementWith"));

    auto *form = new QFormLayout;
    form->addRow(Velmora::tr("&Find text:"), m_find);
    form->addRow(Velmora::tr("&Replace with:"), m_with);
    auto *column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addStretch(1);
    column->addSpacing(12);
    column->addLayout(makeConfirmButtons(*this));

    auto *ok = findChild<QPushButton *>(QStringLiteral("settingsOk"));
    ok->setEnabled(!rule.find.isEmpty());
    connect(m_find, &QLineEdit::textChanged, ok, [ok](const QString &text) { ok->setEnabled(!text.isEmpty()); });
    m_find->selectAll();
    resize(usualWidth, sizeHint().height());
}

ReplacementRulesModel::Rule ReplacementRuleDialog::rule() const
{
    return {m_find->text(), m_with->text()};
}

} // namespace velmora
