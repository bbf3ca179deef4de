#pragma once

#include <QString>
#include <QStringList>

namespace velmora::cli {

/// What a trial has shown, one line for each thing that was tried.
struct TrialResult {
    QStringList lines;
    bool ok = true;
};

/// Tries the settings for git in a repository made for it, which is gone afterwards: whether git runs the tools of
/// `GitSettings` with the right files, keeps a conflict when the tool ends with 1, and takes it for solved when it ends
/// with 0. A stand-in takes the place of `program`, which would wait for a person; the program itself is asked for its
/// version.
[[nodiscard]] TrialResult tryGit(const QString &program);

} // namespace velmora::cli
