#pragma once

#include <QtGlobal>

#include <tiostream.h>

class QFileDevice;
class QIODevice;

namespace velmora {

/// What is thrown out of TagLib when a file makes it read or take more than tags may.
struct TagRefusal {};

/// A device as TagLib reads it; what it writes goes nowhere. Throws `TagRefusal` where it would read a piece of more
/// than tags may take, or all too much. The device must be open and outlive this.
class TagStream : public TagLib::IOStream {
public:
    explicit TagStream(QIODevice &device);

    [[nodiscard]] TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector &data) override;
    void insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    [[nodiscard]] bool readOnly() const override { return true; }
    [[nodiscard]] bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    [[nodiscard]] long tell() const override;
    long length() override;
    void truncate(long length) override;

protected:
    [[nodiscard]] qint64 place() const { return m_at; }
    void moveTo(qint64 at) { m_at = at; }

private:
    QIODevice &m_device;
    qint64 m_at = 0;
    qint64 m_readBytes = 0;
};

/// The same over a file that is written to.
class TagEditStream final : public TagStream {
public:
    explicit TagEditStream(QFileDevice &file);

    void writeBlock(const TagLib::ByteVector &data) override;
    void insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    [[nodiscard]] bool readOnly() const override { return false; }
    void truncate(long length) override;

    /// Whether something could not be written.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    void write(qint64 at, const char *data, qint64 length);
    void moveTail(qint64 from, qint64 to);

    QFileDevice &m_file;
    bool m_hasFailed = false;
};

} // namespace velmora
