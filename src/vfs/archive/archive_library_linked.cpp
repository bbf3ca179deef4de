#include "vfs/archive/archive_library.h"

namespace velmora {

const ArchiveLibrary *ArchiveLibrary::get()
{
#define VELMORA_ARCHIVE_ADDRESS(name) ::name,
    static constexpr ArchiveLibrary library{VELMORA_ARCHIVE_FUNCTIONS(VELMORA_ARCHIVE_ADDRESS)};
#undef VELMORA_ARCHIVE_ADDRESS
    return &library;
}

} // namespace velmora
