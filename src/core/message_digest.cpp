#include "core/message_digest.h"

#include <QtEndian>

#include <algorithm>

namespace velmora {

namespace {

constexpr Md5State md5Start{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
constexpr Sha1State sha1Start{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
constexpr Sha256State sha256Start{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                  0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

} // namespace

MessageDigest::MessageDigest(Kind kind)
{
    if (kind == Kind::Md5)
        m_state = md5Start;
    else if (kind == Kind::Sha1)
        m_state = sha1Start;
    else
        m_state = sha256Start;
}

void MessageDigest::absorb(const unsigned char *blocks, std::size_t count)
{
    if (auto *md5 = std::get_if<Md5State>(&m_state))
        md5Rounds(*md5, blocks, count);
    else if (auto *sha1 = std::get_if<Sha1State>(&m_state))
        sha1Rounds(*sha1, blocks, count);
    else if (auto *sha256 = std::get_if<Sha256State>(&m_state))
        sha256Rounds(*sha256, blocks, count);
}

void MessageDigest::update(QByteArrayView bytes)
{
    const auto *at = reinterpret_cast<const unsigned char *>(bytes.data());
    auto left = std::size_t(bytes.size());
    const std::size_t kept = m_length % digestBlock;
    m_length += left;
    if (kept > 0) {
        const std::size_t taken = std::min(left, digestBlock - kept);
        std::copy_n(at, taken, m_rest.begin() + std::ptrdiff_t(kept));
        if (kept + taken < digestBlock)
            return;
        absorb(m_rest.data(), 1);
        at += taken;
        left -= taken;
    }
    absorb(at, left / digestBlock);
    std::copy_n(at + left / digestBlock * digestBlock, left % digestBlock, m_rest.begin());
}

QByteArray MessageDigest::value() const
{
    // A one bit, zeros up to 8 bytes before the end of a block, and the number of bits in the byte order of the words.
    const bool littleEndian = std::holds_alternative<Md5State>(m_state);
    const std::size_t kept = m_length % digestBlock;
    QByteArray end(qsizetype((kept < digestBlock - 8 ? digestBlock : 2 * digestBlock) - kept), '\0');
    end[0] = char(0x80);
    char *bits = end.data() + end.size() - 8;
    littleEndian ? qToLittleEndian(m_length * 8, bits) : qToBigEndian(m_length * 8, bits);
    MessageDigest whole = *this;
    whole.update(end);
    return std::visit(
        [littleEndian](const auto &state) {
            QByteArray digest(qsizetype(sizeof state), Qt::Uninitialized);
            if (littleEndian)
                qToLittleEndian<std::uint32_t>(state.data(), qsizetype(state.size()), digest.data());
            else
                qToBigEndian<std::uint32_t>(state.data(), qsizetype(state.size()), digest.data());
            return digest;
        },
        whole.m_state);
}

} // namespace velmora
