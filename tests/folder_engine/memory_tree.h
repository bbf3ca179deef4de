#pragma once

#include "core/cancel_flag.h"
#include "vfs/tree_source.h"

#include <QMap>
#include <QSet>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <functional>

namespace velmora::test {

/// A tree in memory whose parts can be made to fail, to be slow or to stop the run. Filled before the run.
class MemoryTree final : public TreeSource {
public:
    MemoryTree() : TreeSource({Location::Kind::OtherTree, QStringLiteral("memory"), QStringLiteral("a tree in memory")})
    {
        addFolder(QStringLiteral("/"));
    }

    struct File {
        QByteArray bytes;
        qint64 size = -1;                    ///< of a file of zeros, instead of `bytes`
        qint64 failsAt = -1;                 ///< the byte that cannot be read
        bool opens = true;                   ///< false: it has vanished since it was listed
        std::chrono::milliseconds delay{0};  ///< of each read
        std::atomic<int> *readers = nullptr; ///< counted up while the later part of the file is read
        std::optional<ContentIdentity> identity;
        [[nodiscard]] qint64 length() const { return size >= 0 ? size : bytes.size(); }
    };

    /// Makes the folders on the way, too.
    void addFolder(const QString &path);
    File &addFile(const QString &path, const QByteArray &bytes, qint64 modifiedMs = 0);
    File &addZeros(const QString &path, qint64 size, qint64 modifiedMs);
    void setUnreadable(const QString &folder) { m_unreadable.insert(folder); }
    /// Called before each operation with its number, counted from 1 over all threads.
    void setWatcher(std::function<void(int)> watcher) { m_watcher = std::move(watcher); }

    [[nodiscard]] int operations() const { return m_operations; }
    [[nodiscard]] qint64 bytesRead() const { return m_bytesRead; }
    /// As a side of a comparison, which the tree must outlive.
    [[nodiscard]] TreeFolder at(const QString &path = QStringLiteral("/")) const;

    [[nodiscard]] FolderRead readFolder(const QString &path, HiddenEntries hidden,
                                        const FileAccess::Sink &sink) const override;
    [[nodiscard]] std::unique_ptr<FileOpener> makeOpener() const override;
    [[nodiscard]] std::optional<FolderEntry> describe(const QString &path, HiddenEntries hidden) const override;
    [[nodiscard]] std::optional<ContentIdentity> contentIdentity(const QString &path) const override;

private:
    class Opener;
    class Reader;

    struct Node {
        FolderEntry entry;
        std::shared_ptr<File> file;
    };

    void step() const;

    QMap<QString, Node> m_nodes;
    QMap<QString, QStringList> m_children;
    QSet<QString> m_unreadable;
    std::function<void(int)> m_watcher;
    mutable std::atomic<int> m_operations{0};
    mutable std::atomic<qint64> m_bytesRead{0};
};

} // namespace velmora::test
