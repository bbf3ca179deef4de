#include "settings/dialogs/confirm_buttons.h"

#include "session/translate.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace velmora {

QHBoxLayout *makeConfirmButtons(QDialog &dialog)
{
    auto *cancel = new QPushButton(Velmora::tr("Cancel"), &dialog);
    auto *ok = new QPushButton(Velmora::tr("OK"), &dialog);
    cancel->setObjectName(QStringLiteral("settingsCancel"));
    ok->setObjectName(QStringLiteral("settingsOk"));
    ok->setDefault(true);
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    return buttons;
}

} // namespace velmora
