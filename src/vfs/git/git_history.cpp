#include "vfs/git/git_history.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr int mostRefs = 5000;
constexpr int mostCommits = 10000;
constexpr qint64 second = 1000;

QString textOf(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes);
}

GitFault listStashes(const GitCaller &caller, const CancelFlag &cancel, std::vector<GitRef> &refs)
{
    GitCallExtras extras;
    extras.mayFail = true; // there is none
    const GitReply reply =
        caller.call({QStringLiteral("log"), QStringLiteral("--walk-reflogs"), QStringLiteral("-z"),
                     QStringLiteral("-s"), QStringLiteral("--no-show-signature"), QStringLiteral("--format=%ct%x00%gs"),
                     QStringLiteral("--max-count=100"), QStringLiteral("refs/stash"), QStringLiteral("--")},
                    cancel, extras);
    if (reply.fault.isError() || reply.exitCode != 0)
        return reply.fault;
    const QList<QByteArray> fields = reply.output.split('\0');
    for (qsizetype i = 0; i + 1 < fields.size(); i += 2) {
        refs.push_back({GitRef::Kind::Stash, QStringLiteral("stash@{%1}").arg(i / 2),
                        fields.at(i).toLongLong() * second, textOf(fields.at(i + 1)), false});
    }
    return {};
}

bool takeRef(const QList<QByteArray> &fields, GitRef &ref)
{
    const QString name = nameFromNative({fields.at(0).constData(), std::size_t(fields.at(0).size())});
    static constexpr struct {
        QLatin1String start;
        GitRef::Kind kind;
    } kinds[] = {{QLatin1String("refs/heads/"), GitRef::Kind::Branch},
                 {QLatin1String("refs/tags/"), GitRef::Kind::Tag},
                 {QLatin1String("refs/remotes/"), GitRef::Kind::RemoteBranch}};
    const auto *kind = std::find_if(std::begin(kinds), std::end(kinds),
                                    [&name](const auto &one) { return name.startsWith(one.start); });
    if (kind == std::end(kinds) || name.endsWith(QLatin1String("/HEAD")))
        return false;
    ref = {kind->kind, name.sliced(kind->start.size()), fields.at(1).toLongLong() * second, textOf(fields.at(2)),
           fields.at(3) == "*"};
    return true;
}

} // namespace

GitRefs listRefs(const GitRepository &repository, const CancelFlag &cancel)
{
    GitRefs result;
    result.fault = listStashes(repository.caller(), cancel, result.refs);
    if (result.fault.isError())
        return result;
    const GitReply reply = repository.caller().call(
        {QStringLiteral("for-each-ref"), QStringLiteral("--sort=-creatordate"),
         QStringLiteral("--count=%1").arg(mostRefs),
         QStringLiteral("--format=%(refname)%00%(creatordate:unix)%00%(contents:subject)%00%(HEAD)"),
         QStringLiteral("refs/heads"), QStringLiteral("refs/tags"), QStringLiteral("refs/remotes")},
        cancel);
    result.fault = reply.fault;
    QList<QByteArray> lines = reply.output.split('\n');
    result.areMore = lines.size() > mostRefs;
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split('\0');
        GitRef ref;
        if (fields.size() == 4 && takeRef(fields, ref))
            result.refs.push_back(std::move(ref));
    }
    const auto rank = [](const GitRef &ref) {
        static constexpr int ranks[] = {1, 3, 2, 0}; // by kind
        return ranks[std::size_t(ref.kind)];
    };
    std::stable_sort(result.refs.begin(), result.refs.end(),
                     [&rank](const GitRef &one, const GitRef &other) { return rank(one) < rank(other); });
    return result;
}

GitCommits commitsBetween(const GitRepository &repository, const QByteArray &left, const QByteArray &right,
                          const CancelFlag &cancel)
{
    GitCommits result;
    if (left.isEmpty() || right.isEmpty() || left == right)
        return result;
    const GitReply reply =
        repository.caller().call({QStringLiteral("log"), QStringLiteral("-z"), QStringLiteral("-s"),
                                  QStringLiteral("--no-show-signature"), QStringLiteral("--encoding=UTF-8"),
                                  QStringLiteral("--left-right"), QStringLiteral("--max-count=%1").arg(mostCommits + 1),
                                  QStringLiteral("--format=%m%x00%H%x00%P%x00%at%x00%an%x00%s"),
                                  QString::fromLatin1(left + "..." + right), QStringLiteral("--")},
                                 cancel);
    result.fault = reply.fault;
    const QList<QByteArray> fields = reply.output.split('\0');
    for (qsizetype i = 0; i + 5 < fields.size(); i += 6) {
        GitCommit commit;
        commit.isOnLeft = fields.at(i) == "<";
        commit.name = fields.at(i + 1);
        commit.parents = fields.at(i + 2).isEmpty() ? QList<QByteArray>() : fields.at(i + 2).split(' ');
        commit.timeMs = fields.at(i + 3).toLongLong() * second;
        commit.author = textOf(fields.at(i + 4));
        commit.subject = textOf(fields.at(i + 5));
        result.commits.push_back(std::move(commit));
    }
    result.areMore = result.commits.size() > std::size_t(mostCommits);
    if (result.areMore)
        result.commits.resize(mostCommits);
    return result;
}

QString emptyTreeName(const GitRepository &repository)
{
    // The digest of "tree 0" and a zero byte, which every repository knows.
    return repository.algorithm == ContentIdentity::Algorithm::GitBlobSha256
               ? QStringLiteral("6ef19b41225c5369f1c104d45d8d85efa9b057b53b14b4b9b939dd74decc5321")
               : QStringLiteral("4b825dc642cb6eb9a060e54bf8d69288fbee4904");
}

} // namespace velmora
