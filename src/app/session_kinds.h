#pragma once

#include "session/session_host.h"

#include <QIcon>
#include <QString>

#include <optional>
#include <span>

class QWidget;

namespace velmora {

class SessionWidget;
struct RecoveryRecord;
struct SessionPaths;

/// Kinds that stand together in the menus; a separator stands between two groups.
enum class KindGroup { Compare, MergeAndSync, System, Contents, Tools };

/// Which single path on the command line opens a session of the kind, given its switch.
enum class LonePath { None, Any, File, Folder };

/// Everything that the shell knows of one session kind.
///
/// Texts are English sources of the "Velmora" context; a null text means that the kind does not appear there.
struct SessionKindRow {
    using Factory = SessionWidget *(*)(SessionHost &, QWidget *parent);

    QLatin1String id;         ///< the session kind identifier
    QLatin1String alias = {}; ///< a second identifier that is understood
    KindGroup group;
    int sides;                      ///< how many paths the session takes: 1, 2, or 3 with a base
    const char *menuText = nullptr; ///< in the "New session" menu
    bool inTools = false;           ///< listed in the Tools menu, by its display name
    const char *displayName;
    const char *tabTitle;                                              ///< of an empty session; takes the tab number
    const char *pairTitle = QT_TRANSLATE_NOOP("Velmora", "%1 <-> %2"); ///< of a session on two paths; takes their names
    const char *loneTitle = "%1";                                      ///< of a session on one path; takes its name
    const char *startText = QT_TRANSLATE_NOOP("Velmora", "Comparing..."); ///< what the window says when it begins
    bool opensPairs = false; ///< two paths on the command line or from Explorer may open this kind
    LonePath lonePath = LonePath::None;
    bool filesOnly = false;                           ///< folders dropped on its tile are refused
    std::optional<SessionHost::Purpose> purpose = {}; ///< what other sessions ask for to get this kind
    bool remote = false;                              ///< leads to another machine, whatever its paths are
    const char *icon;                                 ///< a resource path, which a theme may override
    const char *slot;                                 ///< the main window's slot that opens an empty session
    const char *summary;                              ///< one sentence: what the session is for
    Factory create;
    /// Tells a recovery record of the kind that holds what is not saved from one that was left behind; null for a kind
    /// that keeps none.
    bool (*holdsUnsaved)(const RecoveryRecord &record) = nullptr;
};

/// All kinds, in the order of the menus.
[[nodiscard]] std::span<const SessionKindRow> sessionKinds();

/// The row of a kind, found by identifier or alias, whatever its letter case and the blanks around it; null for a kind
/// that nobody knows.
[[nodiscard]] const SessionKindRow *findSessionKind(const QString &kind);

/// The kind for what a session asks for; empty when there is none.
[[nodiscard]] QString kindFor(SessionHost::Purpose purpose);

/// The row of a kind that is known to be there. The program ends when it is not.
[[nodiscard]] const SessionKindRow &sessionKind(QLatin1String id);

/// The kind's icon under the current theme, empty for an unknown kind.
[[nodiscard]] QIcon sessionKindIcon(const QString &kind);

/// The title of a session of `kind` on `paths`: after both sides, or after the one that is there.
[[nodiscard]] QString sessionTitle(const SessionKindRow &kind, const SessionPaths &paths);

/// What a path is called in titles: its last part, or the whole where there is none, as for a drive.
[[nodiscard]] QString pathName(const QString &path);

} // namespace velmora
