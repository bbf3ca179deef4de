#include "text_engine/sequences.h"

#include <algorithm>
#include <array>
#include <functional>

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

using Make = std::function<qint32(qint32)>;

std::vector<qint32> made(qint32 size, const Make &make)
{
    std::vector<qint32> values;
    for (qint32 index = 0; index < size; ++index)
        values.push_back(make(index));
    return values;
}

/// Runs of one value, of the lengths L, L-1, L-2, …, each closed by `closing(run)`.
std::vector<qint32> fallingRuns(qint32 size, const Make &closing)
{
    qint32 length = 1;
    while ((length + 1) * (length + 4) / 2 <= size)
        ++length;
    std::vector<qint32> values;
    for (qint32 run = 0; length > 0; --length, ++run) {
        values.insert(values.end(), size_t(length), 0);
        values.push_back(closing(run));
    }
    return values;
}

std::vector<qint32> fibonacciWord(qint32 size)
{
    std::vector<qint32> shorter{1};
    std::vector<qint32> word{0};
    while (qint32(word.size()) < size) {
        std::vector<qint32> longer = word;
        longer.insert(longer.end(), shorter.begin(), shorter.end());
        shorter = std::move(word);
        word = std::move(longer);
    }
    word.resize(size_t(size));
    return word;
}

std::vector<qint32> replacedEvery(std::vector<qint32> values, qint32 distance, qint32 first)
{
    for (size_t index = size_t(distance / 2); index < values.size(); index += size_t(distance))
        values[index] = first + qint32(index);
    return values;
}

struct Shape {
    const char *name;
    SequencePair (*make)(qint32 size);
};

std::vector<qint32> counted(qint32 size, qint32 period)
{
    return made(size, [period](qint32 k) { return k % period; });
}

const std::array<Shape, shapeCount> shapes{{
    {"one value",
     [](qint32 size) {
         return SequencePair{counted(size, 1), counted(size * 9 / 10, 1)};
     }},
    {"periodic",
     [](qint32 size) {
         const std::vector<qint32> plain = counted(size + 3, 7);
         return SequencePair{{plain.begin(), plain.end() - 3}, {plain.begin() + 3, plain.end()}};
     }},
    {"two periods",
     [](qint32 size) {
         return SequencePair{counted(size, 5), counted(size, 6)};
     }},
    {"periodic with changes",
     [](qint32 size) {
         return SequencePair{counted(size, 4), replacedEvery(counted(size, 4), 13, 100)};
     }},
    {"periodic with changes on both sides",
     [](qint32 size) {
         const std::vector<qint32> plain = counted(size, 3);
         return SequencePair{replacedEvery(plain, 17, 100), replacedEvery(plain, 11, 10000)};
     }},
    {"Fibonacci word",
     [](qint32 size) {
         const std::vector<qint32> word = fibonacciWord(size + 5);
         return SequencePair{{word.begin(), word.end() - 5}, {word.begin() + 5, word.end()}};
     }},
    {"Fibonacci word with changes",
     [](qint32 size) {
         return SequencePair{fibonacciWord(size), replacedEvery(fibonacciWord(size), 19, 100)};
     }},
    {"few random values",
     [](qint32 size) {
         Random random(5);
         const auto value = [&random](qint32) { return qint32(random.below(2)); };
         std::vector<qint32> first = made(size, value);
         return SequencePair{std::move(first), made(size, value)};
     }},
    {"everything different",
     [](qint32 size) {
         return SequencePair{counted(size, size), made(size, [size](qint32 k) { return size + k; })};
     }},
    {"blocks moved",
     [](qint32 size) {
         const qint32 block = std::max(size / 6, 1);
         const auto moved = [=](qint32 k) { return (5 - std::min(k / block, 5)) * block + k % block; };
         return SequencePair{counted(size, size), made(size, moved)};
     }},
    {"runs of falling length",
     [](qint32 size) {
         return SequencePair{fallingRuns(size, [](qint32 run) { return 1 + 2 * run; }),
                             fallingRuns(size, [](qint32 run) { return 2 + 2 * run; })};
     }},
    {"every second one changed",
     [](qint32 size) {
         return SequencePair{counted(size, size), replacedEvery(counted(size, size), 2, size)};
     }},
}};

} // namespace

const char *shapeName(int shape)
{
    return shapes[size_t(shape)].name;
}

SequencePair shapedPair(int shape, qint32 size)
{
    return shapes[size_t(shape)].make(size);
}

} // namespace velmora::test
