#include "filetypes/binary/engine/block_anchors.h"

#include "filetypes/binary/engine/sliding_reader.h"

#include <algorithm>
#include <array>
#include <bit>

namespace velmora {

namespace {

constexpr int hashBits = 64;

/// Random numbers by SplitMix64, the same in every run.
constexpr std::array<quint64, 256> makeGears()
{
    std::array<quint64, 256> gears{};
    quint64 state = 0x9E3779B97F4A7C15;
    for (quint64 &gear : gears) {
        state += 0x9E3779B97F4A7C15;
        quint64 mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        gear = mixed ^ (mixed >> 31);
    }
    return gears;
}

constexpr std::array<quint64, 256> gears = makeGears();

/// Built for each number of hashed bytes: the loop is as fast as its shift.
template <int hashedBytes>
std::vector<Anchor> scan(const BinaryPart &part, qint64 from, const AnchorRule &rule, const CancelFlag &cancel)
{
    constexpr int shift = hashBits / hashedBytes;
    std::vector<Anchor> anchors;
    SlidingReader reader(part);
    const qint64 to = std::min(part.size(), from + rule.window);
    const quint64 mask = rule.mask;
    quint64 hash = 0;
    quint64 lastHash = 0;
    for (qint64 offset = from; offset < to && !cancel.isCancelled();) {
        // Within a hole every hash is that of the zeros that the hash still sees behind it.
        offset = std::max(offset, part.nextData(offset) - hashedBytes);
        const QByteArrayView read = reader.from(offset, 1);
        const qsizetype length = std::min(read.size(), qsizetype(to - offset));
        if (length <= 0)
            break;
        const char *const bytes = read.data();
        for (qsizetype k = 0; k < length; ++k) {
            hash = (hash << shift) + gears[uchar(bytes[k])];
            // One byte repeated makes the same hash on and on.
            if ((hash & mask) != 0 || hash == lastHash || offset + k + 1 - from < hashedBytes)
                continue;
            lastHash = hash;
            anchors.push_back({hash, offset + k + 1 - hashedBytes});
        }
        offset += length;
    }
    return anchors;
}

struct Group {
    quint64 hash = 0;
    qint64 first = 0;
    bool isAlone = false;
};

/// The anchors by hash, those of the same hash as one.
std::vector<Group> grouped(std::vector<Anchor> &anchors)
{
    std::sort(anchors.begin(), anchors.end(), [](const Anchor &one, const Anchor &other) {
        return one.hash != other.hash ? one.hash < other.hash : one.begin < other.begin;
    });
    std::vector<Group> groups;
    for (const Anchor &anchor : anchors) {
        if (groups.empty() || groups.back().hash != anchor.hash)
            groups.push_back({anchor.hash, anchor.begin, true});
        else
            groups.back().isAlone = false;
    }
    return groups;
}

} // namespace

AnchorRule AnchorRule::of(qint64 window)
{
    constexpr qint64 small = 32 * 1024;
    constexpr qint64 medium = 2 * 1024 * 1024;
    constexpr qint64 anchors = 8192;
    constexpr int fewestBits = 3;
    // A small window is searched for short blocks, as between two changes that are close together.
    const int hashed = window <= small ? 16 : window <= medium ? 32 : 64;
    const int bits = std::max(fewestBits, int(std::bit_width(quint64(window / anchors))));
    return {window, hashed, ~quint64(0) << (hashBits - bits)};
}

std::vector<Anchor> findAnchors(const BinaryPart &part, qint64 from, const AnchorRule &rule, const CancelFlag &cancel)
{
    switch (rule.hashedBytes) {
    case 16:
        return scan<16>(part, from, rule, cancel);
    case 32:
        return scan<32>(part, from, rule, cancel);
    default:
        return scan<64>(part, from, rule, cancel);
    }
}

std::vector<AnchorPair> pairAnchors(std::vector<Anchor> left, std::vector<Anchor> right, std::size_t limit)
{
    const std::vector<Group> lefts = grouped(left);
    const std::vector<Group> rights = grouped(right);
    std::vector<AnchorPair> alone;
    std::vector<AnchorPair> first;
    for (auto l = lefts.begin(), r = rights.begin(); l != lefts.end() && r != rights.end();) {
        if (l->hash != r->hash) {
            (l->hash < r->hash ? l : r)++;
            continue;
        }
        (l->isAlone && r->isAlone ? alone : first).push_back({l->first, r->first});
        ++l;
        ++r;
    }
    std::vector<AnchorPair> &pairs = alone.empty() ? first : alone;
    const auto last = pairs.begin() + std::ptrdiff_t(std::min(limit, pairs.size()));
    std::partial_sort(pairs.begin(), last, pairs.end(), [](const AnchorPair &one, const AnchorPair &other) {
        return one.left + one.right < other.left + other.right;
    });
    pairs.erase(last, pairs.end());
    return std::move(pairs);
}

} // namespace velmora
