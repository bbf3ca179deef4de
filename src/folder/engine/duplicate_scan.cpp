#include "folder/engine/duplicate_scan.h"

#include "core/crew.h"
#include "core/message_digest.h"
#include "core/path_names.h"
#include "folder/engine/duplicate_folders.h"
#include "folder/engine/same_contents.h"

#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <tuple>
#include <unordered_map>

namespace velmora {

namespace {

/// The path that no link is in, where there is such a thing.
QString truePath(const TreeFolder &folder)
{
    const QString canonical = folder.source->isLocal() ? QFileInfo(folder.path).canonicalFilePath() : QString();
    return canonical.isEmpty() ? folder.path : canonical;
}

/// Parts the folders of a question into those that no other holds, and those that lie in one; the paths of the latter
/// lead through the former.
QList<DuplicateRoot> partRoots(const QList<DuplicateRoot> &asked, DuplicateScan &scan)
{
    QList<DuplicateRoot> sorted = asked;
    std::stable_sort(sorted.begin(), sorted.end(), [](const DuplicateRoot &a, const DuplicateRoot &b) {
        return truePath(a.folder).size() < truePath(b.folder).size();
    });
    QList<DuplicateRoot> inner;
    for (const DuplicateRoot &root : std::as_const(sorted)) {
        const QString path = truePath(root.folder);
        const auto outer = std::find_if(scan.roots.begin(), scan.roots.end(), [&](const DuplicateRoot &one) {
            const QString outerPath = truePath(one.folder);
            return one.folder.source->isLocal() == root.folder.source->isLocal() &&
                   (path == outerPath || isInside(path, outerPath));
        });
        if (outer == scan.roots.end()) {
            scan.roots.append(root);
            continue;
        }
        scan.overlapping.append(root.folder.path);
        const QString outerPath = truePath(outer->folder);
        const qsizetype skipped = outerPath.endsWith(u'/') ? outerPath.size() : outerPath.size() + 1;
        DuplicateRoot moved{outer->folder, root.isReference};
        moved.folder.path = joinedPath(outer->folder.path, path.mid(skipped));
        if (path == outerPath)
            outer->isReference = outer->isReference || root.isReference;
        else
            inner.append(moved);
    }
    return inner;
}

/// One scan behind its listing.
class Scan {
public:
    Scan(const ScannedFiles &listed, DuplicateScan &result, int threads, CancelFlag cancel)
        : m_listed(listed), m_result(result), m_threads(threads), m_cancel(std::move(cancel))
    {}

    void run(Progress &progress)
    {
        std::vector<FileClass> classes = candidates();
        qint64 total = 0;
        for (const FileClass &files : classes)
            total += m_listed.file(files.front()).size * qint64(files.size());
        SameContents contents(m_listed, m_result.roots, m_threads, m_cancel);
        const std::vector<FileClass> same = contents.split(
            std::move(classes), [&](qint64 settled) { progress.report(int(DuplicatePhase::Reading), settled, total); });
        for (const quint32 file : contents.unreadable())
            m_result.problems.append({FolderProblem::Kind::UnreadableFile, m_listed.pathOf(file), Side::Left});
        std::sort(m_result.problems.begin(), m_result.problems.end());

        m_contents.assign(m_listed.fileCount(), -1);
        for (const FileClass &files : same)
            addGroup(files);
        std::sort(m_result.groups.begin(), m_result.groups.end(), [](const DuplicateGroup &a, const DuplicateGroup &b) {
            return std::tuple(-wastedBytes(a), a.copies.first().path) <
                   std::tuple(-wastedBytes(b), b.copies.first().path);
        });
        addManyNamed();
        if (!m_cancel.isCancelled())
            m_result.folders = findDuplicateFolders(m_listed, m_contents);
    }

private:
    /// Files of a size that others have, one name for each; fills the lists of other names.
    std::vector<FileClass> candidates()
    {
        FileClass bySize(m_listed.fileCount());
        std::iota(bySize.begin(), bySize.end(), 0);
        std::erase_if(bySize, [this](quint32 file) { return m_listed.file(file).size == 0; });
        const auto order = [this](quint32 index) {
            const ScannedFile &file = m_listed.file(index);
            return std::tuple(file.size, file.identity.volume, file.identity.number, file.isLink, index);
        };
        std::sort(bySize.begin(), bySize.end(), [&](quint32 a, quint32 b) { return order(a) < order(b); });
        std::vector<FileClass> classes;
        FileClass files;
        for (std::size_t i = 0; i < bySize.size(); ++i) {
            const ScannedFile &file = m_listed.file(bySize[i]);
            if (i > 0 && file.size != m_listed.file(bySize[i - 1]).size)
                closeClass(files, classes);
            if (!files.empty() && file.hasIdentity() && file.identity == m_listed.file(files.back()).identity)
                m_otherNames[files.back()].push_back(bySize[i]);
            else
                files.push_back(bySize[i]);
        }
        closeClass(files, classes);
        return classes;
    }

    static void closeClass(FileClass &files, std::vector<FileClass> &classes)
    {
        if (files.size() > 1) {
            std::sort(files.begin(), files.end());
            files.shrink_to_fit();
            classes.push_back(files);
        }
        files.clear();
    }

    /// Where listings tell no identities, the files that have copies are asked for theirs.
    [[nodiscard]] FileClass oneNameEach(const FileClass &files)
    {
        FileClass different;
        std::vector<std::optional<FileIdentity>> known;
        for (const quint32 index : files) {
            const ScannedFile &file = m_listed.file(index);
            std::optional<FileIdentity> identity;
            if (!file.hasIdentity()) {
                const TreeFolder &root = rootOf(index).folder;
                const auto entry = root.source->describe(m_listed.pathOf(index), HiddenEntries::Listed);
                identity = entry ? entry->identity : std::nullopt;
            }
            const auto same = identity ? std::find(known.begin(), known.end(), identity) : known.end();
            if (same != known.end()) {
                m_otherNames[different[std::size_t(same - known.begin())]].push_back(index);
                continue;
            }
            different.push_back(index);
            known.push_back(identity);
        }
        return different;
    }

    void addGroup(const FileClass &files)
    {
        const FileClass different = oneNameEach(files);
        if (different.size() < 2)
            return;
        DuplicateGroup group;
        group.size = m_listed.file(different.front()).size;
        group.copies.reserve(qsizetype(different.size()));
        const auto number = qint32(m_result.groups.size());
        for (const quint32 file : different) {
            m_contents[file] = number;
            group.copies.append(copyOf(file));
        }
        m_result.groups.append(group);
    }

    [[nodiscard]] DuplicateCopy copyOf(quint32 index)
    {
        const ScannedFile &file = m_listed.file(index);
        const ScannedFolder &folder = m_listed.folderOf(index);
        DuplicateCopy copy{m_listed.pathOf(index), file.modifiedMs, folder.root, folder.isReference, file.isLink, {}};
        const auto names = m_otherNames.find(index);
        if (names != m_otherNames.end()) {
            for (const quint32 other : names->second) {
                copy.otherNames.append(m_listed.pathOf(other));
                // A reference stays by whatever name it is there.
                copy.isReference = copy.isReference || m_listed.folderOf(other).isReference;
            }
            m_result.sameFiles += copy.otherNames.size();
            m_otherNames.erase(names);
        }
        copy.otherNames.sort();
        return copy;
    }

    void addManyNamed()
    {
        for (const auto &[file, others] : m_otherNames) {
            ManyNamedFile many{m_listed.file(file).size, {m_listed.pathOf(file)}};
            for (const quint32 other : others)
                many.paths.append(m_listed.pathOf(other));
            many.paths.sort();
            m_result.sameFiles += qint64(others.size());
            m_result.manyNamed.append(many);
        }
        std::sort(m_result.manyNamed.begin(), m_result.manyNamed.end(),
                  [](const ManyNamedFile &a, const ManyNamedFile &b) { return a.paths.first() < b.paths.first(); });
    }

    [[nodiscard]] const DuplicateRoot &rootOf(quint32 file) const
    {
        return m_result.roots.at(m_listed.folderOf(file).root);
    }

    const ScannedFiles &m_listed;
    DuplicateScan &m_result;
    int m_threads;
    CancelFlag m_cancel;
    std::unordered_map<quint32, FileClass> m_otherNames; ///< of files that stand for all their names
    std::vector<qint32> m_contents;                      ///< see `findDuplicateFolders`
};

} // namespace

DuplicateScan scanDuplicates(const DuplicateQuestion &question, const CancelFlag &cancel, Progress &progress)
{
    DuplicateScan result;
    const QList<DuplicateRoot> inner = partRoots(question.roots, result);
    const ScannedFiles listed = listForDuplicates(question, inner, result, cancel, progress);
    if (!cancel.isCancelled())
        Scan(listed, result, question.threads > 0 ? question.threads : crewSize(), cancel).run(progress);
    result.cancelled = cancel.isCancelled();
    return result;
}

qint64 wastedBytes(const DuplicateGroup &group)
{
    const auto stays = std::count_if(group.copies.begin(), group.copies.end(),
                                     [](const DuplicateCopy &copy) { return copy.isReference || copy.isLink; });
    return group.size * (group.copies.size() - std::max<qsizetype>(stays, 1));
}

void addDigests(std::span<DuplicateGroup> groups, const CancelFlag &cancel)
{
    std::atomic<std::size_t> next{0};
    const auto work = [&](int) {
        const std::unique_ptr<FileOpener> opener = FileAccess::native().makeOpener();
        for (std::size_t i = next++; i < groups.size() && !cancel.isCancelled(); i = next++) {
            const QList<DuplicateCopy> &copies = std::as_const(groups[i]).copies;
            for (auto copy = copies.begin(); copy != copies.end() && groups[i].digest.isEmpty(); ++copy)
                groups[i].digest = duplicateDigest(*opener, copy->path, cancel);
        }
    };
    runCrew(int(std::min<std::size_t>(std::size_t(crewSize()), groups.size())), work, [] {});
}

QByteArray duplicateDigest(FileOpener &opener, const QString &path, const CancelFlag &cancel)
{
    constexpr qint64 blockSize = 1 << 20;
    const std::unique_ptr<OpenFile> file = opener.open(path, OpenHint::Unknown);
    if (!file)
        return {};
    QByteArray block(qsizetype(std::min(blockSize, file->size().value_or(blockSize) + 1)), Qt::Uninitialized);
    MessageDigest digest(MessageDigest::Kind::Md5);
    for (qint64 offset = 0; !cancel.isCancelled();) {
        const FilePiece piece = file->readAt(offset, block.data(), block.size());
        if (piece.failed)
            return {};
        digest.update(QByteArrayView(block.constData(), piece.length));
        if (piece.length < block.size())
            return digest.value();
        offset += piece.length;
    }
    return {};
}

} // namespace velmora
