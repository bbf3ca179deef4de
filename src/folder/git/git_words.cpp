#include "folder/git/git_words.h"

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

} // namespace

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
