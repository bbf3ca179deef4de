#pragma once

#include <QByteArray>
#include <QList>

#include <optional>
#include <string_view>

namespace velmora {

/// The charset with characters of two bytes (GB18030, BIG5, CP932, EUC-JP, EUC-KR) of whose everyday characters `bytes`
/// are made, if one is. Tells a text of a few characters, which statistics of letters cannot: hardly anything else has
/// its bytes from 0x80 on in such pairs only, and those in the part of the table with the common characters. Where a
/// handful of characters is as likely in several, the first of `preferred` that is among them.
[[nodiscard]] std::optional<QByteArray> likelyDoubleByteCharset(std::string_view bytes,
                                                                const QList<QByteArray> &preferred);

/// The first of `preferred`, charsets of one byte, in which a short text is made of words in small letters.
[[nodiscard]] std::optional<QByteArray> likelySingleByteCharset(std::string_view bytes,
                                                                const QList<QByteArray> &preferred);

} // namespace velmora
