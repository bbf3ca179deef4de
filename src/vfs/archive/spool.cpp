#include "vfs/archive/spool.h"

#include <algorithm>

namespace velmora {

/// A part of the bytes. Holds the spool, and has the file open for itself.
class Spool::Window final : public OpenFile {
public:
    Window(std::shared_ptr<Spool> spool, std::unique_ptr<OpenFile> file, qint64 begin, qint64 length)
        : m_spool(std::move(spool)), m_file(std::move(file)), m_begin(begin), m_length(length)
    {}

    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        const qint64 wanted = std::clamp<qint64>(m_length - offset, 0, length);
        if (m_file)
            return m_file->readAt(m_begin + offset, buffer, wanted);
        if (wanted > 0)
            std::copy_n(m_spool->m_bytes.constData() + m_begin + offset, wanted, buffer);
        return {wanted, false};
    }
    std::optional<qint64> size() const override { return m_length; }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    std::shared_ptr<Spool> m_spool;
    std::unique_ptr<OpenFile> m_file; ///< null: in memory
    qint64 m_begin;
    qint64 m_length;
};

bool Spool::add(QByteArrayView bytes)
{
    constexpr qint64 mostInMemory = 1024 * 1024;
    m_size += bytes.size();
    if (!m_file && m_size <= mostInMemory) {
        m_bytes += bytes.toByteArray();
        return true;
    }
    if (!m_file) {
        m_folder = std::make_unique<PassingFolder>();
        m_file = std::make_unique<QFile>(m_folder->filePath(QStringLiteral("bytes")));
        if (!m_folder->isValid() || !m_file->open(QIODevice::WriteOnly) || m_file->write(m_bytes) != m_bytes.size())
            return false;
        m_bytes.clear();
    }
    return m_file->write(bytes.data(), bytes.size()) == bytes.size();
}

std::unique_ptr<OpenFile> Spool::open(qint64 offset, qint64 length)
{
    std::unique_ptr<OpenFile> file;
    if (m_file) {
        if (m_file->isOpen())
            m_file->close();
        file = FileAccess::native().makeOpener()->open(m_file->fileName(), OpenHint::Unknown);
        if (!file)
            return nullptr;
    }
    return std::make_unique<Window>(shared_from_this(), std::move(file), offset, length);
}

} // namespace velmora
