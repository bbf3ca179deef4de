#pragma once

#include "core/cancel_flag.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace velmora {

class FileAccess;

/// The CRC-32 of IEEE 802.3 (reflected polynomial 0xEDB88320, begun with and finally inverted against 0xFFFFFFFF) of
/// bytes that come piece by piece. Folds with carry-less multiplication where the processor has it.
class Crc32 {
public:
    void update(QByteArrayView bytes);
    [[nodiscard]] quint32 value() const noexcept { return ~m_register; }

private:
    quint32 m_register = 0xFFFF'FFFF;
};

/// One step of the definition for each bit: takes the shift register `state` through `bytes`. What every other way to
/// compute a CRC-32 must agree with.
[[nodiscard]] quint32 crc32BitByBit(quint32 state, QByteArrayView bytes);

/// The CRC-32 of a file as 4 bytes, the most significant first, which in hexadecimal reads as the value is usually
/// written. Empty when the file cannot be opened or `cancel` is set before its end. Bytes that cannot be read end the
/// file.
[[nodiscard]] QByteArray fileCrc32(const QString &path, const CancelFlag &cancel = {});

} // namespace velmora
