#include "session/list/list_bar.h"

#include "session/translate.h"

#include <QToolButton>

namespace velmora {

void ListBar::addListCommands()
{
    addDifferenceSteps();
    addSeparator();
    addChoice(
        {{&showAll, {"showAllAction", Velmora::tr("All"), QStringLiteral("all.png"), {}, Velmora::tr("Show all rows")}},
         {&showDifferences,
          {"showDifferencesAction",
           Velmora::tr("Diff"),
           QStringLiteral("diff.png"),
           {},
           Velmora::tr("Show only the rows that differ")}},
         {&showIdentical,
          {"showIdenticalAction",
           Velmora::tr("Same"),
           QStringLiteral("same.png"),
           {},
           Velmora::tr("Show rows that are the same")}}});
    addSeparator();
    copyRows = add({"copyAction",
                    Velmora::tr("Copy"),
                    QStringLiteral("copy.png"),
                    {},
                    Velmora::tr("Copy the selected rows, their columns separated by tabs")});
    showDetails = add({"showDetailsAction",
                       Velmora::tr("Details"),
                       QStringLiteral("info.png"),
                       {QKeySequence(Qt::Key_F4)},
                       Velmora::tr("Show the values of the current row in full")});
    showDetails->setCheckable(true);
    showDetails->setChecked(true);
    focusFilter = add({"focusFilterAction", Velmora::tr("Filter")});
}

void ListBar::resizeEvent(QResizeEvent *event)
{
    fitChoice();
    SessionBar::resizeEvent(event);
}

/// In a narrow bar the pictures alone tell what is shown, rather than that commands are out of sight.
void ListBar::fitChoice()
{
    const auto show = [this](Qt::ToolButtonStyle style) {
        for (QAction *action : {showAll, showDifferences, showIdentical}) {
            if (auto *button = qobject_cast<QToolButton *>(widgetForAction(action)))
                button->setToolButtonStyle(style);
        }
    };
    show(Qt::ToolButtonTextBesideIcon);
    if (sizeHint().width() > width())
        show(Qt::ToolButtonIconOnly);
}

} // namespace velmora
