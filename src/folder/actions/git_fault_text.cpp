#include "folder/actions/git_fault_text.h"

#include "session/shown_path.h"
#include "session/translate.h"

namespace velmora {

namespace {

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
    case GitFaultKind::NoFolder:
        return Velmora::tr("This state of the repository has no such folder: %1").arg(about);
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
    return sentence(fault, shownPath(fault.about));
}

} // namespace velmora
