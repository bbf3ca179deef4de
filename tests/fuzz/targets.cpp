#include "fuzz/targets.h"

#include <array>
#include <stdexcept>

namespace velmora::fuzz {

std::span<const Target> targets()
{
    static constexpr std::array all{
        Target{"text", text},
        Target{"compare", compare},
        Target{"journal", journal},
        Target{"snapshot", snapshot},
        Target{"folder_snapshot", folderSnapshot},
        Target{"remote_listing", remoteListing},
        Target{"remote_tree", remoteTree},
        Target{"options", options},
        Target{"importance", importance},
        Target{"mask", mask},
        Target{"syntax_definition", syntaxDefinition},
        Target{"name", name},
        Target{"syntax_scanner", syntaxScanner},
        Target{"checksum_list", checksumList},
        Target{"session_file", sessionFile},
        Target{"table", table},
        Target{"conflict_markers", conflictMarkers},
        Target{"program", program},
        Target{"registry", registry},
        Target{"archive", archive},
        Target{"git_listing", gitListing},
        Target{"song", song},
    };
    return all;
}

void require(bool holds, const char *promise)
{
    if (!holds)
        throw std::logic_error(promise);
}

} // namespace velmora::fuzz
