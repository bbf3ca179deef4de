#include "app/window/main_menu.h"

#include "app/help/key_list_dialog.h"
#include "app/session_kinds.h"
#include "app/window/edit_menu.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "session/translate.h"

#include <QMenuBar>

namespace velmora {

namespace {

/// Adds an entry for each kind that has a text, with a separator between groups.
template <typename Text>
void addKinds(QMenu *menu, Tarnwick &window, Text textOf)
{
    std::optional<KindGroup> group;
    for (const SessionKindRow &kind : sessionKinds()) {
        const QString text = textOf(kind);
        if (text.isEmpty())
            continue;
        if (group && *group != kind.group)
            menu->addSeparator();
        group = kind.group;
        QAction *action = menu->addAction(sessionKindIcon(kind.id), text);
        QObject::connect(action, &QAction::triggered, &window, [&window, &kind] { window.openEmpty(kind); });
    }
}

void addSessionMenu(QMenuBar *bar, Tarnwick &window, SessionTabs &tabs)
{
    QMenu *menu = bar->addMenu(Velmora::tr("Session(&S)"));
    addKinds(menu->addMenu(Velmora::tr("New session(&N)")), window,
             [](const SessionKindRow &kind) { return kind.menuText ? Velmora::tr(kind.menuText) : QString(); });
    QAction *home = menu->addAction(Velmora::tr("New tab(&I)"), &tabs, &SessionTabs::showHome);
    home->setShortcut(Qt::CTRL | Qt::Key_T);
    menu->addSeparator();
    menu->addAction(Velmora::tr("Save workspace as(&V)..."), &window, &Tarnwick::onSaveWorkspace);
    menu->addAction(Velmora::tr("Open workspace(&O)..."), &window, &Tarnwick::onOpenWorkspace);
    menu->addAction(Velmora::tr("Open session file(&N)..."), &window, &Tarnwick::onOpenSessionFile);
    menu->addAction(Velmora::tr("Save current session as(&S)..."), &window, &Tarnwick::onSaveSessionFile);
    menu->addSeparator();
    QAction *close = menu->addAction(Velmora::tr("Close tab"), &window, &Tarnwick::onCloseCurrentTab);
    close->setShortcut(Qt::CTRL | Qt::Key_W);
    QAction *exit = menu->addAction(Velmora::tr("E&xit"), &window, &QWidget::close);
    exit->setShortcut(Qt::CTRL | Qt::Key_Q);
}

void addToolsMenu(QMenuBar *bar, Tarnwick &window)
{
    QMenu *menu = bar->addMenu(Velmora::tr("&Tools"));
    addKinds(menu, window,
             [](const SessionKindRow &kind) { return kind.inTools ? Velmora::tr(kind.displayName) : QString(); });
    menu->addSeparator();
    menu->addAction(Velmora::tr("Options..."), &window, &Tarnwick::onOptions);
    menu->addSeparator();
    menu->addAction(Velmora::tr("Past operations..."), &window, &Tarnwick::showPastOperations);
}

void addHelpMenu(QMenuBar *bar, Tarnwick &window)
{
    QMenu *menu = bar->addMenu(Velmora::tr("&Help"));
    menu->addAction(Velmora::tr("&Legend"), &window, &Tarnwick::showLegend);
    QAction *keys = menu->addAction(Velmora::tr("&Keyboard shortcuts"), &window, [&window] {
        auto *dialog = new KeyListDialog(collectKeys(*window.menuBar(), window), &window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show();
    });
    keys->setShortcut(Qt::Key_F1);
    menu->addSeparator();
    menu->addAction(Velmora::tr("&About"), &window, &Tarnwick::onAbout);
}

} // namespace

void buildMainMenu(Tarnwick &window, SessionTabs &tabs)
{
    QMenuBar *bar = window.menuBar();
    addSessionMenu(bar, window, tabs);
    new EditMenu(bar->addMenu(Velmora::tr("&Edit")), &tabs);
    addToolsMenu(bar, window);
    addHelpMenu(bar, window);
}

} // namespace velmora
