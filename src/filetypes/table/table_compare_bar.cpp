#include "filetypes/table/table_compare_bar.h"

#include "session/translate.h"

#include <QMenu>

namespace velmora {

TableCompareBar::TableCompareBar(QWidget *session) : SessionBar(session)
{
    addCompareOrCancel(Velmora::tr("Table compare"), QStringLiteral("play.png"));
    addSeparator();
    addDifferenceSteps();
    addSeparator();
    addFilters();
    addSeparator();
    addSwapSides(Velmora::tr("Swap left and right"));
    exportReport = add({"exportAction",
                        Velmora::tr("Report"),
                        QStringLiteral("report.png"),
                        {},
                        Velmora::tr("Save the rows that differ as HTML or CSV")});
    addSeparator();
    find = add({"findAction",
                Velmora::tr("Find"),
                QStringLiteral("find.png"),
                {},
                Velmora::tr("Find text in the cells of both tables")});
    chooseColumns = add({"settingsAction",
                         Velmora::tr("Columns"),
                         QStringLiteral("settings.png"),
                         {},
                         Velmora::tr("Choose keys, rules, and which columns are compared and shown")});
    showCard = add({"showDetailsAction",
                    Velmora::tr("Row"),
                    QStringLiteral("info.png"),
                    {},
                    Velmora::tr("Show all values of the current row below each other")});
    showCard->setCheckable(true);
    findNext = add({"findNextAction", Velmora::tr("Next match"), {}, {Qt::Key_F3}, {}});
    findPrevious = add({"findPreviousAction", Velmora::tr("Previous match"), {}, {Qt::SHIFT | Qt::Key_F3}, {}});
    copyRows = add({"copyAction", Velmora::tr("Copy rows as CSV"), {}, {}, {}});
    columnsByName = add({"columnsByNameAction", Velmora::tr("Match columns by name"), {}, {}, {}});
    columnsByName->setCheckable(true);
    switchPane = add({"switchPaneAction", Velmora::tr("Switch to the other side"), {}, {}, {}});
    refreshTheme();
    letKeysWorkInWindow();
}

void TableCompareBar::addFilters()
{
    addChoice(
        {{&showAll, {"showAllAction", Velmora::tr("All"), QStringLiteral("all.png"), {}, Velmora::tr("Show all rows")}},
         {&showDifferences,
          {"showDifferencesAction",
           Velmora::tr("Diff"),
           QStringLiteral("diff.png"),
           {},
           Velmora::tr("Show rows that differ")}},
         {&showIdentical,
          {"showIdenticalAction",
           Velmora::tr("Same"),
           QStringLiteral("same.png"),
           {},
           Velmora::tr("Show rows that are the same")}}});
}

void TableCompareBar::addTo(QMenu &menu) const
{
    menu.addActions({copyRows, exportReport, find});
    menu.addSeparator();
    menu.addActions({showCard, chooseColumns});
    menu.addSeparator();
    menu.addActions({previousDifference, nextDifference, switchPane});
    menu.addSeparator();
    menu.addActions({showAll, showDifferences, showIdentical});
    menu.addSeparator();
    menu.addAction(columnsByName);
}

} // namespace velmora
