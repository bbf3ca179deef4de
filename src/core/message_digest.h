#pragma once

#include "core/digest_rounds.h"

#include <QByteArray>
#include <QByteArrayView>

#include <variant>

namespace velmora {

/// MD5 (RFC 1321), SHA-1 or SHA-256 (FIPS 180-4) of bytes that come piece by piece: what `QCryptographicHash` computes,
/// several times faster where the processor has instructions for it.
class MessageDigest {
public:
    enum class Kind : quint8 { Md5, Sha1, Sha256 };

    explicit MessageDigest(Kind kind);
    void update(QByteArrayView bytes);
    /// The digest of what came so far; more may come.
    [[nodiscard]] QByteArray value() const;

private:
    void absorb(const unsigned char *blocks, std::size_t count);

    std::variant<Md5State, Sha1State, Sha256State> m_state;
    std::array<unsigned char, digestBlock> m_rest; ///< the bytes behind the last whole block
    quint64 m_length = 0;                          ///< of all bytes
};

} // namespace velmora
