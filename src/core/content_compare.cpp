#include "core/content_compare.h"

#include "core/crc32.h"

#include <chrono>
#include <cstring>

namespace velmora {

namespace {

/// Two of them stay in the second-level cache of one core, where the copy that reading makes is compared.
constexpr qint64 pieceSize = 256 * 1024;

/// The block of the binary method, a multiple of pieceSize.
constexpr qint64 blockSize = 1024 * 1024;
static_assert(blockSize % pieceSize == 0);

bool sameBytes(const AlignedBuffer &left, const AlignedBuffer &right, qint64 length)
{
    return std::memcmp(left.data(), right.data(), std::size_t(length)) == 0;
}

/// Where the first difference is; precondition: there is one.
std::size_t firstDifference(const AlignedBuffer &left, const AlignedBuffer &right, qint64 length)
{
    char *const end = left.data() + length;
    return std::size_t(std::mismatch(left.data(), end, right.data()).first - left.data());
}

bool holdsZero(const AlignedBuffer &buffer, std::size_t length)
{
    return std::memchr(buffer.data(), 0, length) != nullptr;
}

} // namespace

bool SlowDeviceGate::enter(const CancelFlag &cancel)
{
    std::unique_lock lock(m_mutex);
    while (!cancel.isCancelled()) {
        if (m_left.wait_for(lock, std::chrono::milliseconds(20), [this] { return !m_taken; })) {
            m_taken = true;
            return true;
        }
    }
    return false;
}

void SlowDeviceGate::leave()
{
    const std::lock_guard lock(m_mutex);
    m_taken = false;
    m_left.notify_one();
}

/// Watches how fast the files of a pair come, and changes the way they are read when they come from a slow device.
class ContentComparer::Pace {
public:
    explicit Pace(SlowDeviceGate *gate) : m_gate(gate) {}
    ~Pace()
    {
        if (m_entered)
            m_gate->leave();
    }
    Pace(const Pace &) = delete;
    Pace &operator=(const Pace &) = delete;

    /// Called before the piece at `offset` is read. Blocks while another pair streams from a slow device.
    void before(qint64 offset, OpenFile &left, OpenFile &right, const CancelFlag &cancel)
    {
        if (offset == 0)
            m_start = std::chrono::steady_clock::now();
        else if (offset == probeSize)
            judge(cancel);
        if (m_slow && offset % windowSize == 0) {
            left.expect(offset, windowSize);
            right.expect(offset, windowSize);
        }
    }

private:
    static constexpr qint64 probeSize = 8 * 1024 * 1024;
    /// What is asked from one file before the other gets its turn.
    static constexpr qint64 windowSize = 2 * 1024 * 1024;
    /// Of one file of the pair: more than a disk gives, less than any memory does.
    static constexpr qint64 slowBytesPerSecond = 300'000'000;

    void judge(const CancelFlag &cancel)
    {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
        m_slow = double(probeSize) < elapsed.count() * double(slowBytesPerSecond);
        if (!m_slow || !m_gate)
            return;
        m_entered = m_gate->enter(cancel);
    }

    SlowDeviceGate *m_gate;
    std::chrono::steady_clock::time_point m_start;
    bool m_slow = false;
    bool m_entered = false;
};

ContentComparer::ContentComparer(const FileAccess &files, CancelFlag cancel, SlowDeviceGate *gate)
    : m_leftOpener(files.makeOpener()),
      m_rightOpener(files.makeOpener()),
      m_cancel(std::move(cancel)),
      m_gate(gate),
      m_left(pieceSize),
      m_right(pieceSize)
{}

std::unique_ptr<OpenFile> ContentComparer::opened(FileOpener &opener, const QString &path, OpenHint hint) const
{
    std::unique_ptr<OpenFile> file = opener.open(path, hint);
    if (!file && hint == OpenHint::ListedAsFile && m_failed)
        m_failed(path);
    return file;
}

FilePiece ContentComparer::piece(OpenFile &file, const QString &path, qint64 offset, const AlignedBuffer &buffer) const
{
    const FilePiece read = file.readAt(offset, buffer.data(), pieceSize);
    if (read.failed && m_failed)
        m_failed(path);
    return read;
}

bool ContentComparer::sameByRule(const QString &left, const QString &right, OpenHint hint, const BlockRule &sameBlock)
{
    const std::unique_ptr<OpenFile> leftFile = opened(*m_leftOpener, left, hint);
    if (!leftFile)
        return false;
    const std::unique_ptr<OpenFile> rightFile = opened(*m_rightOpener, right, hint);
    if (!rightFile || m_cancel.isCancelled())
        return false;
    if (leftFile->identity() == rightFile->identity())
        return true;

    Pace pace(m_gate);
    for (qint64 offset = 0;; offset += pieceSize) {
        pace.before(offset, *leftFile, *rightFile, m_cancel);
        if (m_cancel.isCancelled())
            return false;
        const FilePiece leftPiece = piece(*leftFile, left, offset, m_left);
        const FilePiece rightPiece = piece(*rightFile, right, offset, m_right);
        if (leftPiece != rightPiece || !sameBlock(offset, leftPiece.length))
            return false;
        count(leftPiece.length);
        if (leftPiece.length < pieceSize)
            return true;
    }
}

bool ContentComparer::sameByDigest(const QString &left, const QString &right, OpenHint hint)
{
    return sameByRule(left, right, hint, [this](qint64, qint64 length) { return sameBytes(m_left, m_right, length); });
}

bool ContentComparer::sameByBlocks(const QString &left, const QString &right, OpenHint hint)
{
    bool zeroSeen = false; // in the current block, at the same place of both files
    return sameByRule(left, right, hint, [this, &zeroSeen](qint64 offset, qint64 length) {
        if (offset % blockSize == 0)
            zeroSeen = false;
        if (zeroSeen)
            return true;
        if (sameBytes(m_left, m_right, length)) {
            zeroSeen = holdsZero(m_left, std::size_t(length));
            return true;
        }
        zeroSeen = holdsZero(m_left, firstDifference(m_left, m_right, length));
        return zeroSeen;
    });
}

bool ContentComparer::sameByCrc32(const QString &left, const QString &right, OpenHint hint)
{
    return crc32(*m_leftOpener, left, hint) == crc32(*m_rightOpener, right, hint);
}

QByteArray ContentComparer::crc32(const QString &path)
{
    return crc32(*m_leftOpener, path, OpenHint::Unknown);
}

QByteArray ContentComparer::crc32(FileOpener &opener, const QString &path, OpenHint hint)
{
    const std::unique_ptr<OpenFile> file = opened(opener, path, hint);
    if (!file)
        return {};
    Crc32 crc;
    for (qint64 offset = 0;; offset += pieceSize) {
        if (m_cancel.isCancelled())
            return {};
        const FilePiece read = piece(*file, path, offset, m_left);
        crc.update(QByteArrayView(m_left.data(), read.length));
        count(read.length);
        if (read.length < pieceSize)
            break;
    }
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(static_cast<unsigned char>(crc.value() >> unsigned(shift) & 0xFFU)));
    return bytes;
}

} // namespace velmora
