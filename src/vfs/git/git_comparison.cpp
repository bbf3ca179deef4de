#include "vfs/git/git_comparison.h"

#include "vfs/git/git_tree.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace velmora {

namespace {

constexpr qsizetype mostOddNames = 100;

/// Trees compared the way they are; what the settings of the repository would change of that is off.
QStringList treeCall(const char *format, const GitComparison &comparison)
{
    return {QStringLiteral("diff-tree"),
            QStringLiteral("-r"),
            QStringLiteral("-z"),
            QLatin1String(comparison.knowsCopies ? "-C" : "-M"), // the first looks for renames, too
            QStringLiteral("--no-ext-diff"),
            QStringLiteral("--no-textconv"),
            QStringLiteral("--ignore-submodules=none"),
            QStringLiteral("--no-relative"),
            QStringLiteral("--full-index"),
            QLatin1String(format),
            QString::fromLatin1(comparison.states.left.tree),
            QString::fromLatin1(comparison.states.right.tree),
            QStringLiteral("--")};
}

/// Whether git gave up on likenesses because it would have had to look at too many pairs (`diff.renameLimit`). Looking
/// for copies it counts each changed file, too, and would find fewer renames than without.
bool hasTooManyPairs(const std::vector<GitChange> &changes)
{
    constexpr qint64 renameLimit = 1000; // git's own
    qint64 targets = 0;
    qint64 sources = 0;
    for (const GitChange &change : changes) {
        targets += change.status == GitStatus::Added ? 1 : 0;
        sources += change.status == GitStatus::Deleted || change.status == GitStatus::Modified ? 1 : 0;
    }
    return targets * sources > renameLimit * renameLimit;
}

class Comparer {
public:
    Comparer(const GitRequest &request, const CancelFlag &cancel, Progress &progress)
        : m_request(request), m_cancel(cancel), m_progress(progress)
    {}

    GitComparison run()
    {
        GitOpening opening = openRepository(m_request.path, m_cancel);
        m_result.repository = std::move(opening.repository);
        m_result.fault = opening.fault;
        step([this] { return findRevisions(); });
        step([this] { return m_request.sinceParting ? findParting() : GitFault(); });
        for (const Side side : bothSides)
            step([this, side] { return readDisk(side); });
        m_progress.report(int(GitPhase::Comparing), 0, 0);
        step([this] { return compareTrees(); });
        step([this] { return m_request.listsSame ? addSame() : GitFault(); });
        if (m_result.fault.isError())
            m_result.changes.clear();
        noteOddNames();
        return std::move(m_result);
    }

private:
    template <typename Step>
    void step(Step take)
    {
        if (!m_result.fault.isError())
            m_result.fault = take();
    }

    /// What stands for a side when commits are asked for.
    [[nodiscard]] static QString revisionOf(const GitSide &side)
    {
        const bool standsOnHead = side.kind == GitSide::Kind::Index || side.kind == GitSide::Kind::WorkTree;
        return standsOnHead ? QStringLiteral("HEAD") : side.kind == GitSide::Kind::Revision ? side.name : QString();
    }

    /// Asks for the commits and trees of both sides at once.
    GitFault findRevisions()
    {
        GitCallExtras extras;
        for (const Side side : bothSides) {
            m_result.states[side].side = m_request.sides[side];
            const QString name = revisionOf(m_request.sides[side]);
            const bool isAsked = m_request.sides[side].kind == GitSide::Kind::Revision;
            if (isAsked && !canBeRevision(name))
                return {GitFaultKind::UnknownState, name, {}};
            const QByteArray asked = name.isEmpty() ? QByteArray("HEAD") : name.toUtf8();
            extras.input += asked + "^{commit}\n" + asked + "^{tree}\n" + asked + '\n';
        }
        const GitReply reply = m_result.repository.caller().call(
            {QStringLiteral("cat-file"), QStringLiteral("--batch-check=%(objectname) %(objecttype)")}, m_cancel,
            extras);
        if (reply.fault.isError())
            return reply.fault;
        const QList<QByteArray> lines = reply.output.split('\n');
        for (const Side side : bothSides) {
            const qsizetype first = side == Side::Left ? 0 : 3;
            GitState &state = m_result.states[side];
            const GitSide::Kind kind = m_request.sides[side].kind;
            if (kind != GitSide::Kind::Folder)
                state.commit = nameIn(lines.value(first), "commit");
            if (kind != GitSide::Kind::Revision)
                continue;
            state.tree = nameIn(lines.value(first + 1), "tree");
            if (state.tree.isEmpty()) // "v1:docs" is a tree as it stands
                state.tree = nameIn(lines.value(first + 2), "tree");
            if (state.tree.isEmpty())
                return {GitFaultKind::UnknownState, m_request.sides[side].name, {}};
        }
        return {};
    }

    [[nodiscard]] QByteArray nameIn(const QByteArray &line, const char *type) const
    {
        const qsizetype length = m_result.repository.nameLength();
        return line.size() > length && line.mid(length) == QByteArray(" ") + type ? line.first(length) : QByteArray();
    }

    GitFault findParting()
    {
        Sides<GitState> &states = m_result.states;
        if (states.left.commit.isEmpty() || states.right.commit.isEmpty())
            return {GitFaultKind::NoMergeBase, {}, {}};
        GitCallExtras extras;
        extras.mayFail = true;
        const GitReply base =
            m_result.repository.caller().call({QStringLiteral("merge-base"), QString::fromLatin1(states.left.commit),
                                               QString::fromLatin1(states.right.commit)},
                                              m_cancel, extras);
        const QByteArray name = base.output.trimmed();
        if (base.fault.isError())
            return base.fault;
        if (base.exitCode != 0 || name.size() != m_result.repository.nameLength())
            return {GitFaultKind::NoMergeBase, {}, {}};
        const GitReply tree =
            m_result.repository.caller().call({QStringLiteral("rev-parse"), QStringLiteral("--verify"),
                                               QString::fromLatin1(name) + QLatin1String("^{tree}")},
                                              m_cancel);
        states.left.commit = name;
        states.left.tree = tree.output.trimmed();
        return tree.fault;
    }

    GitFault readDisk(Side side)
    {
        GitState &state = m_result.states[side];
        if (state.side.kind == GitSide::Kind::Revision || !state.tree.isEmpty())
            return {};
        if (!m_scratch)
            m_scratch = std::make_shared<GitScratch>(m_result.repository);
        if (!m_scratch->isValid())
            return {GitFaultKind::UnreadableFile, m_scratch->filesFolder(), {}};
        m_result.scratch = m_scratch;
        const GitFiles files = filesOf(state.side);
        m_result.conflicts += files.conflicts;
        if (files.fault.isError())
            return files.fault;
        const GitReply made = m_scratch->makeTree(m_result.repository, files.files, m_cancel);
        state.tree = made.output;
        return made.fault;
    }

    GitFiles filesOf(const GitSide &side)
    {
        if (side.kind == GitSide::Kind::Index)
            return indexFiles(m_result.repository, m_cancel);
        if (side.kind == GitSide::Kind::WorkTree)
            return workTreeFiles(m_result.repository, *m_scratch, m_request.untracked, m_cancel, m_progress);
        return folderFiles(m_result.repository, *m_scratch, side.name, m_cancel, m_progress);
    }

    GitFault compareTrees()
    {
        GitFault fault = listChanges();
        if (fault.isError() || !hasTooManyPairs(m_result.changes))
            return fault;
        m_result.knowsCopies = false;
        return listChanges();
    }

    GitFault listChanges()
    {
        const GitReply reply =
            m_result.repository.caller().call(treeCall("--raw", m_result), m_cancel, m_result.extras());
        if (reply.fault.isError())
            return reply.fault;
        std::optional<std::vector<GitChange>> changes = parseRawChanges(reply.output);
        if (!changes)
            return {GitFaultKind::Failed, {}, QStringLiteral("git diff-tree")};
        m_result.changes = std::move(*changes);
        return {};
    }

    /// What the changes do not name is the same on both sides.
    GitFault addSame()
    {
        const GitReply reply = m_result.repository.caller().call({QStringLiteral("ls-tree"), QStringLiteral("-r"),
                                                                  QStringLiteral("-z"), QStringLiteral("--full-tree"),
                                                                  QString::fromLatin1(m_result.states.right.tree)},
                                                                 m_cancel, m_result.extras());
        if (reply.fault.isError())
            return reply.fault;
        std::optional<std::vector<GitFile>> files = parseTreeListing(reply.output);
        if (!files)
            return {GitFaultKind::Failed, {}, QStringLiteral("git ls-tree")};
        QSet<QString> changed;
        for (const GitChange &change : m_result.changes)
            changed.insert(change.paths.right);
        for (GitFile &file : *files) {
            if (changed.contains(file.path))
                continue;
            GitChange same;
            same.paths = {file.path, file.path};
            same.entries = {file.entry, file.entry};
            m_result.changes.push_back(std::move(same));
        }
        std::stable_sort(m_result.changes.begin(), m_result.changes.end(),
                         [](const GitChange &one, const GitChange &other) { return one.path() < other.path(); });
        return {};
    }

    void noteOddNames()
    {
        for (const GitChange &change : m_result.changes) {
            for (const Side side : bothSides) {
                const QString &path = change.paths[side];
                if (!path.isEmpty() && leadsElsewhere(path) && m_result.oddNames.size() < mostOddNames &&
                    !m_result.oddNames.contains(path))
                    m_result.oddNames.append(path);
            }
        }
    }

    const GitRequest &m_request;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    std::shared_ptr<GitScratch> m_scratch;
    GitComparison m_result;
};

/// The sizes of contents by their names.
GitFault findSizes(const GitComparison &comparison, const CancelFlag &cancel, QHash<QByteArray, qint64> &sizes)
{
    GitCallExtras extras = comparison.extras();
    for (const GitChange &change : comparison.changes) {
        for (const Side side : bothSides) {
            const GitEntry &entry = change.entries[side];
            if (entry.isThere() && !entry.isSubmodule() && !sizes.contains(entry.name)) {
                sizes.insert(entry.name, -1);
                extras.input += entry.name + '\n';
            }
        }
    }
    return findContentSizes(comparison.repository, extras, cancel, sizes);
}

} // namespace

GitCallExtras GitComparison::extras() const
{
    GitCallExtras extras;
    if (scratch)
        extras.variables = scratch->variables();
    return extras;
}

GitComparison compareGit(const GitRequest &request, const CancelFlag &cancel, Progress &progress)
{
    return Comparer(request, cancel, progress).run();
}

GitFault fillDetails(GitComparison &comparison, const CancelFlag &cancel)
{
    QHash<QByteArray, qint64> sizes;
    if (GitFault fault = findSizes(comparison, cancel, sizes); fault.isError())
        return fault;
    for (GitChange &change : comparison.changes) {
        for (const Side side : bothSides)
            change.sizes[side] = sizes.value(change.entries[side].name, -1);
    }
    const GitReply counts =
        comparison.repository.caller().call(treeCall("--numstat", comparison), cancel, comparison.extras());
    if (counts.fault.isError())
        return counts.fault;
    return takeLineCounts(counts.output, comparison.changes)
               ? GitFault()
               : GitFault{GitFaultKind::Failed, {}, QStringLiteral("git diff-tree")};
}

} // namespace velmora
