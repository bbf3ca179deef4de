#include "session/fields/fields_bar.h"

#include "session/translate.h"

namespace velmora {

FieldsBar::FieldsBar(QWidget *session) : ListBar(session)
{
    compare = add({"compareAction",
                   Velmora::tr("Compare"),
                   QStringLiteral("compare.png"),
                   {Qt::CTRL | Qt::Key_Return},
                   Velmora::tr("Compare the two sides")});
    showTextBeside(compare);
    cancel = add({"cancelAction",
                  Velmora::tr("Cancel"),
                  QStringLiteral("stop.png"),
                  {},
                  Velmora::tr("Cancel what is being done")});
    swapSides =
        add({"swapAction", Velmora::tr("Swap"), QStringLiteral("swap.png"), {}, Velmora::tr("Swap left and right")});
    addSeparator();
    addListCommands();
    cancel->setEnabled(false);
    refreshTheme();
}

} // namespace velmora
