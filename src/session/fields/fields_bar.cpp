#include "session/fields/fields_bar.h"

#include "session/translate.h"

namespace velmora {

FieldsBar::FieldsBar(QWidget *session) : ListBar(session)
{
    addCompare(Velmora::tr("Compare the two sides"));
    addCancel(Velmora::tr("Cancel what is being done"));
    addSwapSides(Velmora::tr("Swap left and right"));
    addSeparator();
    addListCommands();
    refreshTheme();
}

} // namespace velmora
