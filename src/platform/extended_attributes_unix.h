#pragma once

#include <sys/types.h>

namespace velmora {

/// Where attributes are read: an open file or folder, or the one at a path, links followed.
struct AttributeSource {
    int file = -1;
    const char *path = nullptr; ///< where `file` is -1
    bool hasNone = false;       ///< `hasAttributes` has said so: saves asking again
};

/// True when an open file has attributes that `carryAttributes` could carry, or nobody knows.
[[nodiscard]] bool hasAttributes(int file);

/// What has become of attributes that were to be carried over.
struct CarriedAttributes {
    int error = 0;       ///< errno of the first that could not be carried; 0 when none is missed
    mode_t withheld = 0; ///< permissions that the target must not give: a list that is lost denied them to somebody
};

/// Carries to the open file or folder `to` what no mode bit holds: the attributes "user.*" and the POSIX access list,
/// of folders also the default list. A list that `to` has inherited from its folder goes when the source has none, so
/// that `to` opens for nobody whom the source keeps out. To be called before the permissions and times are set.
///
/// Attributes "user.*" are passed over in silence where the file system of `to` has no room for any by its kind; an
/// access list never is. What acts in the system's name (security labels, capabilities) is not carried. Does nothing
/// on systems other than Linux.
[[nodiscard]] CarriedAttributes carryAttributes(const AttributeSource &from, int to);

} // namespace velmora
