#include "filetypes/registry/registry_preview.h"

#include "filetypes/registry/engine/reg_writer.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QBoxLayout>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringDecoder>

namespace velmora {

RegistryPreview::RegistryPreview(const RegistryTree &patch, const QString &place, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(Velmora::tr("Write to the registry"));
    auto *heading = new QLabel(Velmora::tr("This is going to be written to the registry of this system, below %1. What "
                                           "is there now is kept in a .reg file before.")
                                   .arg(place),
                               this);
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    auto *text = new QPlainTextEdit(this);
    text->setObjectName(QStringLiteral("registryPreview"));
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setPlainText(QStringDecoder(QStringDecoder::Utf16LE).decode(registryFile(patch)));
    QHBoxLayout *buttons = makeConfirmButtons(*this);
    auto *write = findChild<QPushButton *>(QStringLiteral("settingsOk"));
    write->setText(Velmora::tr("Keep and write..."));
    auto *column = new QVBoxLayout(this);
    column->addWidget(heading);
    column->addWidget(text, 1);
    column->addLayout(buttons);
    resize(640, 480);
}

} // namespace velmora
