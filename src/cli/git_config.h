#pragma once

#include "core/child_process.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace velmora::cli {

/// Runs git in one folder.
class Git {
public:
    /// `folder` is where it runs; `variables` come on top of those of this process.
    explicit Git(const QString &folder, const QMap<QString, QString> &variables = {});

    /// False when there is no git on the search path.
    [[nodiscard]] bool isThere() const { return !m_program.isEmpty(); }

    /// Runs it with `arguments` and waits for its end, half a minute at most.
    [[nodiscard]] ChildRun run(const QStringList &arguments) const;

    /// What a run that did not go well says; of one that never ended, why.
    [[nodiscard]] static QString complaintOf(const ChildRun &run);

private:
    QString m_program;
    QString m_folder;
    QMap<QString, QString> m_variables;
};

/// The settings of git that make Velmora its tool for differences and for merges, in one of git's configuration files.
///
/// Whatever tool was set before is remembered beside them and comes back when they are taken away, so that the file is
/// then what it was.
class GitSettings {
public:
    /// `global`: those of the user, otherwise those of the repository that `git` runs in. `program` is the absolute
    /// path of the desktop program.
    GitSettings(const Git &git, bool global, const QString &program);

    /// Writes them, or takes them away, and returns the commands that were run, one a line. Stops at the first that
    /// fails, with `error` set.
    [[nodiscard]] QStringList write(QString &error) const;
    [[nodiscard]] QStringList remove(QString &error) const;

    /// What is not set as it should be, whichever file it is set in; one line each.
    [[nodiscard]] QStringList deviations() const;

    /// What follows the program in the shell commands that git runs for differences, and for merges.
    static constexpr const char *diffArguments = R"(--wait "$LOCAL" "$REMOTE")";
    static constexpr const char *mergeArguments = R"(--wait --merge "$LOCAL" "$REMOTE" "$BASE" --output "$MERGED")";

private:
    struct Values {
        QStringList all;
        QString error;
    };

    [[nodiscard]] QStringList command(const QStringList &arguments) const;
    [[nodiscard]] Values valuesOf(const QString &key) const;
    /// Runs one command, and notes it in `done`. False when it fails.
    bool change(const QStringList &arguments, QStringList &done, QString &error) const;
    bool choose(const char *key, const char *former, QStringList &done, QString &error) const;
    bool giveBack(const char *key, const char *former, QStringList &done, QString &error) const;

    const Git &m_git;
    bool m_global;
    QMap<QString, QString> m_settings;
};

} // namespace velmora::cli
