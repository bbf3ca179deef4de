#include "support/test_main.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

std::atomic<int> sound;
std::atomic<int> damaged;

/// Knows at its end whether its memory was its own to the last.
struct Witness {
    static constexpr quint64 sign = 0x0123'4567'89AB'CDEF;
    std::array<volatile quint64, 64> words;

    Witness() { std::fill(words.begin(), words.end(), sign); }
    ~Witness()
    {
        const bool isSound = std::all_of(words.begin(), words.end(), [](quint64 word) { return word == sign; });
        ++(isSound ? sound : damaged);
    }
    Witness(const Witness &) = delete;
    Witness &operator=(const Witness &) = delete;
};

thread_local Witness witness;

} // namespace

class ThreadEndTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void objectsOfAThreadAreDestroyedBeforeTheirMemoryIsFreed()
    {
        constexpr int rounds = 20;
        constexpr int together = 4;
        for (int round = 0; round < rounds; ++round) {
            std::vector<std::thread> threads;
            for (int i = 0; i < together; ++i)
                threads.emplace_back([] { witness.words[0] = Witness::sign; });
            for (std::thread &thread : threads)
                thread.join();
        }
        QCOMPARE(damaged.load(), 0);
        QCOMPARE(sound.load(), rounds * together);
    }
};

VELMORA_TEST(ThreadEndTest)
#include "thread_end_test.moc"
