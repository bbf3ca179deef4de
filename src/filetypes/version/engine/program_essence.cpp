#include "filetypes/version/engine/program_essence.h"

#include "core/message_digest.h"

#include <algorithm>

namespace velmora {

namespace {

void addZeros(MessageDigest &digest, qint64 count)
{
    static const QByteArray zeros(4096, '\0');
    for (; count > 0; count -= zeros.size())
        digest.update(QByteArrayView(zeros).first(std::min<qint64>(count, zeros.size())));
}

} // namespace

QByteArray hashWithout(QByteArrayView bytes, QList<ByteRange> masked)
{
    std::sort(masked.begin(), masked.end(), [](const ByteRange &a, const ByteRange &b) { return a.at < b.at; });
    MessageDigest digest(MessageDigest::Kind::Sha256);
    qint64 done = 0;
    for (const ByteRange &range : masked) {
        const qint64 from = std::clamp<qint64>(range.at, done, bytes.size());
        const qint64 room = bytes.size() - from;
        const qint64 skipped = std::max<qint64>(0, range.at) + range.length - from;
        digest.update(bytes.sliced(done, from - done));
        done = from + std::clamp<qint64>(skipped, 0, room);
        addZeros(digest, done - from);
    }
    digest.update(bytes.sliced(done));
    addZeros(digest, (8 - bytes.size() % 8) % 8);
    return digest.value();
}

QByteArray hashOf(QByteArrayView bytes)
{
    MessageDigest digest(MessageDigest::Kind::Sha256);
    digest.update(bytes);
    return digest.value();
}

} // namespace velmora
