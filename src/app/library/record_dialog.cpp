#include "app/library/record_dialog.h"

#include "app/session_kinds.h"
#include "session/translate.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmora {

namespace {

constexpr int usualWidth = 520;

} // namespace

RecordDialog::RecordDialog(const SessionRecord &record, const QString &title, QWidget *parent)
    : QDialog(parent),
      m_record(record),
      m_form(new QFormLayout),
      m_name(new QLineEdit(record.name, this)),
      m_left(new QLineEdit(record.paths.left, this)),
      m_right(new QLineEdit(record.paths.right, this)),
      m_base(new QLineEdit(record.paths.base, this))
{
    setWindowTitle(title);
    m_name->setObjectName(QStringLiteral("recordName"));
    m_left->setObjectName(QStringLiteral("recordLeft"));
    m_right->setObjectName(QStringLiteral("recordRight"));
    m_base->setObjectName(QStringLiteral("recordBase"));
}

RecordDialog *RecordDialog::forSaving(const SessionRecord &record, QWidget *parent)
{
    auto *dialog = new RecordDialog(record, Velmora::tr("Save session file as"), parent);
    const SessionKindRow *kind = findSessionKind(record.type);
    dialog->m_form->addRow(Velmora::tr("Name:"), dialog->m_name);
    dialog->m_form->addRow(Velmora::tr("Type:"), new QLabel(kind ? Velmora::tr(kind->displayName) : record.type));
    dialog->m_form->addRow(Velmora::tr("Left:"), dialog->m_left);
    dialog->m_form->addRow(Velmora::tr("Right:"), dialog->m_right);
    dialog->m_form->addRow(Velmora::tr("Base:"), dialog->m_base);
    dialog->finishLayout();
    return dialog;
}

RecordDialog *RecordDialog::forEditing(const SessionRecord &record, QWidget *parent)
{
    auto *dialog = new RecordDialog(record, Velmora::tr("Edit session"), parent);
    const SessionKindRow *kind = findSessionKind(record.type);
    dialog->m_form->addRow(Velmora::tr("Name:"), dialog->m_name);
    dialog->m_form->addRow(Velmora::tr("Left:"), dialog->m_left);
    dialog->m_form->addRow(Velmora::tr("Right:"), dialog->m_right);
    if (kind && kind->sides == 3)
        dialog->m_form->addRow(Velmora::tr("Base:"), dialog->m_base);
    else
        dialog->m_base->hide();
    dialog->finishLayout();
    return dialog;
}

SessionRecord RecordDialog::record() const
{
    SessionRecord result = m_record;
    result.name = m_name->text().trimmed();
    result.paths = {
        .left = m_left->text().trimmed(), .right = m_right->text().trimmed(), .base = m_base->text().trimmed()};
    return result;
}

void RecordDialog::finishLayout()
{
    auto *cancel = new QPushButton(Velmora::tr("Cancel"));
    auto *accept = new QPushButton(Velmora::tr("OK"));
    accept->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(accept);
    buttons->addWidget(cancel);
    auto *whole = new QVBoxLayout(this);
    whole->addLayout(m_form);
    whole->addSpacing(8);
    whole->addLayout(buttons);
    resize(usualWidth, sizeHint().height());
}

} // namespace velmora
