#include "vfs/archive/archive_opening.h"

#include "core/message_digest.h"
#include "core/path_names.h"
#include "vfs/archive/archive_signature.h"
#include "vfs/archive/archive_stream.h"
#include "vfs/archive/resuming_stream.h"
#include "vfs/archive/zip_directory.h"
#include "vfs/blob_name.h"

#include <QDir>

#include <algorithm>
#include <set>

namespace velmora {

namespace {

const QStringList &archiveEndings()
{
    static const QStringList endings =
        QStringLiteral("7z aar apk bz2 cab cpio deb ear gz iso jar lha lz lz4 lzh lzma nupkg rar rpm tar taz tbz tbz2 "
                       "tgz txz tzst udeb war whl xar xpi xz zip zst")
            .split(u' ');
    return endings;
}

/// The name of the one file in a compressed file: that of the file without its last ending.
QByteArray nameInside(const QString &place)
{
    const QString name = bareName(place);
    const qsizetype dot = name.lastIndexOf(u'.');
    return (dot > 0 ? name.first(dot) : name).toUtf8();
}

QByteArray headOf(OpenFile &file)
{
    QByteArray head(longestArchiveHead, Qt::Uninitialized);
    head.truncate(file.readAt(0, head.data(), head.size()).length);
    return head;
}

/// Keeps what it is given, and nothing of what cannot be read whole.
class TextVisitor final : public ContentVisitor {
public:
    explicit TextVisitor(std::vector<ArchiveEntry> &entries) : m_entries(entries) {}

    void begin(qint32 entry) override { m_entry = entry; }
    bool take(QByteArrayView bytes) override
    {
        constexpr qsizetype longestTarget = 4096;
        QByteArray &target = m_entries[std::size_t(m_entry)].target;
        target += bytes.toByteArray();
        return target.size() <= longestTarget;
    }
    bool end(bool isWhole, const QString &) override
    {
        if (!isWhole)
            m_entries[std::size_t(m_entry)].target.clear();
        return true;
    }

private:
    std::vector<ArchiveEntry> &m_entries;
    qint32 m_entry = 0;
};

/// Reads and says whether it went well.
class ProbingVisitor final : public ContentVisitor {
public:
    void begin(qint32) override {}
    bool take(QByteArrayView) override { return true; }
    bool end(bool isWhole, const QString &) override
    {
        wasWhole = isWhole;
        return true;
    }

    bool wasWhole = false;
};

/// One opening: an archive with those within.
class Loader {
public:
    Loader(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress, ArchiveOpening &opening)
        : m_request(request),
          m_cancel(cancel),
          m_progress(progress),
          m_opening(opening),
          m_entriesLeft(request.limits.entries),
          m_archivesLeft(request.limits.archives),
          m_withinLeft(request.limits.within)
    {}

    void loadFile(const std::shared_ptr<OpenFile> &file)
    {
        m_unpackedLeft = m_request.limits.unpackedOf(file->size().value_or(0));
        const Location location{Location::Kind::OtherTree, m_request.path, QDir::toNativeSeparators(m_request.path)};
        m_opening.source = load(file, location, {}, 0);
        if (m_cancel.isCancelled() || m_opening.fault != ArchiveFault::None)
            m_opening.source.reset();
        if (m_cancel.isCancelled())
            m_opening.fault = ArchiveFault::Stopped;
        else if (!m_opening.source && m_opening.fault == ArchiveFault::None)
            m_opening.fault = whyNone(*file);
    }

private:
    static ArchiveFault whyNone(OpenFile &file)
    {
        if (!ArchiveStream::isPossible())
            return ArchiveFault::NoLibrary;
        return beginsLikeArchive(headOf(file)) ? ArchiveFault::Damaged : ArchiveFault::NoArchive;
    }

    using Kind = ArchiveProblem::Kind;

    /// An archive on its way to a source.
    struct Draft {
        std::shared_ptr<OpenFile> file;
        QString prefix; ///< of paths in problems
        int depth = 0;
        ArchiveParts parts;
        std::vector<ArchiveEntry> entries;
        std::vector<std::size_t> blocked;
        std::map<qint32, std::shared_ptr<Spool>> inner; ///< by entry: what may be an archive
        std::set<qint32> tooLarge;                      ///< entries that may be one, and are not put down
        bool isZip = false;
    };

    void note(const Draft &draft, Kind kind, const QString &path, const QString &detail = {})
    {
        noteProblem(m_opening.problems, kind, draft.prefix + path, detail);
    }

    std::shared_ptr<const ArchiveSource> load(std::shared_ptr<OpenFile> file, const Location &location,
                                              const QString &prefix, int depth)
    {
        Draft draft;
        draft.file = std::move(file);
        draft.prefix = prefix;
        draft.depth = depth;
        draft.parts.location = location;
        draft.parts.size = draft.file->size().value_or(0);
        if (!readZip(draft) && !readStream(draft))
            return nullptr;
        const ArchiveNames names(draft.entries, draft.isZip);
        QList<ArchiveProblem> problems;
        draft.parts.tree = std::make_shared<ArchiveTree>(draft.entries, names, m_request.limits, problems);
        for (const ArchiveProblem &problem : std::as_const(problems)) {
            note(draft, problem.kind, problem.path, problem.detail);
            findProblem(problem.kind).count += problem.count - 1;
        }
        finish(draft);
        return std::make_shared<const ArchiveSource>(std::move(draft.parts));
    }

    ArchiveProblem &findProblem(Kind kind)
    {
        return *std::find_if(m_opening.problems.begin(), m_opening.problems.end(),
                             [kind](const ArchiveProblem &problem) { return problem.kind == kind; });
    }

    void finish(Draft &draft)
    {
        const ArchiveFile file{draft.file, m_request.password, m_request.limits.unpackedOf(draft.parts.size)};
        auto entries = std::make_shared<const std::vector<ArchiveEntry>>(std::move(draft.entries));
        draft.parts.entries = entries;
        if (draft.isZip)
            draft.parts.contents = std::make_shared<ZipContents>(file, entries, std::move(draft.blocked));
        else
            draft.parts.contents = std::make_shared<StreamContents>(file);
        if (m_request.nested == NestedArchives::BecomeFolders)
            openWithin(draft);
    }

    // Zip -------------------------------------------------------------------------------------------------------------

    bool readZip(Draft &draft)
    {
        std::optional<ZipDirectory> directory = ZipDirectory::read(*draft.file, m_entriesLeft);
        if (!directory)
            return false;
        draft.isZip = true;
        draft.parts.format = "ZIP";
        if (directory->isCut)
            note(draft, Kind::TooManyEntries, {});
        if (directory->isDamaged)
            note(draft, Kind::Incomplete, {});
        draft.blocked = directory->overlapping();
        draft.entries = std::move(directory->entries);
        m_entriesLeft -= qint64(draft.entries.size());
        for (const std::size_t entry : draft.blocked)
            note(draft, Kind::Overlapping, QString::fromUtf8(draft.entries[entry].name));
        readTargets(draft);
        tryPassword(draft);
        return true;
    }

    /// The target of a link is its content.
    void readTargets(Draft &draft)
    {
        std::vector<qint32> links;
        for (std::size_t i = 0; i < draft.entries.size(); ++i) {
            if (draft.entries[i].kind == ArchiveEntryKind::Link)
                links.push_back(qint32(i));
        }
        TextVisitor visitor(draft.entries);
        if (!links.empty())
            static_cast<void>(zipContents(draft).visit(links, visitor, m_cancel));
    }

    [[nodiscard]] ZipContents zipContents(const Draft &draft) const
    {
        return {{draft.file, m_request.password, m_request.limits.unpackedOf(draft.parts.size)},
                std::make_shared<const std::vector<ArchiveEntry>>(draft.entries),
                draft.blocked};
    }

    void tryPassword(const Draft &draft)
    {
        qint32 smallest = -1;
        for (std::size_t i = 0; i < draft.entries.size(); ++i) {
            const ArchiveEntry &entry = draft.entries[i];
            if (!entry.isEncrypted)
                continue;
            if (m_request.password.isEmpty())
                note(draft, Kind::Encrypted, QString::fromUtf8(entry.name));
            if (smallest < 0 || entry.size < draft.entries[std::size_t(smallest)].size)
                smallest = qint32(i);
        }
        if (smallest < 0 || m_request.password.isEmpty())
            return;
        ProbingVisitor visitor;
        static_cast<void>(zipContents(draft).visit(std::span(&smallest, 1), visitor, m_cancel));
        if (visitor.wasWhole)
            return;
        if (draft.depth == 0)
            m_opening.fault = ArchiveFault::WrongPassword;
        else
            note(draft, Kind::Encrypted, QString::fromUtf8(draft.entries[std::size_t(smallest)].name));
    }

    // Everything else -------------------------------------------------------------------------------------------------

    bool readStream(Draft &draft)
    {
        ResumingStream archive(draft.file, m_request.password, m_cancel);
        ArchiveStream::Step step = archive.next();
        const bool isOneFile = archive.stream().format() == "raw";
        if (step == ArchiveStream::Step::Broken || (isOneFile && draft.depth > 0)) {
            if (draft.depth == 0)
                takeFault(archive.stream());
            return false;
        }
        for (; step == ArchiveStream::Step::Entry && m_entriesLeft > 0 && m_unpackedLeft > 0; step = archive.next()) {
            const ArchiveStream &stream = archive.stream();
            --m_entriesLeft;
            draft.entries.push_back(stream.entry());
            if (isOneFile)
                draft.entries.back().name = nameInside(m_request.path);
            if (draft.entries.size() % 64 == 1)
                m_progress.report(0, std::min(stream.consumed(), draft.parts.size), draft.parts.size,
                                  QString::fromUtf8(draft.entries.back().name));
            if (!archive.hasResumed()) // else what comes next is hardly better, and names are quick
                readEntry(draft, archive.stream(), isOneFile);
        }
        const ArchiveStream &stream = archive.stream();
        draft.parts.format = stream.format() + (stream.compression().isEmpty() ? "" : ", ") + stream.compression();
        noteEnd(draft, stream, step);
        return true;
    }

    void takeFault(const ArchiveStream &stream)
    {
        m_opening.reason = stream.error();
        if (stream.hidesNames())
            m_opening.fault = ArchiveFault::HiddenNames;
    }

    void noteEnd(const Draft &draft, const ArchiveStream &stream, ArchiveStream::Step step)
    {
        const QString last = draft.entries.empty() ? QString() : QString::fromUtf8(draft.entries.back().name);
        if (m_unpackedLeft <= 0)
            note(draft, Kind::TooMuchContent, last);
        else if (step == ArchiveStream::Step::Entry)
            note(draft, Kind::TooManyEntries, last);
        else if (step == ArchiveStream::Step::Broken && !m_cancel.isCancelled())
            note(draft, stream.endsEncrypted() ? Kind::EndsEncrypted : Kind::Incomplete, last, stream.error());
    }

    void readEntry(Draft &draft, ArchiveStream &stream, bool sizeIsOpen)
    {
        ArchiveEntry &entry = draft.entries.back();
        if (entry.kind == ArchiveEntryKind::HardLink && entry.size > 0)
            entry.kind = ArchiveEntryKind::File; // formats that store the content once more
        const bool mayHoldOthers = m_request.nested == NestedArchives::BecomeFolders &&
                                   draft.depth < m_request.limits.nesting && int(draft.inner.size()) < m_archivesLeft &&
                                   looksLikeArchive(QString::fromUtf8(entry.name));
        const bool isRead = m_request.reading == ArchiveReading::Contents || mayHoldOthers || entry.size < 0;
        if (entry.kind == ArchiveEntryKind::File && entry.isEncrypted && !stream.canDecrypt())
            note(draft, Kind::CannotDecrypt, QString::fromUtf8(entry.name));
        else if (entry.kind == ArchiveEntryKind::File && isRead)
            readContent(draft, stream, mayHoldOthers, sizeIsOpen);
    }

    void readContent(Draft &draft, ArchiveStream &stream, bool mayHoldOthers, bool sizeIsOpen)
    {
        ArchiveEntry &entry = draft.entries.back();
        auto spool = mayHoldOthers ? std::make_shared<Spool>() : nullptr;
        MessageDigest digest(MessageDigest::Kind::Sha1);
        digest.update(blobHead(entry.size));
        qint64 count = 0;
        const bool isWhole = stream.readContent([&](QByteArrayView bytes) {
            digest.update(bytes);
            count += bytes.size();
            m_unpackedLeft -= bytes.size();
            if (spool && spool->size() + bytes.size() > m_withinLeft) {
                spool.reset();
                draft.tooLarge.insert(qint32(entry.position));
            }
            return m_unpackedLeft > 0 && (!spool || spool->add(bytes));
        });
        if (isWhole && count == entry.size && !sizeIsOpen)
            draft.parts.digests.insert(qint32(entry.position), digest.value());
        if (isWhole && spool) {
            m_withinLeft -= spool->size();
            draft.inner[qint32(entry.position)] = spool;
        }
        if (entry.size < 0 || sizeIsOpen)
            entry.size = count;
        if (!isWhole && m_unpackedLeft > 0 && !m_cancel.isCancelled())
            note(draft, entry.isEncrypted ? Kind::Encrypted : Kind::Damaged, QString::fromUtf8(entry.name),
                 stream.error());
    }

    // Archives within -------------------------------------------------------------------------------------------------

    void openWithin(Draft &draft)
    {
        const ArchiveTree &tree = *draft.parts.tree;
        for (qint32 number = 1; number < tree.count() && !m_cancel.isCancelled(); ++number) {
            const ArchiveNode &node = tree.node(number);
            if (node.kind != ArchiveEntryKind::File || !looksLikeArchive(node.name))
                continue;
            const QString path = tree.path(number);
            m_progress.report(0, 0, 0, draft.prefix + path);
            std::shared_ptr<OpenFile> file =
                m_archivesLeft-- > 0 && draft.depth < m_request.limits.nesting ? innerFile(draft, node) : nullptr;
            if (m_cancel.isCancelled())
                return;
            if (!file) {
                const bool isTooLarge = draft.tooLarge.contains(node.entry);
                note(draft, isTooLarge ? Kind::NestedTooLarge : Kind::NestedUnreadable, path);
                continue;
            }
            const Location &outer = draft.parts.location;
            const Location location{Location::Kind::OtherTree, outer.place + path,
                                    outer.shown + QDir::toNativeSeparators(path)};
            if (auto inner = load(std::move(file), location, draft.prefix + path, draft.depth + 1))
                draft.parts.within[number] = std::move(inner);
        }
    }

    std::shared_ptr<OpenFile> innerFile(Draft &draft, const ArchiveNode &node)
    {
        if (!draft.isZip) {
            const auto found = draft.inner.find(node.entry);
            return found == draft.inner.end() ? nullptr : found->second->open();
        }
        const qint64 size = (*draft.parts.entries)[std::size_t(node.entry)].size;
        if (size > m_withinLeft) {
            draft.tooLarge.insert(node.entry);
            return nullptr;
        }
        m_withinLeft -= size;
        m_unpackedLeft -= size;
        return m_unpackedLeft > 0 ? draft.parts.contents->open(node.entry, m_cancel) : nullptr;
    }

    const ArchiveRequest &m_request;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    ArchiveOpening &m_opening;
    qint64 m_entriesLeft;
    qint64 m_unpackedLeft = 0;
    int m_archivesLeft;
    qint64 m_withinLeft; ///< bytes of archives within that may still be put down
};

} // namespace

bool looksLikeArchive(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && archiveEndings().contains(name.sliced(dot + 1), Qt::CaseInsensitive);
}

ArchiveOpening openArchiveFile(const std::shared_ptr<OpenFile> &file, const ArchiveRequest &request,
                               const CancelFlag &cancel, Progress &progress)
{
    ArchiveOpening opening;
    Loader(request, cancel, progress, opening).loadFile(file);
    return opening;
}

ArchiveOpening openArchive(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress)
{
    const std::optional<FolderEntry> found = FileAccess::native().describe(request.path);
    std::shared_ptr<OpenFile> file = found && found->kind == EntryKind::File
                                         ? FileAccess::native().makeOpener()->open(request.path, OpenHint::Unknown)
                                         : nullptr;
    if (!file) {
        ArchiveOpening opening;
        opening.fault = found ? ArchiveFault::Unreadable : ArchiveFault::Missing;
        return opening;
    }
    return openArchiveFile(file, request, cancel, progress);
}

} // namespace velmora
