#include "platform/file_manager.h"

#include <QDir>
#include <QMetaObject>
#include <QProcess>

namespace velmora {

void showInFileManager(const QString &path, QObject &context, std::function<void()> failed)
{
    QProcess explorer;
    explorer.setProgram(QStringLiteral("explorer.exe"));
    // Explorer reads its command line in a way of its own: the quotes stand around the path alone.
    explorer.setNativeArguments(QStringLiteral("/select,\"%1\"").arg(QDir::toNativeSeparators(path)));
    if (!explorer.startDetached())
        QMetaObject::invokeMethod(&context, std::move(failed), Qt::QueuedConnection);
}

} // namespace velmora
