#include "settings/dialogs/grammar_dialog.h"

#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"
#include "settings/dialogs/grammar_boxes.h"

#include <QVBoxLayout>

namespace velmora {

GrammarDialog::GrammarDialog(const TextSessionOptions &options, QWidget *parent)
    : QDialog(parent), m_boxes(new GrammarBoxes)
{
    setWindowTitle(Velmora::tr("Edit Grammar"));
    m_boxes->load(options);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_boxes);
    column->addStretch(1);
    column->addSpacing(12);
    column->addLayout(makeConfirmButtons(*this));
}

void GrammarDialog::store(TextSessionOptions &options) const
{
    m_boxes->store(options);
}

} // namespace velmora
