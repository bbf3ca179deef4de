#include "vfs/archive/archive_layout.h"

#include "core/path_names.h"
#include "platform/file_access.h"
#include "vfs/archive/archive_source.h"
#include "vfs/safe_name.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSet>

#include <map>
#include <vector>

namespace velmora {

namespace {

/// What is to be read of one archive.
struct Wanted {
    /// By entry; several where links lead to one. Paths to write to, or names for problems.
    std::map<qint32, QStringList> paths;
};

/// The files that are wanted, by the archive that they are in.
using WantedFiles = std::map<const ArchiveSource *, Wanted>;

std::vector<qint32> numbers(const Wanted &wanted)
{
    std::vector<qint32> entries;
    entries.reserve(wanted.paths.size());
    for (const auto &[entry, paths] : wanted.paths)
        entries.push_back(entry);
    return entries;
}

/// Makes the folders, and collects the files to be written. Goes as deep as the limits of an archive let it.
class LayOutPlan {
public:
    LayOutPlan(LayOutResult &result, const CancelFlag &cancel) : m_result(result), m_cancel(cancel) {}

    WantedFiles files;

    /// True when the entry has a place.
    bool add(const ArchiveSource &archive, const QString &path, const QString &target, int depth)
    {
        constexpr int deepest = 2000;
        const ArchiveSource::Spot spot = archive.find(path);
        if (!spot.isThere() || m_cancel.isCancelled() || depth > deepest)
            return false;
        const ArchiveNode &node = spot.archive->tree().node(spot.node);
        if (node.kind == ArchiveEntryKind::File) {
            files[spot.archive].paths[node.entry].append(target);
            return true;
        }
        return node.kind == ArchiveEntryKind::Folder && addFolder(archive, spot, path, target, depth);
    }

private:
    bool addFolder(const ArchiveSource &archive, const ArchiveSource::Spot &spot, const QString &path,
                   const QString &target, int depth)
    {
        const std::pair key(spot.archive, spot.node);
        const bool isInside = std::find(m_open.begin(), m_open.end(), key) != m_open.end();
        if (isInside || !QDir().mkpath(target)) // a link to a folder around it has no end
            return false;
        m_open.push_back(key);
        for (const qint32 child : spot.archive->tree().children(spot.node)) {
            const QString &name = spot.archive->tree().node(child).name;
            if (!canStandInFolder(name))
                noteProblem(m_result.problems, ArchiveProblem::Kind::NameUnfit, joinedPath(path, name));
            else
                add(archive, joinedPath(path, name), joinedPath(target, name), depth + 1);
        }
        m_open.pop_back();
        return true;
    }

    LayOutResult &m_result;
    const CancelFlag &m_cancel;
    std::vector<std::pair<const ArchiveSource *, qint32>> m_open; ///< the folders around the one at hand
};

/// Writes the contents of one archive to their places.
class WritingVisitor final : public ContentVisitor {
public:
    WritingVisitor(const ArchiveSource &archive, const Wanted &wanted, LayOutResult &result, qint64 &done,
                   Progress &progress)
        : m_archive(archive), m_wanted(wanted), m_result(result), m_done(done), m_progress(progress)
    {}

    void begin(qint32 entry) override
    {
        m_entry = entry;
        m_file.setFileName(paths().first());
        m_opens = m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    }
    bool take(QByteArrayView bytes) override
    {
        m_done += bytes.size();
        m_progress.report(0, m_done, 0, m_file.fileName());
        m_opens = m_opens && m_file.write(bytes.data(), bytes.size()) == bytes.size();
        return m_opens;
    }
    bool end(bool isWhole, const QString &error) override
    {
        if (m_opens && isWhole)
            finish();
        else if (m_opens)
            noteProblem(m_result.problems, ArchiveProblem::Kind::Damaged, bareName(m_file.fileName()), error);
        if (!m_opens)
            m_result.error = m_file.errorString();
        m_file.close();
        if (!m_opens || !isWhole)
            m_file.remove();
        return m_opens;
    }

private:
    [[nodiscard]] const QStringList &paths() const { return m_wanted.paths.at(m_entry); }

    void finish()
    {
        const qint64 time = (*m_archive.parts().entries)[std::size_t(m_entry)].modifiedMs;
        m_opens = m_file.flush();
        if (time != 0)
            m_file.setFileTime(QDateTime::fromMSecsSinceEpoch(time), QFileDevice::FileModificationTime);
        m_file.close();
        for (const QString &other : paths().mid(1))
            m_opens = m_opens && QFile::copy(m_file.fileName(), other);
        m_result.files += paths().size();
    }

    const ArchiveSource &m_archive;
    const Wanted &m_wanted;
    LayOutResult &m_result;
    qint64 &m_done;
    Progress &m_progress;
    QFile m_file;
    qint32 m_entry = 0;
    bool m_opens = false;
};

void noteEnd(VisitEnd end, QList<ArchiveProblem> &problems)
{
    if (end == VisitEnd::TooMuch)
        noteProblem(problems, ArchiveProblem::Kind::TooMuchContent, {});
    else if (end == VisitEnd::Broken)
        noteProblem(problems, ArchiveProblem::Kind::Incomplete, {});
}

} // namespace

LayOutResult layOutEntries(const ArchiveSource &archive, const QStringList &paths, const QString &folder,
                           const CancelFlag &cancel, Progress &progress)
{
    LayOutResult result;
    LayOutPlan plan(result, cancel);
    QStringList targets;
    QSet<QString> taken;
    for (const QString &path : paths) {
        const QString name = bareName(path);
        const QString target = joinedPath(folder, name);
        if (!canStandInFolder(name))
            noteProblem(result.problems, ArchiveProblem::Kind::NameUnfit, path);
        else if (taken.contains(target))
            noteProblem(result.problems, ArchiveProblem::Kind::SameName, path);
        else if (plan.add(archive, path, target, 0))
            targets.append(*taken.insert(target));
    }
    qint64 done = 0;
    for (const auto &[source, wanted] : plan.files) {
        WritingVisitor visitor(*source, wanted, result, done, progress);
        noteEnd(source->parts().contents->visit(numbers(wanted), visitor, cancel), result.problems);
        if (!result.error.isEmpty())
            break;
    }
    for (const QString &target : targets) {
        if (FileAccess::native().describe(target))
            result.laidOut.append(target);
    }
    return result;
}

} // namespace velmora
