#pragma once

#include "platform/file_access.h"
#include "vfs/archive/archive_stream.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <mutex>

namespace velmora {

/// The content of one entry as a file that is best read from its beginning to its end: it is unpacked as it is read,
/// and nothing of it is put down. The last bytes are kept, for threads that read side by side; who goes back further
/// gets all of it put down after all.
class ForwardFile final : public OpenFile {
public:
    using OpenAnywhere = std::function<std::unique_ptr<OpenFile>()>;

    /// `stream` has come to the entry, whose content has `size` bytes. `openAnywhere` opens the content for reading in
    /// any order; null when that fails.
    ForwardFile(std::unique_ptr<ArchiveStream> stream, qint64 size, OpenAnywhere openAnywhere);

    /// The end cannot be read where the content is not of its size or its checksum does not hold.
    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override;
    std::optional<qint64> size() const override { return m_size; }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    [[nodiscard]] qint64 end() const { return m_begin + m_kept.size(); }
    void unpackTo(qint64 offset);
    void unpackBlock();

    std::unique_ptr<ArchiveStream> m_stream;
    qint64 m_size;
    OpenAnywhere m_openAnywhere;
    std::mutex m_mutex; ///< guards what follows, and the stream
    QByteArray m_block;
    QByteArray m_kept;  ///< what was unpacked last
    qint64 m_begin = 0; ///< where in the content that begins
    bool m_failed = false;
    std::unique_ptr<OpenFile> m_anywhere;
};

} // namespace velmora
