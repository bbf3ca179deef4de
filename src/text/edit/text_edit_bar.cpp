#include "text/edit/text_edit_bar.h"

#include "session/translate.h"

#include <QMenu>
#include <QToolButton>

namespace velmora {

TextEditBar::TextEditBar(QWidget *session) : TextBar(session), m_recent(new QMenu(this))
{
    newText = add({"newTextAction",
                   Velmora::tr("New text"),
                   QStringLiteral("new.png"),
                   {QKeySequence::New},
                   Velmora::tr("Begin an empty text in a tab of its own")});
    open = add({"openTextAction",
                Velmora::tr("Open..."),
                QStringLiteral("open.png"),
                {QKeySequence::Open},
                Velmora::tr("Open a text file")});
    m_recent->setToolTipsVisible(true);
    offerBeside(open, m_recent);
    save = add({"saveAction", Velmora::tr("Save"), QStringLiteral("save.png"), {QKeySequence::Save}, {}});
    saveAs = add({"saveAsAction", Velmora::tr("Save as..."), {}, {Qt::Key_F12, Qt::CTRL | Qt::SHIFT | Qt::Key_S}, {}});
    auto *saving = new QMenu(this);
    saving->addAction(saveAs);
    offerBeside(save, saving);
    reload = add({"reloadAction",
                  Velmora::tr("Reload"),
                  QStringLiteral("reload.png"),
                  {Qt::CTRL | Qt::Key_F5},
                  Velmora::tr("Read the file again")});
    addSeparator();
    undo = add({"undoAction",
                Velmora::tr("Undo"),
                QStringLiteral("undo.png"),
                {},
                hintWithKeys(Velmora::tr("Undo"), {QKeySequence(QKeySequence::Undo)})});
    redo = add({"redoAction",
                Velmora::tr("Redo"),
                QStringLiteral("redo.png"),
                {},
                hintWithKeys(Velmora::tr("Redo"), {QKeySequence(QKeySequence::Redo)})});
    addSeparator();
    addFinding();
    addWrapping();
    addBlanks();
    addSeparator();
    compareWith = add({"compareWithAction",
                       Velmora::tr("Compare with..."),
                       QStringLiteral("compare.png"),
                       {Qt::Key_F5},
                       Velmora::tr("Choose another file and compare this one with it")});
    showTextBeside(compareWith);
    addMatchSteps();
    addZoom();

    refreshTheme();
    letKeysWorkInWindow();
}

void TextEditBar::offerBeside(QAction *action, QMenu *menu)
{
    // Not the action's own menu, as which it would be in the context menu, too.
    if (auto *button = qobject_cast<QToolButton *>(widgetForAction(action))) {
        button->setMenu(menu);
        button->setPopupMode(QToolButton::MenuButtonPopup);
    }
}

void TextEditBar::addTo(QMenu &menu)
{
    menu.addSeparator();
    menu.addActions({undo, redo});
    menu.addSeparator();
    menu.addActions({save, saveAs, reload, compareWith});
    menu.addSeparator();
    menu.addActions({find, replace, goToLine});
    menu.addSeparator();
    menu.addActions({wrapLines, syntaxColours, showBlanks, zoomIn, zoomOut, resetZoom});
}

} // namespace velmora
