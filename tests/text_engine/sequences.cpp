#include "text_engine/sequences.h"

#include <algorithm>
#include <array>

namespace velmora::test {

std::vector<qint32> Random::sequence(qint32 longest, qint32 alphabet)
{
    std::vector<qint32> values(size_t(below(quint64(longest) + 1)));
    for (qint32 &value : values)
        value = qint32(below(quint64(alphabet)));
    return values;
}

std::vector<qint32> Random::edited(std::vector<qint32> original, qint32 changes, qint32 alphabet)
{
    std::vector<qint32> values = std::move(original);
    for (qint32 change = 0; change < changes; ++change) {
        const auto size = qsizetype(values.size());
        const auto from = qsizetype(below(quint64(size) + 1));
        const auto length = std::min<qsizetype>(qsizetype(below(12)), size - from);
        const auto to = qsizetype(below(quint64(size) + 1));
        const std::vector<qint32> piece(values.begin() + from, values.begin() + from + length);
        switch (below(5)) {
        case 0:
            if (from < size)
                values[size_t(from)] = qint32(below(quint64(alphabet)));
            break;
        case 1:
            values.insert(values.begin() + from, qint32(below(quint64(alphabet))));
            break;
        case 2:
            values.erase(values.begin() + from, values.begin() + from + length);
            break;
        case 3:
            values.insert(values.begin() + to, piece.begin(), piece.end());
            break;
        default:
            values.erase(values.begin() + from, values.begin() + from + length);
            values.insert(values.begin() + std::min<qsizetype>(to, qsizetype(values.size())), piece.begin(),
                          piece.end());
        }
    }
    return values;
}

std::vector<std::vector<qint32>> allSequences(qint32 alphabet, qint32 longest)
{
    std::vector<std::vector<qint32>> all{{}};
    for (size_t from = 0; qint32(all[from].size()) < longest; ++from) {
        for (qint32 value = 0; value < alphabet; ++value) {
            all.push_back(all[from]);
            all.back().push_back(value);
        }
    }
    return all;
}

namespace {

/// The value at a place of a sequence of so many.
using Value = qint32 (*)(qint32 place, qint32 size);

struct Shape {
    const char *name;
    Value first;
    Value second;
    qint32 firstChanged = 0; ///< every so many are other values; 0 for none
    qint32 secondChanged = 0;
};

std::vector<qint32> made(qint32 size, Value value, qint32 changed, qint32 other)
{
    std::vector<qint32> values;
    for (qint32 place = 0; place < size; ++place)
        values.push_back(changed > 0 && place % changed == changed / 2 ? other + place : value(place, size));
    return values;
}

template <qint32 period, qint32 shift = 0>
qint32 periodic(qint32 place, qint32)
{
    return (place + shift) % period;
}

/// Of the Fibonacci word 0100101001001…
template <qint32 shift = 0>
qint32 fibonacci(qint32 place, qint32)
{
    constexpr double ratio = 1.6180339887498949;
    return 2 + qint32(ratio * (place + shift + 1)) - qint32(ratio * (place + shift + 2));
}

template <quint64 seed>
qint32 eitherOf(qint32 place, qint32)
{
    return qint32(Random(seed + quint64(place)).below(2));
}

/// Runs of one value, of the lengths L, L-1, L-2, …, each closed by a value of its own.
template <qint32 closing>
qint32 fallingRuns(qint32 place, qint32 size)
{
    qint32 length = 1;
    while ((length + 1) * (length + 4) / 2 <= size)
        ++length;
    for (qint32 run = 0; length > 0; --length, ++run) {
        if (place <= length)
            return place < length ? 0 : closing + 2 * run;
        place -= length + 1;
    }
    return 0;
}

qint32 movedBlocks(qint32 place, qint32 size)
{
    const qint32 block = std::max(size / 6, 1);
    return (5 - std::min(place / block, 5)) * block + place % block;
}

constexpr qint32 never = 10'000'000;

constexpr std::array<Shape, shapeCount> shapes{{
    {"one value", periodic<1>, periodic<1>},
    {"periodic", periodic<7>, periodic<7, 3>},
    {"two periods", periodic<5>, periodic<6>},
    {"periodic with changes", periodic<4>, periodic<4>, 0, 13},
    {"periodic with changes on both sides", periodic<3>, periodic<3>, 17, 11},
    {"Fibonacci word", fibonacci<>, fibonacci<5>},
    {"Fibonacci word with changes", fibonacci<>, fibonacci<>, 0, 19},
    {"few random values", eitherOf<0>, eitherOf<never>},
    {"everything different", periodic<never>, periodic<2 * never, never>},
    {"blocks moved", periodic<never>, movedBlocks},
    {"runs of falling length", fallingRuns<1>, fallingRuns<2>},
    {"every second one changed", periodic<never>, periodic<never>, 0, 2},
}};

} // namespace

const char *shapeName(int shape)
{
    return shapes[size_t(shape)].name;
}

SequencePair shapedPair(int shape, qint32 size)
{
    const auto &[name, first, second, firstChanged, secondChanged] = shapes[size_t(shape)];
    return {made(size, first, firstChanged, never), made(size * 9 / 10, second, secondChanged, 2 * never)};
}

} // namespace velmora::test
