#include "app/window/tab_menu.h"

#include "app/window/session_tabs.h"
#include "platform/file_manager.h"
#include "session/dialogs.h"
#include "session/passing_copies.h"
#include "session/session_widget.h"
#include "session/translate.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>

namespace velmora {

namespace {

QStringList pathsOf(const SessionPaths &paths)
{
    QStringList all{paths.base, paths.left, paths.right};
    all.removeAll(QString());
    return all;
}

bool isCopy(const QString &path)
{
    return !originOfCopy(path).isEmpty();
}

/// Whether people find there what the path stands for.
bool isOnDisk(const QString &path)
{
    return QDir::isAbsolutePath(path) && !isCopy(path);
}

void addPathCommands(QMenu &menu, SessionTabs &tabs, const QStringList &paths)
{
    menu.addSeparator();
    QAction *copy = menu.addAction(Velmora::tr("Copy paths"), &tabs, [paths] {
        QStringList shown;
        for (const QString &path : paths)
            shown.append(isCopy(path) ? originOfCopy(path) : QDir::toNativeSeparators(path));
        QGuiApplication::clipboard()->setText(shown.join(u'\n'));
    });
    QAction *show = menu.addAction(Velmora::tr("Open the folders"), &tabs, [&tabs, paths] {
        for (const QString &path : paths) {
            if (!isOnDisk(path))
                continue;
            showInFileManager(path, tabs, [&tabs] {
                Dialogs::instance().tell(&tabs, Dialogs::Tone::Warning, Velmora::tr("Open the folders"),
                                         Velmora::tr("No file manager could be opened"));
            });
        }
    });
    copy->setEnabled(!paths.isEmpty());
    show->setEnabled(std::any_of(paths.begin(), paths.end(), isOnDisk));
}

} // namespace

void openTabMenu(SessionTabs &tabs, int index, const QPoint &place)
{
    auto *menu = new QMenu(&tabs);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // Tabs may come and go while it is open.
    const QPointer<SessionWidget> session = tabs.sessionAt(index);
    if (session) {
        QAction *close = menu->addAction(Velmora::tr("Close tab"), &tabs, [&tabs, session] {
            if (session)
                tabs.closeTab(tabs.indexOf(session));
        });
        close->setShortcut(Qt::CTRL | Qt::Key_W);
        close->setShortcutContext(Qt::WidgetShortcut); // shown here; the key belongs to the window's menu
    }
    QAction *others = menu->addAction(session ? Velmora::tr("Close other tabs") : Velmora::tr("Close all tabs"), &tabs,
                                      [&tabs, session] { tabs.closeOthers(session); });
    const QList<SessionWidget *> all = tabs.sessions();
    others->setEnabled(
        std::any_of(all.begin(), all.end(), [&session](const SessionWidget *one) { return one != session; }));
    if (session)
        addPathCommands(*menu, tabs, pathsOf(session->paths()));
    menu->popup(place);
}

} // namespace velmora
