#include "core/content_compare.h"

#include "core/crc32.h"
#include "core/crew.h"

#include <chrono>
#include <limits>

namespace velmora {

namespace {

/// After so much of one file it shows how fast files come.
constexpr qint64 probeSize = 8 * 1024 * 1024;
static_assert(probeSize % pieceSize == 0);

bool isOneFile(const OpenFile &left, const OpenFile &right)
{
    const std::optional<FileIdentity> identity = left.identity();
    return identity && identity == right.identity();
}

class Stopwatch {
public:
    /// True when `bytes` since the start are fewer than any memory gives in the time; the bound is above what disks do.
    [[nodiscard]] bool isSlow(qint64 bytes) const
    {
        constexpr double slowBytesPerSecond = 300e6;
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
        return double(bytes) < elapsed.count() * slowBytesPerSecond;
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace

bool SlowDeviceGate::enter(const CancelFlag &cancel, const std::function<void()> &waiting)
{
    std::unique_lock lock(m_mutex);
    while (!cancel.isCancelled()) {
        if (m_left.wait_for(lock, std::chrono::milliseconds(20), [this] { return !m_taken; })) {
            m_taken = true;
            return true;
        }
        waiting();
    }
    return false;
}

void SlowDeviceGate::leave()
{
    const std::lock_guard lock(m_mutex);
    m_taken = false;
    m_left.notify_one();
}

namespace {

/// One pair's turn to stream from a slow device; over with the object.
class StreamTurn {
public:
    /// `waiting` is called now and then while it waits.
    StreamTurn(SlowDeviceGate *gate, std::function<void()> waiting) : m_gate(gate), m_waiting(std::move(waiting)) {}
    ~StreamTurn()
    {
        if (m_entered)
            m_gate->leave();
    }
    StreamTurn(const StreamTurn &) = delete;
    StreamTurn &operator=(const StreamTurn &) = delete;

    /// Waits for it.
    void take(const CancelFlag &cancel) { m_entered = m_gate && m_gate->enter(cancel, m_waiting); }

private:
    SlowDeviceGate *m_gate;
    std::function<void()> m_waiting;
    bool m_entered = false;
};

} // namespace

/// Watches how fast the files of a pair come, and changes the way they are read when they come from a slow device.
class ContentComparer::Pace {
public:
    Pace(SlowDeviceGate *gate, std::function<void()> waiting) : m_turn(gate, std::move(waiting)) {}

    /// Called before the piece at `offset` is read. Blocks while another pair streams from a slow device.
    void before(qint64 offset, OpenFile &left, OpenFile &right, const CancelFlag &cancel)
    {
        if (offset == probeSize && m_stopwatch.isSlow(probeSize)) {
            m_slow = true;
            m_turn.take(cancel);
        }
        if (m_slow && offset % windowSize == 0) {
            left.expect(offset, windowSize);
            right.expect(offset, windowSize);
        }
    }

    [[nodiscard]] bool isSlow() const noexcept { return m_slow; }

private:
    /// What is asked from one file before the other gets its turn.
    static constexpr qint64 windowSize = 2 * 1024 * 1024;

    Stopwatch m_stopwatch;
    StreamTurn m_turn;
    bool m_slow = false;
};

ContentComparer::ContentComparer(Sides<std::unique_ptr<FileOpener>> openers, CancelFlag cancel, SlowDeviceGate *gate)
    : m_openers(std::move(openers)), m_cancel(std::move(cancel)), m_gate(gate)
{}

ContentComparer::ContentComparer(const FileAccess &files, CancelFlag cancel)
    : ContentComparer({files.makeOpener(), files.makeOpener()}, std::move(cancel))
{}

std::unique_ptr<OpenFile> ContentComparer::opened(Side side, const QString &path, OpenHint hint) const
{
    std::unique_ptr<OpenFile> file = m_openers[side]->open(path, hint);
    if (!file && hint == OpenHint::ListedAsFile)
        fail(side, path);
    return file;
}

bool ContentComparer::sameByRule(const QString &left, const QString &right, OpenHint hint, PieceRule rule)
{
    const std::unique_ptr<OpenFile> leftFile = opened(Side::Left, left, hint);
    if (!leftFile)
        return false;
    const std::unique_ptr<OpenFile> rightFile = opened(Side::Right, right, hint);
    if (!rightFile || m_cancel.isCancelled())
        return false;
    if (isOneFile(*leftFile, *rightFile))
        return true;

    const PairScan scan(*leftFile, *rightFile, rule, m_cancel);
    const auto counted = [this](qint64 bytes) { count(bytes); };
    // What others have read meanwhile is told all the same.
    Pace pace(m_gate, [this] { count(0); });
    const auto keepPace = [&](qint64 offset) {
        pace.before(offset, *leftFile, *rightFile, m_cancel);
        return offset != probeSize || pace.isSlow() || crewSize() == 1;
    };
    std::optional<PairEnd> end = scan.walk(0, PairScan::toTheEnd, m_buffers, keepPace, counted);
    if (!end && !m_cancel.isCancelled())
        end = scan.walkWithCrew(probeSize, m_buffers, counted);
    if (!end)
        return false;
    if (end->leftFailed)
        fail(Side::Left, left);
    if (end->rightFailed)
        fail(Side::Right, right);
    return end->same;
}

bool ContentComparer::sameByDigest(const QString &left, const QString &right, OpenHint hint)
{
    return sameByRule(left, right, hint, PieceRule::Bytes);
}

bool ContentComparer::sameByBlocks(const QString &left, const QString &right, OpenHint hint)
{
    return sameByRule(left, right, hint, PieceRule::ZeroEndBlocks);
}

/// The CRC-32 of one file on its way through it.
class ContentComparer::CrcRun {
public:
    CrcRun(ContentComparer &comparer, OpenFile &file, Side side, const QString &path)
        : m_comparer(comparer),
          m_file(file),
          m_side(side),
          m_path(path),
          m_buffer(side == Side::Left ? comparer.m_buffers.left : comparer.m_buffers.right)
    {}

    /// Goes on up to `end` or the end of the file, and counts the bytes.
    void advance(qint64 end)
    {
        advance(end, [this](qint64 bytes) { m_comparer.count(bytes); });
    }

    void complete() { advance(toTheEnd); }

    /// For another thread than the one that listens: leaves the counting to it.
    void completeUncounted()
    {
        advance(toTheEnd, [](qint64) {});
    }

    [[nodiscard]] bool isComplete() const noexcept { return m_complete; }
    [[nodiscard]] qint64 offset() const noexcept { return m_offset; }

    /// Empty before the end.
    [[nodiscard]] QByteArray value() const
    {
        QByteArray bytes;
        for (int shift = m_complete ? 24 : -1; shift >= 0; shift -= 8)
            bytes.append(static_cast<char>(static_cast<unsigned char>(m_crc.value() >> unsigned(shift) & 0xFFU)));
        return bytes;
    }

private:
    static constexpr qint64 toTheEnd = std::numeric_limits<qint64>::max();

    template <typename Count>
    void advance(qint64 end, Count count)
    {
        while (!m_complete && m_offset < end && !m_comparer.m_cancel.isCancelled()) {
            const FilePiece read = m_file.readAt(m_offset, m_buffer.data(), pieceSize);
            if (read.failed)
                m_comparer.fail(m_side, m_path);
            m_crc.update(QByteArrayView(m_buffer.data(), read.length));
            m_offset += read.length;
            count(read.length);
            m_complete = read.length < pieceSize;
        }
    }

    ContentComparer &m_comparer;
    OpenFile &m_file;
    Side m_side;
    const QString &m_path;
    const AlignedBuffer &m_buffer;
    Crc32 m_crc;
    qint64 m_offset = 0;
    bool m_complete = false;
};

bool ContentComparer::sameByCrc32(const QString &left, const QString &right, OpenHint hint)
{
    const std::unique_ptr<OpenFile> leftFile = opened(Side::Left, left, hint);
    const std::unique_ptr<OpenFile> rightFile = opened(Side::Right, right, hint);
    if (m_cancel.isCancelled() || !leftFile || !rightFile)
        return m_cancel.isCancelled() || (!leftFile && !rightFile);
    if (isOneFile(*leftFile, *rightFile))
        return true;

    CrcRun leftRun(*this, *leftFile, Side::Left, left);
    CrcRun rightRun(*this, *rightFile, Side::Right, right);
    StreamTurn turn(m_gate, [this] { count(0); });
    const Stopwatch stopwatch;
    leftRun.advance(probeSize);
    const bool slow = stopwatch.isSlow(probeSize);
    if (!leftRun.isComplete() && !slow && crewSize() > 1) {
        runCrew(2, [&](int worker) { worker == 0 ? leftRun.complete() : rightRun.completeUncounted(); }, {});
        count(rightRun.offset());
    } else {
        if (!leftRun.isComplete() && slow)
            turn.take(m_cancel);
        leftRun.complete();
        rightRun.complete();
    }
    return leftRun.value() == rightRun.value();
}

QByteArray ContentComparer::crc32(const QString &path)
{
    const std::unique_ptr<OpenFile> file = opened(Side::Left, path, OpenHint::Unknown);
    if (!file)
        return {};
    CrcRun run(*this, *file, Side::Left, path);
    run.complete();
    return run.value();
}

} // namespace velmora
