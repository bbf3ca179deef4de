#include "session/pane/pane_menu.h"

#include "session/dialogs.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_pane.h"
#include "session/translate.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include <algorithm>

namespace velmora {

void addEditCommands(QMenu &menu, PaneView &view, PaneIndex index)
{
    TextPane &pane = view.pane(index);
    const bool hasSelection = view.scene().caret().hasSelection() && view.activePane() == index;
    QAction *cut = menu.addAction(Velmora::tr("Cut"), QKeySequence::Cut, &pane, &TextPane::cut);
    cut->setEnabled(hasSelection && !pane.isLocked());
    QAction *copy = menu.addAction(Velmora::tr("Copy"), QKeySequence::Copy, &pane, &TextPane::copy);
    copy->setEnabled(hasSelection);
    QAction *paste = menu.addAction(Velmora::tr("Paste"), QKeySequence::Paste, &pane, &TextPane::paste);
    paste->setEnabled(!pane.isLocked() && !QGuiApplication::clipboard()->text().isEmpty());
    menu.addAction(Velmora::tr("Select all"), QKeySequence::SelectAll, &pane, &TextPane::selectAll);
}

void askForLine(PaneView &view, QWidget *window)
{
    const PaneDocument *document = view.scene().document();
    const PaneIndex pane = view.activePane();
    const int last = document ? int(document->source(pane).count()) : 0;
    if (last == 0)
        return;
    const qint32 here = document->lineNumber(view.scene().caret().position.row, pane);
    Dialogs::instance().askNumber(window, Velmora::tr("Go to line"), Velmora::tr("Line number (1 - %1):").arg(last),
                                  std::max(here, 1), 1, last, [&view, pane](int line) {
                                      view.scene().goToLine(pane, line);
                                      view.pane(pane).setFocus();
                                  });
}

} // namespace velmora
