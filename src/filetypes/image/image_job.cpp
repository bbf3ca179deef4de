#include "filetypes/image/image_job.h"

#include "core/content_compare.h"
#include "core/crew.h"
#include "platform/memory_size.h"

#include <QFileInfo>

#include <algorithm>
#include <atomic>

namespace velmora {

namespace {

/// Of the memory that is there: the rest is for the map, and for everybody else.
qint64 memoryForOne()
{
    return availableMemory() / 3;
}

bool haveSameBytes(const Sides<QString> &paths, const CancelFlag &cancel)
{
    const auto absolute = [](const QString &path) { return QFileInfo(path).absoluteFilePath(); };
    return QFileInfo(paths.left).size() == QFileInfo(paths.right).size() &&
           ContentComparer(FileAccess::native(), cancel).sameByDigest(absolute(paths.left), absolute(paths.right));
}

} // namespace

ImagePair loadImagePair(const Sides<QString> &paths, int frame, const DifferenceOptions &options,
                        const CancelFlag &cancel, Progress &progress)
{
    ImagePair pair;
    progress.report(0, 0, 0, paths.left);
    const qint64 memory = memoryForOne();
    const auto load = [&](Side side) {
        Picture &picture = pair.pictures[side];
        picture = loadPicture(paths[side], frame, memory);
        if (picture.isLoaded() && !cancel.isCancelled())
            pair.levels[side] = std::make_shared<const ImageLevels>(picture.image, picture.facts.hasAlpha);
    };
    std::atomic<std::size_t> next = 0;
    runCrew(std::min(crewSize(), 2),
            [&](int) {
                for (std::size_t side = next++; side < bothSides.size(); side = next++)
                    load(bothSides[side]);
            },
            {});
    if (cancel.isCancelled() || !pair.pictures.left.isLoaded() || !pair.pictures.right.isLoaded())
        return pair;
    pair.sameBytes = haveSameBytes(paths, cancel);
    pair.map = shownMap(pair.pictures.left.image, pair.pictures.right.image, options, cancel, progress);
    return pair;
}

ShownMap shownMap(const QImage &left, const QImage &right, const DifferenceOptions &options, const CancelFlag &cancel,
                  Progress &progress)
{
    ShownMap shown;
    shown.map = differenceMap(left, right, options, cancel, progress);
    shown.outOfMemory = shown.map.image.isNull() && !cancel.isCancelled();
    shown.levels = std::make_shared<const ImageLevels>(shown.map.image, false);
    shown.map.image = {};
    return shown;
}

} // namespace velmora
