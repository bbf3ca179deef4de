#include "folder/git/git_words.h"

#include "core/visible_name.h"
#include "session/translate.h"

#include <QDir>

namespace velmora {

namespace {

QString modeWord(quint32 mode)
{
    switch (mode) {
    case GitMode::program:
        return Velmora::tr("Executable");
    case GitMode::link:
        return Velmora::tr("Link");
    case GitMode::submodule:
        return Velmora::tr("Submodule");
    case GitMode::plain:
        return Velmora::tr("File");
    default:
        return QString::number(mode, 8);
    }
}

QString sentence(const GitFault &fault, const QString &about)
{
    switch (fault.kind) {
    case GitFaultKind::NoProgram:
        return Velmora::tr("The program git is not on the search path, or cannot be started");
    case GitFaultKind::NoRepository:
        return Velmora::tr("No Git repository holds this path: %1").arg(about);
    case GitFaultKind::NotOurs:
        return Velmora::tr("Git refuses the repository, as it belongs to somebody else");
    case GitFaultKind::UnknownState:
        return Velmora::tr("The repository knows no branch, tag, commit or stash of this name: %1").arg(about);
    case GitFaultKind::NoWorkTree:
        return Velmora::tr("The repository has no work tree");
    case GitFaultKind::NoMergeBase:
        return Velmora::tr("The two sides have no commit in common");
    case GitFaultKind::UnreadableFile:
        return Velmora::tr("Cannot read file: %1").arg(about);
    case GitFaultKind::TooMuch:
        return Velmora::tr("There are more files, or is more content, than can be compared");
    case GitFaultKind::TooSlow:
        return Velmora::tr("Git did not come to an end");
    case GitFaultKind::Stopped:
        return Velmora::tr("Cancelled");
    case GitFaultKind::None:
    case GitFaultKind::Failed:
        break;
    }
    return Velmora::tr("Git failed");
}

} // namespace

QString gitFaultText(const GitFault &fault)
{
    return sentence(fault, visibleName(QDir::toNativeSeparators(fault.about)));
}

QString gitStatusText(GitStatus status)
{
    switch (status) {
    case GitStatus::Modified:
        return Velmora::tr("Changed");
    case GitStatus::Added:
        return Velmora::tr("Added");
    case GitStatus::Deleted:
        return Velmora::tr("Deleted");
    case GitStatus::Renamed:
        return Velmora::tr("Renamed");
    case GitStatus::Copied:
        return Velmora::tr("Copied");
    case GitStatus::TypeChanged:
        return Velmora::tr("Type changed");
    case GitStatus::Same:
        break;
    }
    return Velmora::tr("Same");
}

QString gitModeText(const GitChange &change)
{
    const quint32 left = change.entries.left.mode;
    const quint32 right = change.entries.right.mode;
    if (left != right && left != GitMode::none && right != GitMode::none)
        return QStringLiteral("%1 → %2").arg(modeWord(left), modeWord(right));
    const quint32 mode = right == GitMode::none ? left : right;
    return mode == GitMode::plain ? QString() : modeWord(mode);
}

QString gitSideShown(const GitSide &side)
{
    switch (side.kind) {
    case GitSide::Kind::Index:
        return Velmora::tr("Index");
    case GitSide::Kind::WorkTree:
        return Velmora::tr("Work tree");
    case GitSide::Kind::Folder:
        return QDir::toNativeSeparators(side.name);
    case GitSide::Kind::Revision:
        break;
    }
    return side.name;
}

GitSide gitSideWritten(const QString &text)
{
    const QString trimmed = text.trimmed();
    for (const GitSide::Kind kind : {GitSide::Kind::WorkTree, GitSide::Kind::Index}) {
        if (trimmed == gitSideShown({kind}))
            return {kind};
    }
    return gitSideOf(trimmed);
}

} // namespace velmora
