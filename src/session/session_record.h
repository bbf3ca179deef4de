#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

namespace velmora {

/// The up to three inputs of a session; what a kind does not use stays empty.
struct SessionPaths {
    QString left;
    QString right;
    QString base; ///< three-way kinds only

    friend bool operator==(const SessionPaths &, const SessionPaths &) = default;
};

/// A session as it is remembered: in the history, in session files and in workspaces.
struct SessionRecord {
    QString name;
    QString type; ///< a session kind identifier
    SessionPaths paths;
    QJsonObject options; ///< in the kind's own form, empty when there is nothing to say
    QDateTime timestamp;

    friend bool operator==(const SessionRecord &, const SessionRecord &) = default;
};

} // namespace velmora
