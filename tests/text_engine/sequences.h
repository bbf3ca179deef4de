#pragma once

#include <QtGlobal>

#include <vector>

namespace velmora::test {

/// Numbers that look random and are the same in every run and on every system.
class Random {
public:
    explicit Random(quint64 seed) : m_state(seed * 2 + 1) {}

    quint64 next() noexcept
    {
        m_state += 0x9E37'79B9'7F4A'7C15;
        quint64 value = (m_state ^ (m_state >> 30)) * 0xBF58'476D'1CE4'E5B9;
        value = (value ^ (value >> 27)) * 0x94D0'49BB'1331'11EB;
        return value ^ (value >> 31);
    }
    quint64 below(quint64 bound) noexcept { return next() % bound; }

    /// Up to `longest` values below `alphabet`.
    std::vector<qint32> sequence(qint32 longest, qint32 alphabet);
    /// `original` after so many changes: replaced, inserted, removed, moved and repeated pieces.
    std::vector<qint32> edited(std::vector<qint32> original, qint32 changes, qint32 alphabet);

private:
    quint64 m_state;
};

struct SequencePair {
    std::vector<qint32> a;
    std::vector<qint32> b;
};

/// Every sequence of up to `longest` values below `alphabet`.
std::vector<std::vector<qint32>> allSequences(qint32 alphabet, qint32 longest);

/// Pairs that repeat themselves in ways that drive careless matchers to the square of their size.
inline constexpr int shapeCount = 12;
const char *shapeName(int shape);
/// A pair of about `size` values each.
SequencePair shapedPair(int shape, qint32 size);

} // namespace velmora::test
