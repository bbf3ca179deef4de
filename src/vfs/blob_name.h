#pragma once

#include "core/cancel_flag.h"
#include "platform/file_access.h"
#include "vfs/tree_source.h"

#include <optional>

namespace velmora {

/// The name that Git has for the content of a file, by one of its two algorithms: a digest of "blob", the size and the
/// bytes. Nothing when the file cannot be read to its end, changes meanwhile or `cancel` is set.
[[nodiscard]] std::optional<ContentIdentity> blobName(OpenFile &file, ContentIdentity::Algorithm algorithm,
                                                      const CancelFlag &cancel);

/// What comes before the bytes in the digest.
[[nodiscard]] QByteArray blobHead(qint64 size);

} // namespace velmora
