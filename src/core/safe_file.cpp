#include "core/safe_file.h"

#include "core/save_probe.h"
#include "platform/saved_file.h"

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

SaveProbe installedProbe;

bool mayTake(SaveStep step)
{
    return !installedProbe || installedProbe(step);
}

/// Fails where the probe says so.
class ReplacingFile final : public QSaveFile {
public:
    using QSaveFile::QSaveFile;

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        if (!mayTake(SaveStep::Write)) {
            cancelWriting();
            return -1;
        }
        // A disk that fills up takes a part and says why only when it is asked to take the rest.
        for (qint64 done = 0; done < length;) {
            const qint64 taken = QSaveFile::writeData(data + done, length - done);
            if (taken <= 0)
                return -1;
            done += taken;
        }
        return length;
    }
};

SaveResult writeInPlace(const QString &path, const std::function<bool(QIODevice &)> &write)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !write(file) || !file.flush())
        return {errorOf(file)};
    return {};
}

/// Does all but the last step; an error when one of them failed.
SaveResult prepare(ReplacingFile &file, const QString &target, const std::function<bool(QIODevice &)> &write)
{
    if (!mayTake(SaveStep::Open))
        return {systemWords(std::errc::io_error)};
    if (!file.open(QIODevice::WriteOnly) || !write(file))
        return {errorOf(file)};
    // QSaveFile passes over an error here, although a full disk may show itself only now.
    if (!mayTake(SaveStep::Flush) || !file.flush())
        return {errorOf(file)};
    if (const QString error = bringToDisk(file); !error.isEmpty())
        return {error};
    if (!mayTake(SaveStep::Access))
        return {systemWords(std::errc::operation_not_permitted)};
    if (const QString error = takeAfter(file, target); !error.isEmpty())
        return {error};
    return mayTake(SaveStep::Replace) ? SaveResult() : SaveResult{systemWords(std::errc::permission_denied)};
}

} // namespace

void installSaveProbe(SaveProbe probe)
{
    installedProbe = std::move(probe);
}

SaveResult saveFile(const QString &path, const std::function<bool(QIODevice &)> &write, const CancelFlag &cancel)
{
    if (path.isEmpty())
        return {systemWords(std::errc::no_such_file_or_directory)};
    const QFileInfo info(path);
    if (info.isDir())
        return {systemWords(std::errc::is_a_directory)};
    if (info.exists() && !info.isFile())
        return writeInPlace(path, write);

    const QString target = linkEnd(path);
    ReplacingFile file(target);
    if (const SaveResult prepared = prepare(file, target, write); !prepared.ok()) {
        file.cancelWriting();
        return prepared;
    }
    // Bringing it to the disk has taken its time.
    if (cancel.isCancelled()) {
        file.cancelWriting();
        return {systemWords(std::errc::operation_canceled)};
    }
    awaitReplaceable(target);
    if (!file.commit())
        return {errorOf(file)};
    bringNameToDisk(target);
    return {};
}

SaveResult saveFile(const QString &path, const QByteArray &bytes)
{
    return saveFile(path, [&bytes](QIODevice &device) { return device.write(bytes) == bytes.size(); });
}

} // namespace velmora
