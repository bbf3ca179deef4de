#include "core/text_scan.h"

#include <algorithm>

namespace velmora {

namespace {

// Small enough that the second look at a block, for UTF-8, finds it in the cache.
constexpr size_t blockSize = 32 * 1024;
constexpr size_t cancelInterval = 32 * blockSize;

constexpr quint64 highBits = 0x8080'8080'8080'8080;

quint64 loadWord(const char *bytes) noexcept
{
    quint64 word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

void countPlain(ByteCounts &counts, std::string_view text, size_t begin, size_t end) noexcept
{
    for (size_t at = begin; at < end; ++at) {
        const char byte = text[at];
        counts.lineFeeds += byte == '\n';
        counts.carriageReturns += byte == '\r';
        counts.crLfPairs += byte == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        counts.zeros += byte == '\0';
        counts.ascii = counts.ascii && static_cast<unsigned char>(byte) < 0x80;
    }
}

#if VELMORA_SSE2

qsizetype sumOfBytes(__m128i bytes) noexcept
{
    const __m128i sums = _mm_sad_epu8(bytes, _mm_setzero_si128());
    return qsizetype(_mm_cvtsi128_si64(sums)) + qsizetype(_mm_cvtsi128_si64(_mm_srli_si128(sums, 8)));
}

__m128i loadVector(const char *bytes) noexcept
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
}

bool isZero(__m128i bytes) noexcept
{
    return _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())) == 0xFFFF;
}

/// Counts whole vectors, of which there are at most 255, in a text without carriage returns and zeros. Returns false
/// for another one, having counted nothing.
bool countWithoutReturns(ByteCounts &counts, const char *from, const char *to) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    __m128i lineFeeds = zero;
    __m128i high = zero;
    __m128i others = zero;
    for (; from < to; from += 16) {
        const __m128i bytes = loadVector(from);
        lineFeeds = _mm_sub_epi8(lineFeeds, _mm_cmpeq_epi8(bytes, lineFeed));
        others = _mm_or_si128(others, _mm_cmpeq_epi8(bytes, carriageReturn));
        others = _mm_or_si128(others, _mm_cmpeq_epi8(bytes, zero));
        high = _mm_or_si128(high, bytes);
    }
    if (!isZero(others))
        return false;
    counts.lineFeeds += sumOfBytes(lineFeeds);
    counts.ascii = counts.ascii && _mm_movemask_epi8(high) == 0;
    return true;
}

/// The same for any text, of which the byte behind the vectors is read, too. Returns whether it has carriage returns
/// or zeros.
bool countAll(ByteCounts &counts, const char *from, const char *to) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    __m128i high = zero;
    __m128i lineFeeds = zero;
    __m128i carriageReturns = zero;
    __m128i pairs = zero;
    __m128i zeros = zero;
    for (; from < to; from += 16) {
        const __m128i bytes = loadVector(from);
        const __m128i returns = _mm_cmpeq_epi8(bytes, carriageReturn);
        lineFeeds = _mm_sub_epi8(lineFeeds, _mm_cmpeq_epi8(bytes, lineFeed));
        carriageReturns = _mm_sub_epi8(carriageReturns, returns);
        pairs = _mm_sub_epi8(pairs, _mm_and_si128(returns, _mm_cmpeq_epi8(loadVector(from + 1), lineFeed)));
        zeros = _mm_sub_epi8(zeros, _mm_cmpeq_epi8(bytes, zero));
        high = _mm_or_si128(high, bytes);
    }
    counts.lineFeeds += sumOfBytes(lineFeeds);
    counts.carriageReturns += sumOfBytes(carriageReturns);
    counts.crLfPairs += sumOfBytes(pairs);
    counts.zeros += sumOfBytes(zeros);
    counts.ascii = counts.ascii && _mm_movemask_epi8(high) == 0;
    return !isZero(_mm_or_si128(carriageReturns, zeros));
}

/// Counts whole vectors from `begin` on and returns where it stopped, in front of the last 17 bytes of the range.
size_t countVectors(ByteCounts &counts, std::string_view text, size_t begin, size_t end) noexcept
{
    size_t at = begin;
    bool hasOthers = false; // as the part before it had: most texts have carriage returns everywhere or nowhere
    while (at + 17 <= end) {
        // A lane of eight bits holds 255 hits.
        const size_t stop = std::min((end - 1 - at) / 16, size_t(255)) * 16 + at;
        if (hasOthers || !countWithoutReturns(counts, text.data() + at, text.data() + stop))
            hasOthers = countAll(counts, text.data() + at, text.data() + stop);
        at = stop;
    }
    return at;
}

#endif

bool isContinuation(unsigned char byte) noexcept
{
    return (byte & 0xC0) == 0x80;
}

/// The length of the well-formed sequence of two or more bytes at `bytes`, 0 when it is none. `left` bytes are there.
size_t sequenceLength(const unsigned char *bytes, size_t left) noexcept
{
    const unsigned char lead = bytes[0];
    if (lead >= 0xE0 && lead < 0xF0) {
        if (left < 3 || !isContinuation(bytes[1]) || !isContinuation(bytes[2]))
            return 0;
        const bool overlong = lead == 0xE0 && bytes[1] < 0xA0;
        const bool surrogate = lead == 0xED && bytes[1] >= 0xA0;
        return overlong || surrogate ? 0 : 3;
    }
    if (lead >= 0xC2 && lead < 0xE0)
        return left >= 2 && isContinuation(bytes[1]) ? 2 : 0;
    if (lead >= 0xF0 && lead < 0xF5) {
        if (left < 4 || !isContinuation(bytes[1]) || !isContinuation(bytes[2]) || !isContinuation(bytes[3]))
            return 0;
        const bool overlong = lead == 0xF0 && bytes[1] < 0x90;
        const bool tooHigh = lead == 0xF4 && bytes[1] >= 0x90;
        return overlong || tooHigh ? 0 : 4;
    }
    return 0;
}

} // namespace

ByteCounts &ByteCounts::operator+=(const ByteCounts &other) noexcept
{
    lineFeeds += other.lineFeeds;
    carriageReturns += other.carriageReturns;
    crLfPairs += other.crLfPairs;
    zeros += other.zeros;
    ascii = ascii && other.ascii;
    return *this;
}

ByteCounts countBytes(std::string_view text, size_t begin, size_t end) noexcept
{
    ByteCounts counts;
#if VELMORA_SSE2
    begin = countVectors(counts, text, begin, end);
#endif
    countPlain(counts, text, begin, end);
    return counts;
}

size_t validUtf8Until(std::string_view text, size_t begin, size_t end) noexcept
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(text.data());
    const size_t size = text.size();
    size_t at = begin;
    while (at < end) {
        if (bytes[at] < 0x80) {
            ++at;
            while (at + sizeof(quint64) <= end && (loadWord(text.data() + at) & highBits) == 0)
                at += sizeof(quint64);
            continue;
        }
        const size_t length = sequenceLength(bytes + at, size - at);
        if (length == 0)
            return at;
        at += length;
    }
    return at;
}

size_t damagedUtf8Length(std::string_view text, size_t at) noexcept
{
    // Padding a cut sequence with each continuation byte that could follow shows how much of it is a good start.
    const auto *bytes = reinterpret_cast<const unsigned char *>(text.data()) + at;
    const size_t left = text.size() - at;
    size_t length = 1;
    while (length < 4 && length < left && isContinuation(bytes[length])) {
        bool goodStart = false;
        for (const unsigned char pad : {0x80, 0x90, 0xBF}) {
            unsigned char trial[4] = {bytes[0], pad, pad, pad};
            std::copy_n(bytes, length + 1, trial);
            goodStart = goodStart || sequenceLength(trial, sizeof trial) > length + 1;
        }
        if (!goodStart)
            break;
        ++length;
    }
    return length;
}

TextScan scanText(std::string_view text, size_t begin, const CancelFlag &cancel)
{
    TextScan scan;
    size_t checked = begin;
    for (size_t block = begin; block < text.size(); block += blockSize) {
        if ((block - begin) % cancelInterval == 0 && cancel.isCancelled())
            break;
        const size_t end = std::min(block + blockSize, text.size());
        const ByteCounts counts = countBytes(text, block, end);
        scan.counts += counts;
        if (scan.validUtf8 && !counts.ascii) {
            const size_t from = std::max(checked, block);
            checked = validUtf8Until(text, from, end);
            scan.validUtf8 = checked >= end;
        }
    }
    return scan;
}

} // namespace velmora
