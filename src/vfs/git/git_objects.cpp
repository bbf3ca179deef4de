#include "vfs/git/git_objects.h"

namespace velmora {

namespace {

/// A disk that wakes up answers within that; a filter or network that git would wait for is off.
constexpr std::chrono::seconds answerLimit{120};
constexpr qint64 pieceSize = qint64(256) * 1024;

ChildCall callOf(const GitCaller &caller, const QMap<QString, QString> &variables)
{
    GitCallExtras extras;
    extras.variables = variables;
    ChildCall call = caller.childCall({QStringLiteral("cat-file"), QStringLiteral("--batch")}, extras);
    call.limit = answerLimit;
    return call;
}

ChildDesk::Answer answer(ChildTalk &git, const QByteArray &name, qint64 size, const CancelFlag &cancel,
                         const ChildDesk::Giver &give)
{
    constexpr qint64 mostHead = 200;
    const QByteArray head = git.ask(name + '\n') ? git.readLine(mostHead, cancel) : QByteArray();
    if (head == name + " missing")
        return ChildDesk::Answer::Refused;
    if (head != name + " blob " + QByteArray::number(size)) // the content of something else would follow
        return ChildDesk::Answer::Broken;
    qint64 left = size;
    for (bool isWanted = true; left > 0 && isWanted;) {
        QByteArray bytes = git.read(qMin(left, pieceSize), cancel);
        if (bytes.isEmpty())
            break;
        left -= bytes.size();
        isWanted = give(std::move(bytes));
    }
    return left == 0 && git.read(1, cancel) == "\n" ? ChildDesk::Answer::Whole : ChildDesk::Answer::Broken;
}

} // namespace

GitObjects::GitObjects(const GitCaller &caller, const QMap<QString, QString> &variables)
    : m_desk(callOf(caller, variables))
{}

bool GitObjects::read(const QByteArray &name, qint64 size, const Sink &sink, const CancelFlag &cancel) const
{
    return m_desk.ask(
        [&](ChildTalk &git, bool, const ChildDesk::Giver &give) { return answer(git, name, size, cancel, give); },
        sink);
}

} // namespace velmora
