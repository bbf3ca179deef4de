#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace velmora {

/// How bytes are written down.
enum class ByteForm : quint8 {
    Hex,    ///< "0A FF 41", 16 bytes in a line
    Text,   ///< as UTF-8 where that is what they are, else one character for each byte; without zeros at the end
    CArray, ///< a C array of unsigned char with its length, 12 bytes in a line
};

/// The bytes in a form that other programs take.
[[nodiscard]] QString writtenBytes(QByteArrayView bytes, ByteForm form);

/// The bytes that a person has written as hexadecimal digits: "0aff41", "0A FF 41", "0x0a, 0xff" or "\x0a\xff".
/// Nothing when that is something else or has an odd number of digits.
[[nodiscard]] std::optional<QByteArray> bytesFromHex(QStringView text);

/// The offset that a person has written: "1234", "0x4d2" or "4d2h". With "+" or "-" before it counts from `here`.
/// Nothing when it is something else, or is negative.
[[nodiscard]] std::optional<qint64> offsetFromText(QStringView text, qint64 here);

} // namespace velmora
