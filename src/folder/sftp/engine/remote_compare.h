#pragma once

#include "core/keyed_rows.h"
#include "core/sides.h"
#include "folder/sftp/engine/remote_listing.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace velmora {

/// One path of either side; the local side is the left one.
struct RemoteRow {
    QString path;
    Sides<std::optional<qint64>> sizes;
    PairStatus status = PairStatus::Same; ///< by the sizes alone
};

/// How a local folder compares with a remote one.
struct RemoteComparison {
    std::vector<RemoteRow> rows; ///< in the order of the paths
    Sides<qsizetype> files{};    ///< listed on each side
    qsizetype unlisted = 0;      ///< files of the host that could not be listed
};

/// Pairs both listings, which are in order, by path.
[[nodiscard]] RemoteComparison compareListings(const std::vector<ListedSize> &local, const RemoteListing &remote);

} // namespace velmora
