#pragma once

#include "core/cancel_flag.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

namespace velmora {

/// How a file was saved.
struct SaveResult {
    QString error; ///< the system's own words, empty when the file was saved whole
    [[nodiscard]] bool ok() const noexcept { return error.isEmpty(); }
};

/// Writes a file so that it is there whole or not touched: `write` fills a file beside the target, which is brought to
/// the disk and then takes the target's place in one step. The target's access bits and lists and its extended
/// attributes stay, its owner too where this user may give files away, and a symbolic link stays a link to the replaced
/// file; when access cannot stay as it is, nothing is replaced. Waits for the disk:
/// to be called on a worker where the file may be large. When `write` returns false (a cancelled export) the target is
/// left alone and the error is that of the device, if it has one; the same when `cancel` is set at any time before the
/// last step. What exists and is no regular file, a terminal or a pipe, is written to as it is.
[[nodiscard]] SaveResult saveFile(const QString &path, const std::function<bool(QIODevice &)> &write,
                                  const CancelFlag &cancel = {});

/// The same for bytes that are there already.
[[nodiscard]] SaveResult saveFile(const QString &path, const QByteArray &bytes);

} // namespace velmora
