#include "filetypes/registry/registry_bar.h"

#include "session/translate.h"

#include <QMenu>
#include <QToolButton>

namespace velmora {

RegistryBar::RegistryBar(QWidget *session) : FieldsBar(session)
{
    addSeparator();
    noise = add({"noiseAction",
                 Velmora::tr("Noise..."),
                 QStringLiteral("filter.png"),
                 {Qt::CTRL | Qt::SHIFT | Qt::Key_N},
                 Velmora::tr("Choose what changes all the time and is left out")});
    encoding = addMenu({"encodingAction",
                        Velmora::tr("Encoding"),
                        QStringLiteral("file.png"),
                        {},
                        Velmora::tr("Choose the code page of files that are not in Unicode")},
                       new QMenu(this));
    searchAllKeys = add({"searchAllKeysAction",
                         Velmora::tr("Search all keys"),
                         {},
                         {Qt::CTRL | Qt::SHIFT | Qt::Key_F},
                         Velmora::tr("Show the rows of all keys that hold the words of the filter")});
    searchAllKeys->setEnabled(false);
    addSaving();
    refreshTheme();
}

void RegistryBar::addSaving()
{
    const auto command = [this](const char *name, const QString &text, const QString &hint) {
        QAction *action = add({name, text, {}, {}, hint});
        action->setEnabled(false);
        return action;
    };
    savePatch = command("savePatchAction", Velmora::tr("Save what makes left into right..."),
                        Velmora::tr("Write a .reg file with all that differs, noise left out"));
    saveReturn = command("saveReturnAction", Velmora::tr("Save what makes right into left..."),
                         Velmora::tr("Write a .reg file with the way back"));
    saveLeft = command("saveLeftAction", Velmora::tr("Save left side..."),
                       Velmora::tr("Write the whole left side as a .reg file"));
    saveRight = command("saveRightAction", Velmora::tr("Save right side..."),
                        Velmora::tr("Write the whole right side as a .reg file"));
    writeLeft = command("writeLeftAction", Velmora::tr("Write right to the left key..."),
                        Velmora::tr("Make a live key at the left like the right side, after a look at what that "
                                    "writes"));
    writeRight = command("writeRightAction", Velmora::tr("Write left to the right key..."),
                         Velmora::tr("Make a live key at the right like the left side, after a look at what that "
                                     "writes"));
    auto *menu = new QMenu(this);
    menu->addActions({savePatch, saveReturn});
    menu->addSeparator();
    menu->addActions({saveLeft, saveRight});
    menu->addSeparator();
    menu->addActions({writeLeft, writeRight});
    menu->setToolTipsVisible(true);
    addMenu({"saveMenuAction",
             Velmora::tr("Save"),
             QStringLiteral("save.png"),
             {},
             Velmora::tr("Save sides, or what makes one into the other")},
            menu);
}

QAction *RegistryBar::addMenu(const Look &look, QMenu *menu)
{
    QAction *action = add(look);
    action->setMenu(menu);
    if (auto *button = qobject_cast<QToolButton *>(widgetForAction(action)))
        button->setPopupMode(QToolButton::InstantPopup);
    return action;
}

} // namespace velmora
