#include "app/library/session_offer.h"

#include "app/library/session_files.h"
#include "app/session_kinds.h"
#include "core/visible_name.h"
#include "platform/network_mount.h"
#include "session/translate.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>

namespace velmora {

namespace {

bool leadsElsewhere(const QString &path)
{
    const QString clean = QDir::cleanPath(QDir::fromNativeSeparators(path));
    // "//host/share", or a host or scheme before a colon; a single letter there is a drive.
    static const QRegularExpression remote(QStringLiteral("^(//|[^/:]{2,}:)"));
    if (QDir::fromNativeSeparators(path).contains(remote))
        return true;
    const QString mount = networkMountOf(clean);
    return !mount.isEmpty() && mount != networkMountOf(QDir::homePath());
}

/// The sessions that a workspace may open as tabs.
QList<SessionRecord> sessionsToOpen(const Workspace &workspace)
{
    if (workspace.openTabs.isEmpty())
        return workspace.sessions;
    QList<SessionRecord> sessions;
    for (const OpenTab &tab : workspace.openTabs)
        sessions.append(tab.record);
    return sessions;
}

} // namespace

bool leadsElsewhere(const SessionRecord &session)
{
    const SessionKindRow *kind = findSessionKind(session.type);
    return (kind && kind->remote) || leadsElsewhere(session.paths.base) || leadsElsewhere(session.paths.left) ||
           leadsElsewhere(session.paths.right);
}

bool leadsElsewhere(const Workspace &workspace)
{
    const QList<SessionRecord> sessions = sessionsToOpen(workspace);
    return std::any_of(sessions.begin(), sessions.end(),
                       [](const SessionRecord &session) { return leadsElsewhere(session); });
}

QString offerText(const SessionRecord &session)
{
    const SessionKindRow *kind = findSessionKind(session.type);
    QStringList lines = {Velmora::tr("Type:") + u' ' +
                         (kind ? Velmora::tr(kind->displayName) : visibleText(session.type))};
    const auto add = [&lines](const QString &label, const QString &path) {
        if (!path.isEmpty())
            lines.append(label + u' ' + visibleText(QDir::toNativeSeparators(path)));
    };
    add(Velmora::tr("Base:"), session.paths.base);
    add(Velmora::tr("Left:"), session.paths.left);
    add(Velmora::tr("Right:"), session.paths.right);
    return lines.join(u'\n');
}

QString offerText(const Workspace &workspace)
{
    constexpr qsizetype mostTold = 10;
    const QList<SessionRecord> sessions = sessionsToOpen(workspace);
    QStringList lines;
    for (const SessionRecord &session : sessions.first(std::min(mostTold, sessions.size())))
        lines.append(offerText(session).replace(u'\n', QLatin1String("  ")));
    if (sessions.size() > mostTold)
        lines.append(Velmora::tr("... and %1 more").arg(sessions.size() - mostTold));
    return lines.join(u'\n');
}

QString visibleText(const QString &text)
{
    constexpr qsizetype half = 2000;
    const bool isLong = text.size() > 2 * half;
    return visibleName(isLong ? text.first(half) + QChar(0x2026) + text.last(half) : text);
}

} // namespace velmora
