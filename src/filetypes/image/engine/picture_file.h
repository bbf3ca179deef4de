#pragma once

#include "core/keyed_rows.h"

#include <QByteArray>
#include <QImage>

namespace velmora {

/// Why there is no picture.
enum class PictureFault : quint8 {
    None,
    NotOpened, ///< no file of this name, or it may not be read
    NoPicture, ///< no format that is known
    Damaged,   ///< it cannot be decoded; `detail` has the words of whoever tried
    TooLarge,  ///< there is not enough memory for it
};

/// What a file says of its picture beside the pixels.
struct PictureFacts {
    enum class Orientation : quint8 {
        Upright,
        Mirrored,
        Flipped,
        Rotated180,
        Rotated90,
        MirroredRotated90,
        FlippedRotated90,
        Rotated270
    };

    QByteArray format; ///< as the reader calls it, such as "png"
    QSize size;
    int depth = 0;   ///< bits of a pixel
    int colours = 0; ///< of the colour table; 0 without one
    bool hasAlpha = false;
    Orientation orientation = Orientation::Upright; ///< how it is to be turned when shown; it is not
    QString profile;                                ///< the colour profile's description, empty for none
    int dotsPerMeter = 0;                           ///< horizontally; 0 when not told
    int frames = 1;
    qint64 bytes = 0;       ///< of the file
    QList<KeyedItem> texts; ///< comments and the like, by key
};

struct Picture {
    QImage image; ///< Format_ARGB32; null when there is a fault
    PictureFault fault = PictureFault::None;
    QString detail;
    bool isCutOff = false; ///< the file ends too early, and the rest of the picture is whatever its decoder made of it
    PictureFacts facts;

    [[nodiscard]] bool isLoaded() const noexcept { return !image.isNull(); }
};

/// Reads frame `frame`, from 0, of the picture at `path`, whose format is told by its contents; the last frame when it
/// has fewer. What would need more than `memory` bytes is not read. To be called on a worker.
[[nodiscard]] Picture loadPicture(const QString &path, int frame, qint64 memory);

} // namespace velmora
