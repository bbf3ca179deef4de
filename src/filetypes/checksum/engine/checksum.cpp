#include "filetypes/checksum/engine/checksum.h"

#include "core/aligned_buffer.h"
#include "core/crc32.h"
#include "core/crew.h"
#include "core/message_digest.h"
#include "filetypes/checksum/engine/checksum_list.h"
#include "platform/file_access.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <variant>
#include <vector>

namespace velmora {

namespace {

constexpr qint64 pieceSize = 1024 * 1024;
/// How far the system may read ahead: as much as a disk brings while a few pieces are computed.
constexpr qint64 aheadSize = 8 * pieceSize;

/// Reads a file from its start on, and has the system read ahead while that pays: where the bytes are in memory
/// already, it would look for each page of them a second time, a tenth of the time of a CRC-32.
class AheadReader {
public:
    explicit AheadReader(OpenFile &file) : m_file(file) {}

    FilePiece next(char *buffer)
    {
        if (m_offset % aheadSize == 0) {
            if (m_reading >= slowWindow || m_offset == 0)
                m_file.expect(m_offset + aheadSize, aheadSize);
            m_reading = std::chrono::nanoseconds(0);
        }
        const auto start = std::chrono::steady_clock::now();
        const FilePiece piece = m_file.readAt(m_offset, buffer, pieceSize);
        m_reading += std::chrono::steady_clock::now() - start;
        m_offset += piece.length;
        return piece;
    }

    [[nodiscard]] qint64 offset() const noexcept { return m_offset; }

private:
    /// What reading `aheadSize` takes where the bytes come from a device: 2 GB in a second, half of what memory brings
    /// on slow machines.
    static constexpr std::chrono::nanoseconds slowWindow = std::chrono::milliseconds(4);

    OpenFile &m_file;
    qint64 m_offset = 0;
    std::chrono::nanoseconds m_reading{0}; ///< since the system was last told
};

/// The digest of bytes that come piece by piece.
class Digest {
public:
    explicit Digest(ChecksumAlgorithm algorithm)
    {
        if (algorithm != ChecksumAlgorithm::Crc32)
            m_digest.emplace<MessageDigest>(MessageDigest::Kind(algorithm)); // the same order
    }

    void update(QByteArrayView bytes)
    {
        std::visit([bytes](auto &digest) { digest.update(bytes); }, m_digest);
    }

    [[nodiscard]] QByteArray value() const
    {
        if (const auto *digest = std::get_if<MessageDigest>(&m_digest))
            return digest->value();
        QByteArray bytes(digestSize(ChecksumAlgorithm::Crc32), Qt::Uninitialized);
        qToBigEndian(std::get<Crc32>(m_digest).value(), bytes.data());
        return bytes;
    }

private:
    std::variant<Crc32, MessageDigest> m_digest;
};

/// Two files that are read at the same time by two threads.
class PairRun {
public:
    PairRun(std::array<QString, 2> paths, ChecksumAlgorithm algorithm, const FileAccess &files,
            const CancelFlag &cancel, Progress &progress)
        : m_paths(std::move(paths)),
          m_algorithm(algorithm),
          m_files(files),
          m_cancel(cancel),
          m_progress(progress),
          m_total(QFileInfo(m_paths[0]).size() + QFileInfo(m_paths[1]).size())
    {}

    ChecksumPair run()
    {
        const int size = m_paths[0].isEmpty() || m_paths[1].isEmpty() ? 1 : 2;
        std::atomic<int> next = 0;
        runCrew(
            size,
            [&](int worker) {
                for (int side = next++; side < 2; side = next++)
                    read(side, worker == 0);
            },
            [this] { report(); });
        if (m_results[0] && !m_results[0]->isWhole())
            m_results[1].reset();
        return {std::move(m_results[0]), std::move(m_results[1])};
    }

private:
    /// Progress is told by the thread that the run was started on alone.
    void read(int side, bool tells)
    {
        const auto at = std::size_t(side);
        if (m_paths[at].isEmpty())
            return;
        m_results[at] = fileChecksum(m_paths[at], m_algorithm, m_files, m_stop, [&](qint64 bytes) {
            m_read[at] = bytes;
            if (m_cancel.isCancelled())
                m_stop.cancel();
            if (tells)
                report();
        });
        m_isOver[at] = true;
        if (side == 0 && !m_results[at]->isWhole())
            m_stop.cancel(); // the other one is not wanted any more
    }

    void report()
    {
        if (m_cancel.isCancelled())
            m_stop.cancel();
        const bool left = !m_paths[0].isEmpty() && !m_isOver[0];
        m_progress.report(0, m_read[0] + m_read[1], m_total, m_paths[left ? 0 : 1]);
    }

    std::array<QString, 2> m_paths;
    ChecksumAlgorithm m_algorithm;
    const FileAccess &m_files;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    qint64 m_total;
    CancelFlag m_stop;
    std::array<std::atomic<qint64>, 2> m_read{};
    std::array<std::atomic<bool>, 2> m_isOver{};
    std::array<std::optional<FileChecksum>, 2> m_results;
};

} // namespace

FileDigests fileDigests(const QString &path, const QList<ChecksumAlgorithm> &algorithms, const FileAccess &files,
                        const CancelFlag &cancel, const std::function<void(qint64)> &advanced)
{
    const std::unique_ptr<FileOpener> opener = files.makeOpener();
    const std::unique_ptr<OpenFile> file = opener->open(QFileInfo(path).absoluteFilePath(), OpenHint::Unknown);
    if (!file)
        return {ChecksumEnd::NotOpened};

    std::vector<Digest> digests(algorithms.cbegin(), algorithms.cend());
    const AlignedBuffer buffer(pieceSize);
    AheadReader reader(*file);
    for (;;) {
        if (cancel.isCancelled())
            return {ChecksumEnd::Cancelled};
        const FilePiece piece = reader.next(buffer.data());
        if (piece.failed)
            return {ChecksumEnd::Broken};
        for (Digest &digest : digests)
            digest.update(QByteArrayView(buffer.data(), piece.length));
        if (advanced)
            advanced(reader.offset());
        if (piece.length < pieceSize)
            break;
    }
    FileDigests result{ChecksumEnd::Whole};
    for (const Digest &digest : digests)
        result.digests.append(digest.value());
    return result;
}

FileChecksum fileChecksum(const QString &path, ChecksumAlgorithm algorithm, const FileAccess &files,
                          const CancelFlag &cancel, const std::function<void(qint64)> &advanced)
{
    const FileDigests result = fileDigests(path, {algorithm}, files, cancel, advanced);
    return {result.end, result.digests.value(0)};
}

ChecksumPair fileChecksums(const QString &left, const QString &right, ChecksumAlgorithm algorithm,
                           const FileAccess &files, const CancelFlag &cancel, Progress &progress)
{
    return PairRun({left, right}, algorithm, files, cancel, progress).run();
}

std::optional<ExpectedChecksum> expectedChecksum(const QString &text)
{
    constexpr qsizetype longest = 4096; // of a name with its checksum
    if (text.size() > longest)
        return std::nullopt;
    if (const ChecksumList list = parseChecksumList(text.toUtf8()); list.entries.size() == 1)
        return ExpectedChecksum{list.entries.first().algorithm, list.entries.first().digest};
    static const QRegularExpression form(
        QStringLiteral(R"(^\s*(?:[A-Za-z][\w-]*\s*[:=])?\s*([0-9A-Fa-f: ]+?)(?: [ *].*)?$)"));
    const QString digits = form.match(text).captured(1).remove(u':').remove(u' ');
    for (const ChecksumAlgorithm algorithm : checksumAlgorithms) {
        if (digits.size() == 2 * digestSize(algorithm))
            return ExpectedChecksum{algorithm, QByteArray::fromHex(digits.toLatin1())};
    }
    return std::nullopt;
}

} // namespace velmora
