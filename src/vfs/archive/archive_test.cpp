#include "vfs/archive/archive_test.h"

#include "core/crc32.h"
#include "vfs/archive/archive_source.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

/// What is to be read of one archive: the numbers of entries, ascending, with the paths by which they are told.
using Wanted = std::map<qint32, QString>;

void collectFiles(const ArchiveSource &archive, const QString &prefix, std::map<const ArchiveSource *, Wanted> &files)
{
    const ArchiveTree &tree = archive.tree();
    for (qint32 number = 1; number < tree.count(); ++number) {
        const ArchiveNode &node = tree.node(number);
        if (node.kind == ArchiveEntryKind::File)
            files[&archive][node.entry] = prefix + tree.path(number);
        if (const ArchiveSource *inner = archive.within(number))
            collectFiles(*inner, prefix + tree.path(number), files);
    }
}

bool keepsChecksums(const QByteArray &format)
{
    static constexpr const char *words[] = {"ZIP",  "7-Zip", "RAR",  "xar",  "LHA", "Cab",
                                            "gzip", "bzip2", "lzip", "zstd", "xz",  "lz4"};
    return std::any_of(std::begin(words), std::end(words),
                       [&format](const char *word) { return format.contains(word); });
}

/// Reads and throws away.
class TestingVisitor final : public ContentVisitor {
public:
    TestingVisitor(const ArchiveSource &archive, bool isWithin, const Wanted &wanted, qint64 total, ArchiveTest &test,
                   const CancelFlag &cancel, Progress &progress)
        : m_archive(archive),
          m_isWithin(isWithin),
          m_wanted(wanted),
          m_total(total),
          m_test(test),
          m_cancel(cancel),
          m_progress(progress)
    {}

    void begin(qint32 entry) override
    {
        m_entry = entry;
        m_crc = {};
    }
    bool take(QByteArrayView bytes) override
    {
        m_crc.update(bytes);
        m_test.bytes += bytes.size();
        m_test.bytesWithin += m_isWithin ? bytes.size() : 0;
        m_progress.report(0, std::min(m_test.bytes, m_total), m_total, path());
        return true;
    }
    bool end(bool isWhole, const QString &error) override
    {
        if (m_cancel.isCancelled())
            return false;
        ++m_test.files;
        if (isWhole)
            m_test.checksums[&m_archive].insert(m_entry, m_crc.value());
        else
            tell(error);
        return true;
    }

    /// Of the entry that was read last; empty before the first.
    [[nodiscard]] QString path() const { return m_entry < 0 ? QString() : m_wanted.at(m_entry); }

private:
    [[nodiscard]] ArchiveProblem::Kind kindFor(const ArchiveEntry &entry) const
    {
        using enum ArchiveProblem::Kind;
        const bool canDecrypt = m_archive.parts().format.startsWith("ZIP");
        return !entry.isEncrypted ? Damaged : canDecrypt ? Encrypted : CannotDecrypt;
    }

    void tell(const QString &error)
    {
        constexpr qsizetype mostProblems = 1000;
        ++m_test.failed;
        const ArchiveEntry &entry = (*m_archive.parts().entries)[std::size_t(m_entry)];
        if (m_test.problems.size() < mostProblems)
            m_test.problems.append({kindFor(entry), path(), error, 1});
    }

    const ArchiveSource &m_archive;
    bool m_isWithin;
    const Wanted &m_wanted;
    qint64 m_total;
    ArchiveTest &m_test;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    Crc32 m_crc;
    qint32 m_entry = -1;
};

qint64 sizeOf(const ArchiveSource &archive, const Wanted &wanted)
{
    qint64 size = 0;
    for (const auto &[entry, path] : wanted)
        size += std::max<qint64>((*archive.parts().entries)[std::size_t(entry)].size, 0);
    return size;
}

} // namespace

ArchiveTest testArchive(const ArchiveSource &archive, const CancelFlag &cancel, Progress &progress)
{
    ArchiveTest test;
    std::map<const ArchiveSource *, Wanted> files;
    collectFiles(archive, {}, files);
    qint64 total = 0;
    for (const auto &[source, wanted] : files)
        total += sizeOf(*source, wanted);
    bool isAtLimit = false;
    for (const auto &[source, wanted] : files) {
        std::vector<qint32> numbers;
        numbers.reserve(wanted.size());
        for (const auto &[entry, path] : wanted)
            numbers.push_back(entry);
        TestingVisitor visitor(*source, source != &archive, wanted, total, test, cancel, progress);
        const VisitEnd end = source->parts().contents->visit(numbers, visitor, cancel);
        if (cancel.isCancelled())
            break;
        isAtLimit = isAtLimit || end == VisitEnd::TooMuch;
        if (end != VisitEnd::Done)
            noteProblem(test.problems,
                        end == VisitEnd::TooMuch ? ArchiveProblem::Kind::TooMuchContent
                                                 : ArchiveProblem::Kind::Incomplete,
                        visitor.path());
    }
    test.hasChecksums = keepsChecksums(archive.parts().format);
    test.isComplete = !cancel.isCancelled() && !isAtLimit;
    return test;
}

} // namespace velmora
