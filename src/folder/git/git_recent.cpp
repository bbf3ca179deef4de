#include "folder/git/git_recent.h"

#include "core/settings_store.h"

namespace velmora {

namespace {

// One list for all repositories, so that those that are gone do not stay for ever: each is a repository, a tabulator
// and a state.
constexpr qsizetype mostKept = 100;
constexpr qsizetype mostOffered = 8;

QString key()
{
    return QStringLiteral("git/recentStates");
}

} // namespace

QStringList recentGitStates(const QString &repository)
{
    QStringList states;
    const QStringList kept = SessionSettings().value(key()).toStringList();
    for (const QString &one : kept) {
        if (one.startsWith(repository + u'\t') && states.size() < mostOffered)
            states.append(one.sliced(repository.size() + 1));
    }
    return states;
}

void rememberGitState(const QString &repository, const QString &state)
{
    SessionSettings settings;
    QStringList kept = settings.value(key()).toStringList();
    const QString one = repository + u'\t' + state;
    kept.removeAll(one);
    kept.prepend(one);
    settings.setValue(key(), kept.mid(0, mostKept));
}

} // namespace velmora
