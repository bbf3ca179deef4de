#pragma once

#include "core/cancel_flag.h"
#include "core/pair_scan.h"
#include "core/sides.h"
#include "platform/file_access.h"

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace velmora {

/// Lets one pair of large files at a time stream from a device that is slow: heads that jump between four files read
/// less than heads that jump between two. Shared by the comparers of one run; files in memory never meet it.
class SlowDeviceGate {
public:
    /// Waits for its turn, and calls `waiting` now and then until it comes. False when the run is cancelled before.
    [[nodiscard]] bool enter(const CancelFlag &cancel, const std::function<void()> &waiting);
    void leave();

private:
    std::mutex m_mutex;
    std::condition_variable m_left;
    bool m_taken = false;
};

/// Compares the contents of files. Owns the buffers that it reads into (512 KiB), so one object serves one thread for
/// many files. Large files that come fast are read by more threads where there are processors for them. Obeys its
/// cancel flag within the time that reading 256 KiB takes. Paths are absolute.
class ContentComparer {
public:
    /// Reads the files of each side through its opener. `gate`, where there is one, must outlive the object.
    ContentComparer(Sides<std::unique_ptr<FileOpener>> openers, CancelFlag cancel, SlowDeviceGate *gate = nullptr);
    /// For files of one kind on both sides. `files` must outlive the object.
    ContentComparer(const FileAccess &files, CancelFlag cancel);

    /// Called with the number of bytes whenever that many more have been compared, of one side, or gone into a CRC;
    /// with 0 now and then while it waits.
    void setBytesListener(std::function<void(qint64)> listener) { m_listener = std::move(listener); }

    /// True when both files have the same bytes, which is when a digest of each would agree. False when one cannot be
    /// opened or the run is cancelled. A read error ends a file there, and counts as a difference when the other does
    /// not end in one at the same place. Stops at the first block that differs.
    [[nodiscard]] bool sameByDigest(const QString &left, const QString &right, OpenHint hint = OpenHint::Unknown);

    /// As `sameByDigest`, but in each block of 1 MiB of the files what comes after the first zero byte that both hold
    /// at the same place is not compared: blocks are equal as strings are.
    [[nodiscard]] bool sameByBlocks(const QString &left, const QString &right, OpenHint hint = OpenHint::Unknown);

    /// True when `crc32` gives the same for both: also when neither can be opened. Two large files are read at the same
    /// time.
    [[nodiscard]] bool sameByCrc32(const QString &left, const QString &right, OpenHint hint = OpenHint::Unknown);

    /// See `fileCrc32`.
    [[nodiscard]] QByteArray crc32(const QString &path);

    /// Takes a file that was listed as one and cannot be opened, or of which a part cannot be read.
    using FailureListener = std::function<void(Side side, const QString &path)>;
    void setFailureListener(FailureListener listener) { m_failed = std::move(listener); }

private:
    class CrcRun;
    class Pace;

    [[nodiscard]] std::unique_ptr<OpenFile> opened(Side side, const QString &path, OpenHint hint) const;
    void fail(Side side, const QString &path) const
    {
        if (m_failed)
            m_failed(side, path);
    }
    [[nodiscard]] bool sameByRule(const QString &left, const QString &right, OpenHint hint, PieceRule rule);
    void count(qint64 bytes) const
    {
        if (m_listener)
            m_listener(bytes);
    }

    Sides<std::unique_ptr<FileOpener>> m_openers;
    CancelFlag m_cancel;
    SlowDeviceGate *m_gate;
    std::function<void(qint64)> m_listener;
    FailureListener m_failed;
    PieceBuffers m_buffers;
};

} // namespace velmora
