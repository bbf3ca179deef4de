#include "filetypes/binary/binary_compare_bar.h"

#include "session/translate.h"

#include <QMenu>

namespace velmora {

BinaryCompareBar::BinaryCompareBar(QWidget *session) : SessionBar(session)
{
    addCompareOrCancel(Velmora::tr("Binary compare"), QStringLiteral("compare.png"));
    addSeparator();
    addDifferenceSteps();
    addSeparator();
    addAlignment();
    addSeparator();
    find = add({"findAction",
                Velmora::tr("Find"),
                QStringLiteral("find.png"),
                {},
                Velmora::tr("Find bytes or text in the side that the caret is in")});
    findNext = add({"findNextAction", Velmora::tr("Next match"), {}, {Qt::Key_F3}, {}});
    findPrevious = add({"findPreviousAction", Velmora::tr("Previous match"), {}, {Qt::SHIFT | Qt::Key_F3}, {}});
    goToOffset = add({"goToOffsetAction",
                      Velmora::tr("Go to offset"),
                      QStringLiteral("goto_line.png"),
                      {Qt::CTRL | Qt::Key_G},
                      Velmora::tr("Go to a place in the file by its offset")});
    addSeparator();
    addPanels();
    addSeparator();
    addSwapSides(Velmora::tr("Swap left and right"));
    addCopies();
    addViewKeys();
    refreshTheme();
    letKeysWorkInWindow();
}

void BinaryCompareBar::addAlignment()
{
    align = add({"alignAction",
                 Velmora::tr("Align"),
                 QStringLiteral("align.png"),
                 {Qt::Key_F7},
                 Velmora::tr("Find bytes again that have moved, behind others that were inserted or deleted")});
    align->setCheckable(true);
    showTextBeside(align);
    showStarts = add({"showStartsAction",
                      Velmora::tr("Shift the sides"),
                      QStringLiteral("link.png"),
                      {Qt::SHIFT | Qt::Key_F7},
                      Velmora::tr("Choose the offsets from which on the sides are compared")});
    showStarts->setCheckable(true);
    startHere =
        add({"startHereAction", Velmora::tr("Compare this side from here on"), {}, {Qt::CTRL | Qt::Key_F7}, {}});
}

void BinaryCompareBar::addPanels()
{
    showList = add({"showListAction",
                    Velmora::tr("List of differences"),
                    QStringLiteral("log.png"),
                    {Qt::CTRL | Qt::Key_L},
                    Velmora::tr("Show the ranges that differ as a list")});
    showValues = add({"showDetailsAction",
                      Velmora::tr("Values"),
                      QStringLiteral("info.png"),
                      {},
                      Velmora::tr("Show what the bytes at the caret mean as numbers, times and characters")});
    for (QAction *panel : {showList, showValues})
        panel->setCheckable(true);
}

void BinaryCompareBar::addCopies()
{
    copyHex = add({"copyAction", Velmora::tr("Copy as hex"), {}, {}, {}});
    copyText = add({"copyTextAction", Velmora::tr("Copy as text"), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_C}, {}});
    copyArray = add({"copyArrayAction", Velmora::tr("Copy as C array"), {}, {}, {}});
    selectAll = add({"selectAllAction", Velmora::tr("Select all"), {}, {QKeySequence::SelectAll}, {}});
}

void BinaryCompareBar::addViewKeys()
{
    switchPane = add({"switchPaneAction", Velmora::tr("Switch to the other side"), {}, {}, {}});
    zoomIn =
        add({"zoomInAction", Velmora::tr("Larger text"), {}, {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, {}});
    zoomOut = add({"zoomOutAction", Velmora::tr("Smaller text"), {}, {Qt::CTRL | Qt::Key_Minus}, {}});
    resetZoom = add({"resetZoomAction", Velmora::tr("Usual text size"), {}, {Qt::CTRL | Qt::Key_0}, {}});
}

void BinaryCompareBar::addTo(QMenu &menu) const
{
    menu.addActions({copyHex, copyText, copyArray});
    menu.addSeparator();
    menu.addActions({selectAll, find, goToOffset});
    menu.addSeparator();
    menu.addActions({startHere, align});
    menu.addSeparator();
    menu.addActions({previousDifference, nextDifference, switchPane});
    menu.addSeparator();
    menu.addActions({zoomIn, zoomOut, resetZoom});
}

} // namespace velmora
