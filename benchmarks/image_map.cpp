#include "filetypes/image/engine/image_difference.h"
#include "filetypes/image/engine/image_levels.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

// Measures the map of differences of two pictures that are in memory already.
//
//     benchmark_image_map WIDTH HEIGHT [LEFT.rgba RIGHT.rgba]
//
// With two names it writes the pictures there first, four bytes a pixel, for other programs to compare.

namespace {

using namespace velmora;

/// A picture as photographs are, smooth with some noise, of which `differing` pixels in a thousand are others.
QImage picture(int width, int height, int differing)
{
    QImage image(width, height, QImage::Format_ARGB32);
    quint32 state = 12345;
    for (int y = 0; y < height; ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            state = state * 1664525U + 1013904223U;
            const int noise = int(state >> 29U);
            const bool isOther = int((state >> 8U) % 1000U) < differing;
            row[x] = qRgb((x / 16 + noise) & 0xFF, (y / 16 + noise) & 0xFF, isOther ? 255 : (x + y) / 32 & 0x7F);
        }
    }
    return image;
}

bool writeRaw(const QImage &image, const char *name)
{
    QFile file(QString::fromLocal8Bit(name));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QImage bytes = image.convertToFormat(QImage::Format_RGBA8888);
    return file.write(reinterpret_cast<const char *>(bytes.constBits()), bytes.sizeInBytes()) == bytes.sizeInBytes();
}

/// Milliseconds of the fastest of several calls.
template <typename Work>
double best(Work work)
{
    constexpr int runs = 7;
    double fastest = 1e9;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - start;
        fastest = std::min(fastest, passed.count());
    }
    return fastest;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3 && argc != 5) {
        std::fprintf(stderr, "usage: benchmark_image_map WIDTH HEIGHT [LEFT.rgba RIGHT.rgba]\n");
        return 2;
    }
    const int width = std::atoi(argv[1]);
    const int height = std::atoi(argv[2]);
    const QImage left = picture(width, height, 0);
    const QImage right = picture(width, height, 20);
    if (argc == 5 && (!writeRaw(left, argv[3]) || !writeRaw(right, argv[4]))) {
        std::fprintf(stderr, "cannot write the pictures\n");
        return 2;
    }
    Progress progress;
    DifferenceMap map;
    const auto compare = [&](const DifferenceOptions &options) {
        return best([&] { map = differenceMap(left, right, options, {}, progress); });
    };
    std::printf("map %.1f ms\n", compare({}));
    std::printf("different %lld\n", static_cast<long long>(map.different));
    std::printf("map without smoothed edges %.1f ms\n", compare({0, true}));
    std::printf("map, and its smaller copies for showing %.1f ms\n", best([&] {
                    map = differenceMap(left, right, {5, false}, {}, progress);
                    const ImageLevels levels(map.image, false);
                }));
    return 0;
}
