#include "filetypes/binary/binary_compare_bar.h"

#include "session/translate.h"

#include <QMenu>
#include <QToolButton>

namespace velmora {

BinaryCompareBar::BinaryCompareBar(QWidget *session) : SessionBar(session)
{
    addCompare();
    addSeparator();
    addDifferenceSteps();
    addSeparator();
    goToOffset = add({"goToOffsetAction",
                      Velmora::tr("Go to offset"),
                      QStringLiteral("goto_line.png"),
                      {Qt::CTRL | Qt::Key_G},
                      Velmora::tr("Go to a place in the file by its offset")});
    swapSides =
        add({"swapAction", Velmora::tr("Swap"), QStringLiteral("swap.png"), {}, Velmora::tr("Swap left and right")});
    addCopies();
    addViewKeys();
    refreshTheme();
    showRunning(false, false);
    letKeysWorkInWindow();
}

void BinaryCompareBar::addCompare()
{
    compare = add({"compareAction", Velmora::tr("Binary compare"), QStringLiteral("compare.png"), {}, {}});
    showTextBeside(compare);
    cancel = add({"cancelAction", Velmora::tr("Cancel"), {}, {}, {}});
    // As wide as it ever is, so that nothing moves when it changes its name.
    QWidget *button = widgetForAction(compare);
    const int usual = button->sizeHint().width();
    showRunning(true, false);
    button->setMinimumWidth(std::max(usual, button->sizeHint().width()));
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

void BinaryCompareBar::showRunning(bool running, bool cancelling)
{
    compare->setText(running ? Velmora::tr("Cancel") : Velmora::tr("Binary compare"));
    compare->setToolTip(hintWithKeys(running ? Velmora::tr("Cancel the comparison") : Velmora::tr("Binary compare"),
                                     running ? cancel->shortcuts() : compare->shortcuts()));
    compare->setEnabled(!cancelling);
    cancel->setEnabled(running && !cancelling);
    changeIcon(compare, running ? QStringLiteral("cancel.png") : QStringLiteral("compare.png"));
}

void BinaryCompareBar::addTo(QMenu &menu) const
{
    menu.addActions({copyHex, copyText, copyArray});
    menu.addSeparator();
    menu.addActions({selectAll, goToOffset});
    menu.addSeparator();
    menu.addActions({previousDifference, nextDifference, switchPane});
    menu.addSeparator();
    menu.addActions({zoomIn, zoomOut, resetZoom});
}

} // namespace velmora
