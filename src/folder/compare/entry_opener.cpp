#include "folder/compare/entry_opener.h"

#include "session/passing_copies.h"

namespace velmora {

EntryOpener::EntryOpener(const SessionHost &host, QObject *parent) : QObject(parent), m_host(host) {}

void EntryOpener::openAs(const QString &kind, const SourcePair &sources, const FolderDiffItem &item)
{
    const bool haveNoPaths = std::any_of(bothSides.begin(), bothSides.end(), [&](Side side) {
        return !pathOn(item, side).isEmpty() && !sources[side]->isLocal();
    });
    if (haveNoPaths && !item.isDir) {
        start(kind, sources, item);
        return;
    }
    remember(item);
    Q_EMIT wanted(kind, item.leftPath, item.rightPath);
}

void EntryOpener::start(const QString &kind, const SourcePair &sources, const FolderDiffItem &item)
{
    m_runner.start(
        [kind, sources, item, test = m_host.kindTest(), copies = folderForCopies()](const CancelFlag &cancel,
                                                                                    Progress &) {
            Answer answer;
            for (const Side side : bothSides) {
                const QString &path = pathOn(item, side);
                if (path.isEmpty())
                    continue;
                answer.isGone = !sources[side]->describe(path, HiddenEntries::Listed);
                if (!answer.isGone)
                    answer.paths[side] = sources[side]->layOut(path, copies, cancel).path;
                if (answer.paths[side].isEmpty()) {
                    answer.missing = path;
                    return answer;
                }
            }
            answer.kind = kind.isEmpty() ? test(answer.paths) : kind;
            return answer;
        },
        [this, sources, item](RunOutcome<Answer> &&outcome) {
            if (outcome.end == RunEnd::Cancelled)
                return;
            const Answer answer = outcome.value.value_or(Answer{{}, {item.leftPath, item.rightPath}, {}, false});
            if (answer.missing.isEmpty()) {
                for (const Side side : bothSides)
                    noteCopy(answer.paths[side], sources[side]->location().shown + pathOn(item, side));
                remember(item);
                Q_EMIT wanted(answer.kind, answer.paths.left, answer.paths.right);
            } else if (answer.isGone) {
                Q_EMIT gone(item.name, answer.missing);
            } else {
                Q_EMIT unreadable(answer.missing);
            }
        });
}

QStringList EntryOpener::openedOf(const QList<FolderDiffItem> &items) const
{
    const QSet<QString> opened(m_opened.begin(), m_opened.end());
    QStringList names;
    for (const FolderDiffItem &item : items) {
        if (opened.contains(item.leftPath) || opened.contains(item.rightPath))
            names.append(item.name);
    }
    return names;
}

void EntryOpener::remember(const FolderDiffItem &item)
{
    constexpr qsizetype mostRemembered = 200;
    for (const QString &path : {item.leftPath, item.rightPath}) {
        m_opened.removeOne(path);
        if (!path.isEmpty())
            m_opened.append(path);
    }
    while (m_opened.size() > mostRemembered)
        m_opened.removeFirst();
}

QString EntryOpener::folderForCopies()
{
    if (!m_copies)
        m_copies = std::make_unique<PassingFolder>();
    return m_copies->path();
}

} // namespace velmora
