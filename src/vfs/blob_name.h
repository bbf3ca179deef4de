#pragma once

#include "core/cancel_flag.h"
#include "platform/file_access.h"
#include "vfs/tree_source.h"

#include <optional>

namespace velmora {

/// The exact name of the content of a file. By the two algorithms of Git it is a digest of "blob", the size and the
/// bytes. Nothing when the file cannot be read to its end, changes meanwhile or `cancel` is set.
[[nodiscard]] std::optional<ContentIdentity> blobName(OpenFile &file, ContentIdentity::Algorithm algorithm,
                                                      const CancelFlag &cancel);

/// What comes before the bytes in the digest of Git.
[[nodiscard]] QByteArray blobHead(qint64 size);

} // namespace velmora
