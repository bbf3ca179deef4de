#pragma once

#include "core/passing_folder.h"
#include "platform/file_access.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>

#include <memory>

namespace velmora {

/// Bytes that are put down once and then read in any order: in memory while they are few, else in a temporary file of
/// this user that goes with the last reader.
class Spool : public std::enable_shared_from_this<Spool> {
public:
    /// False when the system has no room for more.
    [[nodiscard]] bool add(QByteArrayView bytes);
    [[nodiscard]] qint64 size() const noexcept { return m_size; }

    /// Reads `length` bytes from `offset` on as a file. Nothing is added any more. Null when the system refuses.
    [[nodiscard]] std::unique_ptr<OpenFile> open(qint64 offset, qint64 length);
    [[nodiscard]] std::unique_ptr<OpenFile> open() { return open(0, m_size); }

private:
    class Window;

    QByteArray m_bytes;
    std::unique_ptr<PassingFolder> m_folder; ///< null: in memory
    std::unique_ptr<QFile> m_file;
    qint64 m_size = 0;
};

} // namespace velmora
