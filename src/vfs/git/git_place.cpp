#include "vfs/git/git_place.h"

namespace velmora {

namespace {

const QString sign = QStringLiteral("git:");

/// Where the state ends in a place; -1 for what is none.
qsizetype endOfState(const QString &text)
{
    // Of the states that are no revisions the names begin with ":", which no other has.
    const qsizetype from = sign.size() + (text.startsWith(sign + u':') ? 1 : 0);
    return text.startsWith(sign) ? text.indexOf(u':', from) : -1;
}

} // namespace

bool isGitPlace(const QString &text)
{
    return gitPlaceOf(text).has_value();
}

std::optional<GitPlace> gitPlaceOf(const QString &text, const QDir &folder)
{
    const qsizetype end = endOfState(text);
    const GitSide side = gitSideOf(text.mid(sign.size(), end - sign.size()));
    const bool isOdd = side.kind == GitSide::Kind::Folder || (side.kind == GitSide::Kind::Revision &&
                                                              (!canBeRevision(side.name) || side.name.contains(u':')));
    if (end < 0 || isOdd)
        return std::nullopt;
    const QString path = QDir::fromNativeSeparators(text.sliced(end + 1));
    return GitPlace{side, QDir::cleanPath(path.isEmpty() ? folder.absolutePath() : folder.absoluteFilePath(path))};
}

QString gitPlaceText(const GitPlace &place)
{
    return sign + gitSideText(place.side) + u':' + place.path;
}

} // namespace velmora
