#include "text/text_compare_bar.h"

#include "session/translate.h"

#include <QActionGroup>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QToolButton>

namespace velmora {

TextCompareBar::TextCompareBar(QWidget *session) : TextBar(session), m_position(new QLabel(this))
{
    addCompareOrCancel(Velmora::tr("Compare"), QStringLiteral("compare.png"));
    reload = add({"reloadAction",
                  Velmora::tr("Reload"),
                  QStringLiteral("reload.png"),
                  {Qt::CTRL | Qt::Key_F5},
                  Velmora::tr("Reload both sides from disk")});
    addSeparator();
    addDifferenceSteps();
    addPosition();
    addSeparator();
    addViews();
    addSeparator();
    addEditing();
    addSeparator();
    addFinding();
    addWrapping();
    addLineDetail();
    addBlanks();
    addSeparator();
    addFileCommands();
    addMatchSteps();
    switchPane = add({"switchPaneAction", Velmora::tr("Switch to the other side"), {}, {}, {}});
    addZoom();
    addLineCommands();
    refreshTheme();
    showPosition({});
    letKeysWorkInWindow();
}

void TextCompareBar::addPosition()
{
    m_position->setObjectName(QStringLiteral("differencePosition"));
    m_position->setContentsMargins(6, 0, 6, 0);
    m_position->setToolTip(Velmora::tr("The current difference block, and how many there are"));
    addWidget(m_position);
}

void TextCompareBar::addViews()
{
    addChoice({{&showAll,
                {"showAllAction", Velmora::tr("All"), QStringLiteral("all.png"), {}, Velmora::tr("Show all lines")}},
               {&showDifferences,
                {"showDifferencesAction",
                 Velmora::tr("Differences"),
                 QStringLiteral("diff.png"),
                 {},
                 Velmora::tr("Show lines that differ")}},
               {&showIdentical,
                {"showIdenticalAction",
                 Velmora::tr("Identical"),
                 QStringLiteral("same.png"),
                 {},
                 Velmora::tr("Show lines that are identical")}}});
    ignoreMinor = add({"ignoreMinorAction",
                       Velmora::tr("Ignore unimportant differences"),
                       QStringLiteral("minor.png"),
                       {Qt::ALT | Qt::Key_M},
                       Velmora::tr("Treat lines with unimportant differences as equal: pass over them and do not "
                                   "count them")});
    ignoreMinor->setCheckable(true);
    ignoreMinor->setChecked(true);
}

void TextCompareBar::addEditing()
{
    edit = add({"editAction", Velmora::tr("Edit"), QStringLiteral("edit.png"), {Qt::CTRL | Qt::Key_E}, {}});
    edit->setCheckable(true);
    showEditing(false);
    copyToRight = add({"copyToRightAction",
                       Velmora::tr("Copy to the right"),
                       QStringLiteral("copy_right.png"),
                       {Qt::CTRL | Qt::ALT | Qt::Key_Right},
                       Velmora::tr("Copy the selected lines or the current difference to the right side")});
    copyToLeft = add({"copyToLeftAction",
                      Velmora::tr("Copy to the left"),
                      QStringLiteral("copy_left.png"),
                      {Qt::CTRL | Qt::ALT | Qt::Key_Left},
                      Velmora::tr("Copy the selected lines or the current difference to the left side")});
    addSaving();
}

void TextCompareBar::addLineDetail()
{
    lineDetail = add({"lineDetailAction",
                      Velmora::tr("Line details"),
                      QStringLiteral("align.png"),
                      {},
                      Velmora::tr("Show the two current lines one above the other")});
    lineDetail->setCheckable(true);
}

void TextCompareBar::addFileCommands()
{
    addSwapSides(Velmora::tr("Swap left and right"));
    exportReport = add({"exportAction",
                        Velmora::tr("Report"),
                        QStringLiteral("report.png"),
                        {},
                        Velmora::tr("Export an HTML report of the differences")});
    settings = add({"settingsAction",
                    Velmora::tr("Session settings"),
                    QStringLiteral("settings.png"),
                    {},
                    Velmora::tr("What counts as a difference, formats, alignment and replacements")});
}

void TextCompareBar::addLineCommands()
{
    copyPatch = add({"copyPatchAction",
                     Velmora::tr("Copy as unified diff"),
                     {},
                     {Qt::CTRL | Qt::SHIFT | Qt::Key_C},
                     Velmora::tr("Copy the differences of the selected lines, or all, as a unified diff")});
    takeClipboard = add({"takeClipboardAction",
                         Velmora::tr("Compare the clipboard's text as this side"),
                         {},
                         {Qt::CTRL | Qt::SHIFT | Qt::Key_V},
                         {}});
    alignLines = add({"alignLinesAction",
                      Velmora::tr("Align with..."),
                      {},
                      {Qt::Key_F7},
                      Velmora::tr("Choose a line on each side, which are compared with each other from then on")});
    releaseLines = add({"releaseLinesAction", Velmora::tr("Undo this alignment"), {}, {Qt::SHIFT | Qt::Key_F7}, {}});
    releaseAllLines = add({"releaseAllLinesAction", Velmora::tr("Undo all alignments"), {}, {}, {}});
    addContextLines();
}

void TextCompareBar::addSaving()
{
    saveLeft = add({"saveLeftAction", Velmora::tr("Save left"), QStringLiteral("save.png"), {}, {}});
    saveRight = add({"saveRightAction", Velmora::tr("Save right"), QStringLiteral("save.png"), {}, {}});
    save = add({"saveAction", Velmora::tr("Save this side"), {}, {QKeySequence::Save}, {}});
    saveAs = add({"saveAsAction", Velmora::tr("Save this side as..."), {}, {Qt::Key_F12}, {}});
    saveAll = add({"saveAllAction", Velmora::tr("Save all"), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_S}, {}});
    saveLeftAs = add({"saveLeftAsAction", Velmora::tr("Save left as..."), {}, {}, {}});
    saveRightAs = add({"saveRightAsAction", Velmora::tr("Save right as..."), {}, {}, {}});
    for (const auto &[button, other] : {std::pair(saveLeft, saveLeftAs), std::pair(saveRight, saveRightAs)}) {
        auto *menu = new QMenu(this);
        menu->addActions({other, saveAll});
        offerBeside(button, menu);
    }
}

void TextCompareBar::offerBeside(QAction *action, QMenu *menu)
{
    action->setMenu(menu);
    if (auto *button = qobject_cast<QToolButton *>(widgetForAction(action)))
        button->setPopupMode(QToolButton::MenuButtonPopup);
}

void TextCompareBar::addContextLines()
{
    contextLines = new QActionGroup(this);
    for (const int lines : {0, 1, 3, 5, 10, 25}) {
        QAction *action = contextLines->addAction(QLocale().toString(lines));
        action->setCheckable(true);
        action->setData(lines);
    }
}

void TextCompareBar::showContextLines(int lines)
{
    const QList<QAction *> actions = contextLines->actions();
    for (QAction *action : actions)
        action->setChecked(action->data().toInt() == lines);
}

void TextCompareBar::showEditing(bool enabled)
{
    edit->setChecked(enabled);
    edit->setToolTip(enabled ? Velmora::tr("Editing enabled — click to lock text panes")
                             : hintWithKeys(Velmora::tr("Enable editing left and right text"), edit->shortcuts()));
}

void TextCompareBar::addTo(QMenu &menu, const Alignments &alignments)
{
    menu.addSeparator();
    menu.addActions({edit, copyToRight, copyToLeft});
    menu.addSeparator();
    menu.addActions({save, saveAs, saveAll});
    menu.addSeparator();
    menu.addActions({previousDifference, nextDifference, switchPane});
    menu.addSeparator();
    menu.addActions({find, replace, goToLine});
    menu.addAction(alignLines);
    if (alignments.here)
        menu.addAction(releaseLines);
    if (alignments.any)
        menu.addAction(releaseAllLines);
    menu.addSeparator();
    menu.addActions({wrapLines, syntaxColours, showBlanks, lineDetail, ignoreMinor});
    QMenu *context = menu.addMenu(Velmora::tr("Equal lines around differences"));
    context->addActions(contextLines->actions());
    menu.addActions({zoomIn, zoomOut, resetZoom});
}

void TextCompareBar::showPosition(const Position &position)
{
    m_position->setText(Velmora::tr("Diff %1/%2").arg(position.current + 1).arg(position.count));
    previousDifference->setEnabled(position.hasPrevious);
    nextDifference->setEnabled(position.hasNext);
}

} // namespace velmora
