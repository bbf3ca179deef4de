#include "filetypes/checksum/engine/checksum.h"
#include "platform/file_access.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>

// Measures what a session does with one file and with two: benchmark_checksums sha256|sha1|md5|crc32 LEFT RIGHT

int main(int argc, char *argv[])
{
    using namespace velmora;
    constexpr std::array names{"md5", "sha1", "sha256", "crc32"};
    ChecksumAlgorithm algorithm = ChecksumAlgorithm::Sha256;
    for (std::size_t i = 0; argc == 4 && i < names.size(); ++i) {
        if (std::strcmp(argv[1], names[i]) == 0)
            algorithm = checksumAlgorithms[i];
    }
    if (argc != 4) {
        std::fprintf(stderr, "usage: benchmark_checksums ALGORITHM LEFT RIGHT\n");
        return 2;
    }
    const QString left = QString::fromLocal8Bit(argv[2]);
    const QString right = QString::fromLocal8Bit(argv[3]);
    const auto seconds = [&](const QString &second) {
        Progress progress;
        const auto start = std::chrono::steady_clock::now();
        const ChecksumPair pair = fileChecksums(left, second, algorithm, FileAccess::native(), {}, progress);
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
        return pair.left->isWhole() ? passed.count() : -1;
    };
    std::printf("one %.3f\n", seconds({}));
    std::printf("two %.3f\n", seconds(right));
    return 0;
}
