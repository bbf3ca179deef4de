#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "filetypes/binary/engine/binary_source.h"

#include <QByteArray>

#include <optional>

namespace velmora {

/// The first place from `from` on, forwards, where the file has the bytes of `pattern`, which is not empty and shorter
/// than 1 MiB; none when there is none before the end. Bytes that cannot be read match nothing. Progress counts bytes.
[[nodiscard]] std::optional<qint64> findForwards(const BinarySource &source, const QByteArray &pattern, qint64 from,
                                                 const CancelFlag &cancel, Progress &progress);

/// The last place where the bytes begin before `before`; otherwise as `findForwards`.
[[nodiscard]] std::optional<qint64> findBackwards(const BinarySource &source, const QByteArray &pattern, qint64 before,
                                                  const CancelFlag &cancel, Progress &progress);

} // namespace velmora
