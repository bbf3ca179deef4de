#pragma once

#include "core/cancel_flag.h"
#include "core/child_process.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace velmora {

/// Why something of a repository is not to be had.
enum class GitFaultKind : quint8 {
    None,
    NoProgram,      ///< there is no `git` on the search path, or it cannot be started
    NoRepository,   ///< no repository holds the path
    NotOurs,        ///< it belongs to somebody else, and git refuses it
    UnknownState,   ///< what should be compared is not known to the repository; `about` names it
    NoFolder,       ///< the state has no folder of this path; `about` names it
    NoWorkTree,     ///< the repository has no files beside it
    NoMergeBase,    ///< the two states have nothing in common
    UnreadableFile, ///< a file or folder of the disk; `about` names it
    TooMuch,        ///< more entries or more output than anybody can look at
    TooSlow,        ///< git did not come to an end
    Failed,         ///< git failed
    Stopped,        ///< the caller asked for it
};

struct GitFault {
    GitFaultKind kind = GitFaultKind::None;
    QString about = {};  ///< a path or the name of a state
    QString detail = {}; ///< git's own words, or the system's; at most a few lines

    [[nodiscard]] bool isError() const noexcept { return kind != GitFaultKind::None; }
};

struct GitReply {
    QByteArray output;
    GitFault fault;
    int exitCode = 0;
    QString words = {}; ///< what git wrote beside its output; at most a few lines
};

/// What one call of git needs beside its arguments.
struct GitCallExtras {
    QByteArray input = {};
    QMap<QString, QString> variables = {};
    qint64 mostOutput = qint64(512) * 1024 * 1024;
    bool mayFail = false; ///< an exit status other than 0 is an answer, not a fault
};

/// Runs `git` for one folder so that nothing which the repository holds or says is executed: no hook, filter, file
/// system monitor, pager, editor, signature check, helper for credentials or transport, and nothing is fetched or
/// written to the repository. Variables that point git elsewhere are not passed on. Whose repositories are read stays
/// for git to decide (`safe.directory`). A value.
class GitCaller {
public:
    /// `folder` is absolute.
    explicit GitCaller(QString folder) : m_folder(std::move(folder)) {}

    /// For a worker. Arguments reach git as they are: names that were not made here stand behind "--end-of-options".
    [[nodiscard]] GitReply call(const QStringList &arguments, const CancelFlag &cancel,
                                const GitCallExtras &extras = {}) const;
    /// The same call for somebody else to make; without a program when there is no `git`.
    [[nodiscard]] ChildCall childCall(const QStringList &arguments, const GitCallExtras &extras = {}) const;
    [[nodiscard]] const QString &folder() const noexcept { return m_folder; }

private:
    QString m_folder;
};

} // namespace velmora
