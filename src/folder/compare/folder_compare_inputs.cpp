#include "core/path_names.h"
#include "folder/compare/folder_compare_side_pane.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/other_trees.h"
#include "folder/compare/time_shift_bar.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "vfs/remote/remote_place.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace velmora {

FolderCompareWidget::TreeWords FolderCompareWidget::words() const
{
    return {Velmora::tr("Folder compare ready: drag folders from Explorer to the left/right pane."),
            Velmora::tr("Select two folders to compare"),
            Velmora::tr("Drop a folder on each side, or enter the two paths above."),
            Velmora::tr("Drop a folder on the other side, or enter its path above."),
            Velmora::tr("Only folders can be compared here; this is a file: %1")};
}

Sides<TreeFolder> FolderCompareWidget::trees(const SessionPaths &paths) const
{
    return {m_otherTrees->folderAt(Side::Left, paths.left), m_otherTrees->folderAt(Side::Right, paths.right)};
}

bool FolderCompareWidget::openTrees()
{
    const SessionPaths wanted = paths();
    if (!OtherTrees::isAny(wanted))
        return true;
    const bool isOfHost = isRemoteAddress(wanted.left) || isRemoteAddress(wanted.right);
    showMessage(OtherTrees::isAnyState(wanted) ? Velmora::tr("Reading the repository...")
                : isOfHost                     ? Velmora::tr("Reading the folder of the host...")
                                               : Velmora::tr("Reading the snapshot..."));
    m_otherTrees->open(wanted, [this](const QString &error) {
        if (error.isEmpty())
            loadOpened();
        else
            tellUnopened(error);
    });
    return false;
}

bool FolderCompareWidget::isOpening() const
{
    return m_otherTrees->isRunning();
}

void FolderCompareWidget::cancelOpening()
{
    m_otherTrees->cancel();
}

bool FolderCompareWidget::takesPath(const QString &path) const
{
    return QFileInfo(path).isDir() || snapshotPlaceOf(path);
}

void FolderCompareWidget::browse(Side side)
{
    Dialogs::instance().openFolder(
        this, side == Side::Left ? Velmora::tr("Select left folder") : Velmora::tr("Select right folder"),
        m_view->head(side).path(), [this, side](const QString &path) { takeSidePath(side, path); });
}

void FolderCompareWidget::takeSidePath(Side side, const QString &path)
{
    m_view->head(side).setPath(path);
    pathsChanged(side);
}

void FolderCompareWidget::pathsChanged(Side written)
{
    tellWritten(written);
    loadWritten();
}

void FolderCompareWidget::tellWritten(Side side)
{
    const QString written = m_view->head(side).path();
    const QString word = side == Side::Left ? Velmora::tr("left") : Velmora::tr("right");
    if (!written.isEmpty())
        log(Velmora::tr("Wrote %1 side path: %2").arg(word, nativePath(written)));
}

void FolderCompareWidget::loadWritten()
{
    const SessionPaths folders = paths();
    m_timeShifts->reset();
    if (!folders.left.isEmpty() && !folders.right.isEmpty()) {
        log(Velmora::tr("Both paths set; loading directories"));
        onCompare();
        return;
    }
    m_startTeller.stop();
    m_comparison.clear();
    m_hasResult = false;
    if (folders.left.isEmpty() && folders.right.isEmpty()) {
        showMessage(words().choose);
    } else {
        const QString side = folders.right.isEmpty() ? Velmora::tr("left") : Velmora::tr("right");
        const QString message = Velmora::tr("Waiting for other side (only %1 set)").arg(side);
        log(message);
        showMessage(message);
    }
    showNotice();
}

void FolderCompareWidget::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void FolderCompareWidget::dropEvent(QDropEvent *event)
{
    QStringList dropped;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            dropped.append(url.toLocalFile());
    }
    event->acceptProposedAction();
    dropPaths(dropped, event->position().toPoint());
}

void FolderCompareWidget::dropPaths(const QStringList &dropped, QPoint position)
{
    if (dropped.isEmpty())
        return;
    for (const QString &path : dropped) {
        if (!takesPath(path)) {
            showMessage(words().refused.arg(nativePath(path)));
            return;
        }
    }
    if (dropped.size() >= 2) {
        setPaths({dropped.at(0), dropped.at(1), {}});
        tellWritten(Side::Left);
        tellWritten(Side::Right);
        loadWritten();
        return;
    }
    takeSidePath(m_view->sideAt(m_view->mapFrom(this, position)), dropped.first());
}

void FolderCompareWidget::onSwapSides()
{
    const SessionPaths folders = paths();
    setPaths({folders.right, folders.left, {}});
    std::swap(m_options.leftReadOnly, m_options.rightReadOnly);
    for (ManualAlignRule &rule : m_options.alignOverrides)
        std::swap(rule.left, rule.right);
    takeOptions(m_options);
    if (m_hasResult || m_comparison.isRunning())
        onRefresh();
}

} // namespace velmora
