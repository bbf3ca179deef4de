#pragma once

#include "core/cancel_flag.h"

#include <QByteArray>

#include <string_view>

namespace velmora {

/// A text on its way to UTF-8.
struct Utf8Output {
    QByteArray bytes;
    qint64 undecodable = 0;          ///< sequences without a meaning, each written as U+FFFD
    qsizetype firstUndecodable = -1; ///< where in `bytes` the first of them stands
};

/// Whether `transcodeToUtf8` knows `charset`; true for every charset of a `TextEncoding`.
[[nodiscard]] bool canTranscode(const QByteArray &charset);

/// Converts the bytes of a text without its mark to UTF-8, block by block; incomplete when `cancel` is set on the way.
/// A charset that is not known gives nothing.
[[nodiscard]] Utf8Output transcodeToUtf8(std::string_view bytes, const QByteArray &charset, const CancelFlag &cancel);

} // namespace velmora
