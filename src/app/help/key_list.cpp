#include "app/help/key_list.h"

#include "app/session_kinds.h"
#include "session/session_widget.h"
#include "session/translate.h"

#include <QAction>
#include <QRegularExpression>

#include <algorithm>
#include <memory>

namespace velmora {

namespace {

/// The text without what marks its letter for the keyboard, "(&X)" or "&".
QString plainText(const QAction &action)
{
    static const QRegularExpression mark(QStringLiteral("\\(&.\\)"));
    return action.text().remove(mark).remove(u'&').trimmed();
}

QList<KeyEntry> keysIn(const QObject &part)
{
    QList<KeyEntry> entries;
    const auto actions = part.findChildren<QAction *>();
    for (const QAction *action : actions) {
        QStringList keys;
        const QList<QKeySequence> shortcuts = action->shortcuts();
        for (const QKeySequence &key : shortcuts)
            keys.append(key.toString(QKeySequence::NativeText));
        const KeyEntry entry{plainText(*action), keys.join(QStringLiteral(", "))};
        if (!keys.isEmpty() && !entry.command.isEmpty() && !entries.contains(entry))
            entries.append(entry);
    }
    return entries;
}

} // namespace

QList<KeyGroup> collectKeys(const QWidget &menuBar, SessionHost &host)
{
    QList<KeyGroup> groups{{Velmora::tr("Everywhere"), keysIn(menuBar)}};
    for (const SessionKindRow &kind : sessionKinds()) {
        const std::unique_ptr<QWidget> session(kind.create(host, nullptr));
        const QList<KeyEntry> entries = keysIn(*session);
        if (entries.isEmpty())
            continue;
        const auto same = std::find_if(groups.begin(), groups.end(),
                                       [&entries](const KeyGroup &group) { return group.entries == entries; });
        if (same == groups.end())
            groups.append({Velmora::tr(kind.displayName), entries});
        else
            same->title = Velmora::tr("%1, %2").arg(same->title, Velmora::tr(kind.displayName));
    }
    return groups;
}

} // namespace velmora
