#pragma once

#include "core/cancel_flag.h"
#include "core/child_desk.h"
#include "vfs/git/git_call.h"

#include <QByteArray>
#include <QMap>
#include <QString>

namespace velmora {

/// Contents of a repository by their names. One `git cat-file --batch` answers for all of them; it is started at the
/// first question, and again when it has failed. Usable from any thread at once; one content is read at a time.
class GitObjects {
public:
    /// `variables` as `GitCallExtras` has them.
    GitObjects(const GitCaller &caller, const QMap<QString, QString> &variables);

    using Sink = ChildDesk::Sink;

    /// True when the content called `name` (hexadecimal) was there, has `size` bytes, and the sink took all of them.
    /// For a worker; the sink is called on the same thread.
    [[nodiscard]] bool read(const QByteArray &name, qint64 size, const Sink &sink, const CancelFlag &cancel) const;

private:
    mutable ChildDesk m_desk; ///< guards itself
};

} // namespace velmora
