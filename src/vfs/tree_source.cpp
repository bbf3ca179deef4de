#include "vfs/tree_source.h"

#include "core/path_names.h"
#include "core/safe_file.h"
#include "vfs/safe_name.h"

#include <QIODevice>
#include <QTemporaryDir>

namespace velmora {

namespace {

enum class Copied : quint8 { Whole, Unreadable, Unwritten };

Copied copyTo(QIODevice &device, OpenFile &file, const CancelFlag &cancel)
{
    QByteArray buffer(256 * 1024, Qt::Uninitialized);
    for (qint64 offset = 0; !cancel.isCancelled();) {
        const FilePiece piece = file.readAt(offset, buffer.data(), buffer.size());
        if (piece.failed)
            return Copied::Unreadable;
        if (device.write(buffer.constData(), piece.length) != piece.length)
            break;
        if (piece.length < buffer.size())
            return Copied::Whole;
        offset += piece.length;
    }
    return Copied::Unwritten;
}

} // namespace

std::vector<std::optional<ContentIdentity>>
TreeSource::contentIdentities(const QStringList &paths, ContentIdentity::Algorithm, const CancelFlag &) const
{
    return std::vector<std::optional<ContentIdentity>>(std::size_t(paths.size()));
}

LaidOutFile TreeSource::layOut(const QString &path, const QString &folder, const CancelFlag &cancel) const
{
    const QString name = bareName(path);
    const std::unique_ptr<FileOpener> opener = makeOpener();
    const std::unique_ptr<OpenFile> file = canStandInFolder(name) ? opener->open(path, OpenHint::Unknown) : nullptr;
    if (!file)
        return {};
    QTemporaryDir own(folder + QLatin1String("/XXXXXX"));
    if (!own.isValid())
        return {{}, own.errorString()};
    const QString target = own.filePath(name);
    Copied copied = Copied::Unwritten;
    const auto write = [&](QIODevice &device) {
        copied = copyTo(device, *file, cancel);
        return copied == Copied::Whole;
    };
    const SaveResult saved = saveFile(target, write, cancel);
    if (!saved.ok())
        return {{}, copied == Copied::Unreadable ? QString() : saved.error};
    own.setAutoRemove(false);
    return {target, {}};
}

} // namespace velmora
