#include "folder/sync/sync_drop_line_edit.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace velmora {

namespace {

/// The folder that is meant by what is dragged; empty for none.
QString folderOf(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    const QString path = urls.first().toLocalFile();
    return QFileInfo(path).isDir() ? path : QFileInfo(path).absolutePath();
}

} // namespace

void SyncDropLineEdit::dragEnterEvent(QDragEnterEvent *event)
{
    if (folderOf(event->mimeData()).isEmpty())
        event->ignore(); // what is behind the line is asked next
    else
        event->acceptProposedAction();
}

void SyncDropLineEdit::dragMoveEvent(QDragMoveEvent *event)
{
    event->setAccepted(!folderOf(event->mimeData()).isEmpty());
}

void SyncDropLineEdit::dropEvent(QDropEvent *event)
{
    const QString folder = folderOf(event->mimeData());
    if (folder.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    setText(QDir::toNativeSeparators(folder));
    Q_EMIT folderDropped();
}

} // namespace velmora
