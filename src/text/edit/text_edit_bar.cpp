#include "text/edit/text_edit_bar.h"

#include "core/visible_name.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "text/edit/recent_texts.h"

#include <QFileInfo>
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
    connect(m_recent, &QMenu::aboutToShow, this, &TextEditBar::fillRecentFiles);
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

void TextEditBar::fillRecentFiles()
{
    m_recent->clear();
    const QStringList files = RecentTexts::load();
    for (const QString &file : files) {
        const QString name = visibleName(QFileInfo(file).fileName());
        QAction *action = m_recent->addAction(QString(name).replace(u'&', QStringLiteral("&&")));
        action->setToolTip(shownPath(file));
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT recentFileChosen(file); });
    }
    if (files.isEmpty()) {
        m_recent->addAction(Velmora::tr("No files were opened yet"))->setEnabled(false);
        return;
    }
    m_recent->addSeparator();
    m_recent->addAction(Velmora::tr("Clear this list"), this, &RecentTexts::clear);
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
