#include "core/safe_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <system_error>

namespace velmora {

namespace {

QString systemWords(std::errc error)
{
    return QString::fromStdString(std::make_error_code(error).message());
}

/// The file that a chain of links ends at, also when it is not there yet. Stops at the length where systems give up.
QString linkEnd(const QString &path)
{
    QString end = path;
    for (int links = 0; links < 40; ++links) {
        const QFileInfo info(end);
        if (!info.isSymbolicLink()) // not a shortcut, which is a file of its own
            break;
        end = info.symLinkTarget();
    }
    return end;
}

QString errorOf(const QFileDevice &file)
{
    return file.error() != QFileDevice::NoError ? file.errorString() : systemWords(std::errc::operation_canceled);
}

SaveResult writeInPlace(const QString &path, const std::function<bool(QIODevice &)> &write)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !write(file) || !file.flush())
        return {errorOf(file)};
    return {};
}

} // namespace

SaveResult saveFile(const QString &path, const std::function<bool(QIODevice &)> &write)
{
    if (path.isEmpty())
        return {systemWords(std::errc::no_such_file_or_directory)};
    const QFileInfo info(path);
    if (info.isDir())
        return {systemWords(std::errc::is_a_directory)};
    if (info.exists() && !info.isFile())
        return writeInPlace(path, write);

    QSaveFile file(linkEnd(path));
    if (!file.open(QIODevice::WriteOnly) || !write(file)) {
        const SaveResult failed{errorOf(file)};
        file.cancelWriting();
        return failed;
    }
    return file.commit() ? SaveResult() : SaveResult{errorOf(file)};
}

SaveResult saveFile(const QString &path, const QByteArray &bytes)
{
    return saveFile(path, [&bytes](QIODevice &device) { return device.write(bytes) == bytes.size(); });
}

} // namespace velmora
