#include "merge/merge_bar.h"

#include "session/translate.h"

#include <QLabel>
#include <QMenu>
#include <QToolButton>

namespace velmora {

namespace {

constexpr int positionMargin = 6;

} // namespace

MergeBar::MergeBar(QWidget *session) : TextBar(session), m_position(new QLabel(this))
{
    merge = add({"compareAction", Velmora::tr("Merge"), QStringLiteral("compare.png"), {}, {}});
    showTextBeside(merge);
    cancel = add({"cancelAction", Velmora::tr("Cancel"), {}, {}, {}});
    settleTouching = add({"settleTouchingAction",
                          Velmora::tr("Settle touching changes line by line"),
                          {},
                          {},
                          Velmora::tr("Changes of different lines are no conflict, even where they touch")});
    settleTouching->setCheckable(true);
    offerBeside(merge, {settleTouching});
    addSeparator();
    addDifferenceSteps();
    previousDifference->setText(Velmora::tr("Previous conflict"));
    nextDifference->setText(Velmora::tr("Next conflict"));
    previousDifference->setToolTip(hintWithKeys(Velmora::tr("Previous conflict"), previousDifference->shortcuts()));
    nextDifference->setToolTip(hintWithKeys(Velmora::tr("Next conflict"), nextDifference->shortcuts()));
    m_position->setObjectName(QStringLiteral("conflictPosition"));
    m_position->setContentsMargins(positionMargin, 0, positionMargin, 0);
    m_position->setToolTip(Velmora::tr("The current conflict, how many there are, and how many are still open"));
    // The buttons behind it keep their places.
    const QString longest = Velmora::tr("Conflict %1 of %2, open: %3").arg(99).arg(99).arg(99);
    m_position->setMinimumWidth(m_position->fontMetrics().horizontalAdvance(longest) + 2 * positionMargin);
    addWidget(m_position);
    addSeparator();
    addTaking();
    addSaving();
    addViewing();
    addFinding();
    addWrapping();
    addBlanks();
    addMatchSteps();
    addZoom();
    previousChange =
        add({"previousChangeAction", Velmora::tr("Previous change"), {}, {Qt::CTRL | Qt::ALT | Qt::Key_Up}, {}});
    nextChange = add({"nextChangeAction", Velmora::tr("Next change"), {}, {Qt::CTRL | Qt::ALT | Qt::Key_Down}, {}});
    switchPane = add({"switchPaneAction", Velmora::tr("Switch to the next text"), {}, {}, {}});
    refreshTheme();
    showMerging(false);
    showMerge(false);
    letKeysWorkInWindow();
}

void MergeBar::addTaking()
{
    takeLeft = add({"takeLeftAction",
                    Velmora::tr("Take the left"),
                    QStringLiteral("take_left.png"),
                    {Qt::CTRL | Qt::Key_1},
                    Velmora::tr("Take the left for the selected changes or the current one")});
    takeBase = add({"takeBaseAction",
                    Velmora::tr("Take the base"),
                    QStringLiteral("take_base.png"),
                    {Qt::CTRL | Qt::Key_2},
                    Velmora::tr("Take the base for the selected changes or the current one")});
    takeRight = add({"takeRightAction",
                     Velmora::tr("Take the right"),
                     QStringLiteral("take_right.png"),
                     {Qt::CTRL | Qt::Key_3},
                     Velmora::tr("Take the right for the selected changes or the current one")});
    takeLeftThenRight =
        add({"takeLeftThenRightAction", Velmora::tr("Take left, then right"), {}, {Qt::CTRL | Qt::Key_4}, {}});
    takeRightThenLeft =
        add({"takeRightThenLeftAction", Velmora::tr("Take right, then left"), {}, {Qt::CTRL | Qt::Key_5}, {}});
    takeLineByLine = add({"takeLineByLineAction",
                          Velmora::tr("Line by line over the base"),
                          {},
                          {Qt::CTRL | Qt::Key_6},
                          Velmora::tr("Settle changes of different lines; lines without one in the base are left out, "
                                      "marked and counted")});
    takeLineByLineForAll =
        add({"takeLineByLineForAllAction", Velmora::tr("Line by line for all open conflicts"), {}, {}, {}});
    takeLeftForAll = add({"takeLeftForAllAction", Velmora::tr("Take the left for all open conflicts"), {}, {}, {}});
    takeBaseForAll = add({"takeBaseForAllAction", Velmora::tr("Take the base for all open conflicts"), {}, {}, {}});
    takeRightForAll = add({"takeRightForAllAction", Velmora::tr("Take the right for all open conflicts"), {}, {}, {}});
    takeLeft->setIconText(Velmora::tr("Left"));
    takeBase->setIconText(Velmora::tr("Base"));
    takeRight->setIconText(Velmora::tr("Right"));
    for (QAction *action : {takeLeft, takeBase, takeRight})
        showTextBeside(action);
    auto *separator = new QAction(this);
    separator->setSeparator(true);
    offerBeside(takeRight, {takeLeftThenRight, takeRightThenLeft, takeLineByLine, separator, takeLeftForAll,
                            takeBaseForAll, takeRightForAll, takeLineByLineForAll});
    addSeparator();
}

void MergeBar::addSaving()
{
    undo = add({"undoAction", Velmora::tr("Undo"), QStringLiteral("undo.png"), {}, {}});
    redo = add({"redoAction", Velmora::tr("Redo"), QStringLiteral("redo.png"), {}, {}});
    save = add({"saveAction",
                Velmora::tr("Save"),
                QStringLiteral("save.png"),
                {QKeySequence(QKeySequence::Save)},
                Velmora::tr("Save the result")});
    saveAs = add({"saveAsAction", Velmora::tr("Save as..."), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_S}, {}});
    saveMarked = add({"saveMarkedAction", Velmora::tr("Save with conflict markers..."), {}, {}, {}});
    offerBeside(save, {saveAs, saveMarked});
    addSeparator();
}

void MergeBar::addViewing()
{
    showBase = add({"showBaseAction",
                    Velmora::tr("Show the base"),
                    QStringLiteral("fit.png"),
                    {Qt::CTRL | Qt::Key_B},
                    Velmora::tr("Show the base between the two versions")});
    showBase->setCheckable(true);
    showBase->setChecked(true);
    showList = add({"showDetailsAction",
                    Velmora::tr("List of changes"),
                    QStringLiteral("log.png"),
                    {},
                    Velmora::tr("Show all changes, what was decided and by whom")});
    showList->setCheckable(true);
    showList->setChecked(true);
    addSeparator();
}

void MergeBar::offerBeside(QAction *action, const QList<QAction *> &more)
{
    auto *button = qobject_cast<QToolButton *>(widgetForAction(action));
    if (!button)
        return;
    auto *menu = new QMenu(button);
    menu->addActions(more);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
}

void MergeBar::showPosition(const Position &position)
{
    QString text;
    if (position.count == 0)
        text = Velmora::tr("No conflicts");
    else if (position.current >= 0)
        text =
            Velmora::tr("Conflict %1 of %2, open: %3").arg(position.current + 1).arg(position.count).arg(position.open);
    else
        text = Velmora::tr("Conflicts: %1, open: %2").arg(position.count).arg(position.open);
    m_position->setText(text);
    const bool some = position.count > 0;
    previousDifference->setEnabled(some);
    nextDifference->setEnabled(some);
    for (QAction *action : {takeLeftForAll, takeBaseForAll, takeRightForAll, takeLineByLineForAll, saveMarked})
        action->setEnabled(position.open > 0);
}

void MergeBar::showMerging(bool running)
{
    merge->setText(running ? Velmora::tr("Cancel") : Velmora::tr("Merge"));
    changeIcon(merge, running ? QStringLiteral("stop.png") : QStringLiteral("compare.png"));
    merge->setToolTip(hintWithKeys(running ? Velmora::tr("Cancel") : Velmora::tr("Merge the texts anew"),
                                   running ? cancel->shortcuts() : merge->shortcuts()));
    cancel->setEnabled(running);
}

void MergeBar::showMerge(bool isThere)
{
    for (QAction *action :
         {takeLeft, takeBase, takeRight, takeLeftThenRight, takeRightThenLeft, takeLineByLine, save, saveAs})
        action->setEnabled(isThere);
    if (!isThere) {
        showPosition({});
        m_position->clear();
        undo->setEnabled(false);
        redo->setEnabled(false);
    }
}

void MergeBar::addTo(QMenu &menu)
{
    menu.addSeparator();
    menu.addActions({takeLeft, takeBase, takeRight, takeLeftThenRight, takeRightThenLeft, takeLineByLine});
    menu.addSeparator();
    menu.addActions({nextDifference, previousDifference, nextChange, previousChange});
    menu.addSeparator();
    menu.addActions({find, goToLine});
    menu.addSeparator();
    menu.addActions({settleTouching, showBase, showList, wrapLines, syntaxColours, showBlanks});
}

} // namespace velmora
