#pragma once

#include "core/cancel_flag.h"
#include "vfs/git/git_call.h"

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <memory>

namespace velmora {

/// Contents of a repository by their names. One `git cat-file --batch` answers for all of them; it is started at the
/// first question, and again when it has failed. Usable from any thread at once; one content is read at a time.
class GitObjects {
public:
    /// `variables` as `GitCallExtras` has them.
    GitObjects(const GitCaller &caller, const QMap<QString, QString> &variables);
    /// Nothing may be being read any more.
    ~GitObjects();
    GitObjects(const GitObjects &) = delete;
    GitObjects &operator=(const GitObjects &) = delete;

    /// Takes the bytes as they come; false when no more are wanted.
    using Sink = std::function<bool(QByteArrayView)>;

    /// True when the content called `name` (hexadecimal) was there, has `size` bytes, and the sink took all of them.
    /// For a worker; the sink is called on the same thread.
    [[nodiscard]] bool read(const QByteArray &name, qint64 size, const Sink &sink, const CancelFlag &cancel) const;

private:
    class Desk;

    std::unique_ptr<Desk> m_desk;
};

} // namespace velmora
