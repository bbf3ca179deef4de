#include "folder_engine/memory_tree.h"

#include <cstring>
#include <thread>

namespace velmora::test {

class MemoryTree::Reader final : public OpenFile {
public:
    Reader(const MemoryTree &files, std::shared_ptr<File> file) : m_files(files), m_file(std::move(file)) {}

    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        constexpr qint64 laterPart = 12 * 1024 * 1024;
        std::atomic<int> *const readers = offset >= laterPart ? m_file->readers : nullptr;
        if (readers)
            ++*readers;
        m_files.step();
        if (m_file->delay.count() > 0)
            std::this_thread::sleep_for(m_file->delay); // a slow disk; waits for nothing
        qint64 count = std::clamp<qint64>(m_file->length() - offset, 0, length);
        const bool fails = m_file->failsAt >= 0 && offset + count > m_file->failsAt;
        if (fails)
            count = std::max<qint64>(m_file->failsAt - offset, 0);
        if (m_file->size >= 0)
            std::memset(buffer, 0, std::size_t(count));
        else if (count > 0)
            std::memcpy(buffer, m_file->bytes.constData() + offset, std::size_t(count));
        m_files.m_bytesRead += count;
        if (readers)
            --*readers;
        return {count, fails};
    }

    std::optional<qint64> size() const override { return m_file->length(); }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    const MemoryTree &m_files;
    std::shared_ptr<File> m_file;
};

class MemoryTree::Opener final : public FileOpener {
public:
    explicit Opener(const MemoryTree &files) : m_files(files) {}

    std::unique_ptr<OpenFile> open(const QString &path, OpenHint) override
    {
        m_files.step();
        const auto node = m_files.m_nodes.constFind(path);
        if (node == m_files.m_nodes.constEnd() || !node->file || !node->file->opens)
            return nullptr;
        return std::make_unique<Reader>(m_files, node->file);
    }

private:
    const MemoryTree &m_files;
};

void MemoryTree::addFolder(const QString &path)
{
    if (m_nodes.contains(path))
        return;
    const QString parent = path.left(std::max<qsizetype>(path.lastIndexOf(u'/'), 1));
    if (path != parent)
        addFolder(parent);
    Node node;
    node.entry.name = path.section(u'/', -1);
    node.entry.kind = EntryKind::Folder;
    node.entry.identity = FileIdentity{1, quint64(m_nodes.size())};
    m_nodes.insert(path, node);
    if (path != parent)
        m_children[parent].append(path);
}

MemoryTree::File &MemoryTree::addFile(const QString &path, const QByteArray &bytes, qint64 modifiedMs)
{
    addFolder(path);
    Node &node = m_nodes[path];
    node.entry.kind = EntryKind::File;
    node.entry.size = bytes.size();
    node.entry.modifiedMs = modifiedMs;
    node.file = std::make_shared<File>();
    node.file->bytes = bytes;
    return *node.file;
}

MemoryTree::File &MemoryTree::addZeros(const QString &path, qint64 size, qint64 modifiedMs)
{
    File &file = addFile(path, {}, modifiedMs);
    file.size = size;
    m_nodes[path].entry.size = size;
    return file;
}

void MemoryTree::step() const
{
    const int number = ++m_operations;
    if (m_watcher)
        m_watcher(number);
}

TreeFolder MemoryTree::at(const QString &path) const
{
    return {std::shared_ptr<const TreeSource>(std::shared_ptr<void>(), this), path};
}

FolderRead MemoryTree::readFolder(const QString &path, HiddenEntries hidden, const FileAccess::Sink &sink) const
{
    step();
    const auto node = m_nodes.constFind(path);
    if (node == m_nodes.constEnd() || node->entry.kind != EntryKind::Folder)
        return FolderRead::Missing;
    if (m_unreadable.contains(path))
        return FolderRead::Unreadable;
    for (const QString &child : m_children.value(path)) {
        FolderEntry entry = m_nodes[child].entry;
        const bool isShown = hidden == HiddenEntries::Listed || !entry.name.startsWith(u'.');
        if (isShown && !sink(std::move(entry)))
            return FolderRead::Stopped;
    }
    return FolderRead::Complete;
}

std::unique_ptr<FileOpener> MemoryTree::makeOpener() const
{
    return std::make_unique<Opener>(*this);
}

std::optional<FolderEntry> MemoryTree::describe(const QString &path, HiddenEntries /*hidden*/) const
{
    const auto node = m_nodes.constFind(path);
    return node == m_nodes.constEnd() ? std::nullopt : std::optional(node->entry);
}

std::optional<ContentIdentity> MemoryTree::contentIdentity(const QString &path) const
{
    const auto node = m_nodes.constFind(path);
    return node == m_nodes.constEnd() || !node->file ? std::nullopt : node->file->identity;
}

} // namespace velmora::test
