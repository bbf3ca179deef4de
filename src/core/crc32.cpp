#include "core/crc32.h"

#include "core/content_compare.h"
#include "core/crc32_folding.h"
#include "platform/file_access.h"

namespace velmora {

quint32 crc32BitByBit(quint32 state, QByteArrayView bytes)
{
    for (const char byte : bytes) {
        state ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            state = (state >> 1U) ^ ((state & 1U) != 0 ? 0xEDB8'8320U : 0U);
    }
    return state;
}

void Crc32::update(QByteArrayView bytes)
{
    static const auto fastest = hasCrc32WideFolding() ? crc32WideFolding
                                : hasCrc32Folding()   ? crc32Folding
                                                      : crc32BitByBit;
    m_register = fastest(m_register, bytes);
}

QByteArray fileCrc32(const QString &path, const CancelFlag &cancel)
{
    return ContentComparer(FileAccess::native(), cancel).crc32(path);
}

} // namespace velmora
