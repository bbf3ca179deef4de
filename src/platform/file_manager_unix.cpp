#include "platform/file_access.h"
#include "platform/file_manager.h"

#include <QFileInfo>
#include <QMetaObject>
#include <QProcess>

namespace velmora {

namespace {

/// The path as a URL. Commas are escaped as well, since dbus-send takes them for the ends of list elements.
QString fileUrl(const QString &path)
{
    const std::string name = nativeName(path);
    const QByteArray bytes(name.data(), qsizetype(name.size()));
    return QLatin1String("file://") + QString::fromLatin1(bytes.toPercentEncoding("/"));
}

void openFolderOf(const QString &path, QObject &context, std::function<void()> failed)
{
    if (!QProcess::startDetached(QStringLiteral("xdg-open"), {QFileInfo(path).path()}))
        QMetaObject::invokeMethod(&context, std::move(failed), Qt::QueuedConnection);
}

} // namespace

void showInFileManager(const QString &path, QObject &context, std::function<void()> failed)
{
    auto *request = new QProcess(&context);
    const auto orOpenFolder = [path, &context, request, failed = std::move(failed)] {
        request->deleteLater();
        openFolderOf(path, context, failed);
    };
    QObject::connect(request, &QProcess::errorOccurred, &context, [orOpenFolder](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            orOpenFolder();
    });
    QObject::connect(request, &QProcess::finished, &context, [orOpenFolder, request](int code) {
        if (code == 0)
            request->deleteLater();
        else
            orOpenFolder();
    });
    // The interface that file managers share; what answers is the person's own one.
    request->start(QStringLiteral("dbus-send"),
                   {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                    QStringLiteral("--dest=org.freedesktop.FileManager1"), QStringLiteral("--type=method_call"),
                    QStringLiteral("/org/freedesktop/FileManager1"),
                    QStringLiteral("org.freedesktop.FileManager1.ShowItems"),
                    QLatin1String("array:string:") + fileUrl(path), QStringLiteral("string:")});
}

} // namespace velmora
