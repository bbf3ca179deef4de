#include "filetypes/binary/engine/binary_source.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace velmora {

std::shared_ptr<const BinarySource> BinarySource::open(const QString &path, const FileAccess &files)
{
    std::unique_ptr<OpenFile> file = files.makeOpener()->open(QFileInfo(path).absoluteFilePath(), OpenHint::Unknown);
    const std::optional<qint64> size = file ? file->size() : std::nullopt;
    if (!size || *size < 0)
        return nullptr;
    return std::shared_ptr<const BinarySource>(new BinarySource(std::move(file), *size));
}

bool BinarySource::read(qint64 offset, char *buffer, qint64 length) const
{
    if (offset < 0 || length < 0 || offset > m_size || length > m_size - offset)
        return false;
    return m_file->readAt(offset, buffer, length).length == length;
}

RowBytes readRow(const BinarySource &source, qint64 offset, int count)
{
    RowBytes row;
    for (int at = 0; at < count;) {
        const FilePiece piece = source.readSome(offset + at, row.bytes.data() + at, count - at);
        for (qint64 k = 0; k < piece.length; ++k)
            row.readable.set(std::size_t(at + k));
        at += int(piece.length) + 1; // the byte after the piece cannot be read
        if (!piece.failed)
            break;
    }
    return row;
}

FilePiece BinarySource::readSome(qint64 offset, char *buffer, qint64 length) const
{
    const qint64 wanted = std::clamp<qint64>(m_size - offset, 0, std::max<qint64>(length, 0));
    return offset < 0 || wanted == 0 ? FilePiece{} : m_file->readAt(offset, buffer, wanted);
}

} // namespace velmora
