#include "folder/sftp/engine/remote_compare.h"

namespace velmora {

RemoteComparison compareListings(const std::vector<ListedSize> &local, const RemoteListing &remote)
{
    RemoteComparison found;
    found.files = {qsizetype(local.size()), qsizetype(remote.files.size())};
    found.unlisted = remote.unlisted;
    auto here = local.begin();
    auto there = remote.files.begin();
    while (here != local.end() || there != remote.files.end()) {
        RemoteRow row;
        const bool isHere = here != local.end() && (there == remote.files.end() || here->path <= there->path);
        const bool isThere = there != remote.files.end() && (!isHere || here->path == there->path);
        row.path = isHere ? here->path : there->path;
        if (isHere)
            row.sizes.left = (here++)->size;
        if (isThere)
            row.sizes.right = (there++)->size;
        if (!isThere)
            row.status = PairStatus::LeftOnly;
        else if (!isHere)
            row.status = PairStatus::RightOnly;
        else if (row.sizes.left != row.sizes.right)
            row.status = PairStatus::Changed;
        found.rows.push_back(row);
    }
    return found;
}

} // namespace velmora
