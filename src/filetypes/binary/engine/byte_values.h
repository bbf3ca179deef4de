#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>

namespace velmora {

/// What bytes can be read as. Numbers may be written from either end.
enum class ByteValue : quint8 {
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Float32,
    Float64,
    UnixTime32, ///< seconds since 1970, signed
    UnixTime64,
    FileTime, ///< of Windows: tenths of a microsecond since 1601
    DosTime,  ///< as in ZIP archives and on FAT volumes: time, then date, of 16 bits each; local
    Utf8,     ///< one character with its code
    Utf16,
    Bits, ///< of the first byte
};

inline constexpr int byteValueCount = int(ByteValue::Bits) + 1;

enum class ByteOrder : quint8 { LittleEndian, BigEndian };

/// The most bytes that any value takes.
inline constexpr qsizetype byteValueLength = 8;

/// What the first of `bytes` mean, written down; by `ByteValue`. Empty where there are too few of them or they mean
/// nothing, as a time outside the years 1 to 9999.
[[nodiscard]] std::array<QString, byteValueCount> byteValues(QByteArrayView bytes, ByteOrder order);

} // namespace velmora
