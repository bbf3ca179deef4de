#include "folder/actions/other_words.h"

#include "folder/actions/git_fault_text.h"
#include "folder/actions/remote_words.h"
#include "folder/actions/snapshot_words.h"

#include <variant>

namespace velmora {

QString otherFaultText(const QString &path, const OtherOpening &opening)
{
    if (!isThere(opening) || folderOf(opening).isThere())
        return {};
    if (const auto *state = std::get_if<StateOpening>(&opening))
        return gitFaultText(state->fault);
    if (const auto *remote = std::get_if<RemoteOpening>(&opening))
        return remoteFaultText(remote->fault);
    return snapshotFaultText(path, std::get<SnapshotOpening>(opening));
}

} // namespace velmora
