#include "filetypes/image/engine/picture_file.h"

#include <QColorSpace>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <limits>

namespace velmora {

namespace {

/// Decoding needs the picture in the file's form and converted, and showing it a third more.
constexpr qint64 bytesForPixel = 12;

PictureFacts::Orientation orientationOf(QImageIOHandler::Transformations transformation)
{
    using enum PictureFacts::Orientation;
    constexpr std::array all{Upright,   Mirrored,          Flipped,          Rotated180,
                             Rotated90, MirroredRotated90, FlippedRotated90, Rotated270}; // the toolkit's order
    return all[std::size_t(transformation.toInt()) % all.size()];
}

void takeFacts(const QImage &image, PictureFacts &facts)
{
    facts.size = image.size();
    facts.depth = image.depth();
    facts.colours = image.colorCount();
    facts.hasAlpha = image.hasAlphaChannel();
    facts.profile = image.colorSpace().isValid() ? image.colorSpace().description() : QString();
    facts.dotsPerMeter = image.dotsPerMeterX();
    for (const QString &key : image.textKeys())
        facts.texts.append({key, image.text(key)});
    std::sort(facts.texts.begin(), facts.texts.end(),
              [](const KeyedItem &one, const KeyedItem &other) { return one.key < other.key; });
}

/// Goes on to a frame; false when there is none.
bool goToFrame(QImageReader &reader, int frame)
{
    if (frame == 0 || reader.jumpToImage(frame))
        return true;
    while (frame > 0 && reader.canRead()) {
        if (reader.read().isNull())
            return false;
        --frame;
    }
    return frame == 0;
}

/// Whether a file lacks its end. Decoders of these formats fill up what is missing and say nothing; the others fail.
bool lacksItsEnd(const QString &path, const QByteArray &format)
{
    QFile file(path); // another one: a decoder has begun to read the first
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 tailSize = 64 * 1024; // room for what cameras put behind the picture
    constexpr qint64 bitmapHeader = 14;
    const auto tail = [&file](qint64 size) {
        file.seek(std::max<qint64>(file.size() - size, 0));
        return file.read(size);
    };
    if (format == "jpeg" || format == "jpg")
        return !tail(tailSize).contains("\xFF\xD9");
    if (format == "gif")
        return !tail(tailSize).endsWith(';');
    if (format == "bmp") {
        file.seek(0);
        const QByteArray header = file.read(bitmapHeader);
        constexpr qsizetype sizePlace = 2;
        return header.size() == bitmapHeader &&
               file.size() < qFromLittleEndian<quint32>(header.constData() + sizePlace);
    }
    return false;
}

} // namespace

Picture loadPicture(const QString &path, int frame, qint64 memory)
{
    Picture picture;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        picture.fault = PictureFault::NotOpened;
        return picture;
    }
    // A format whose size is not told beforehand is held back by the reader itself.
    constexpr qint64 megabyte = 1024 * 1024;
    QImageReader::setAllocationLimit(int(std::clamp<qint64>(memory / megabyte, 1, std::numeric_limits<int>::max())));
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    if (!reader.canRead()) {
        picture.fault = PictureFault::NoPicture;
        return picture;
    }
    picture.facts.format = reader.format();
    picture.facts.bytes = file.size();
    picture.facts.orientation = orientationOf(reader.transformation());
    picture.facts.frames = std::max(reader.imageCount(), 1);
    const QSize size = reader.size();
    if (size.isValid() && qint64(size.width()) * size.height() > memory / bytesForPixel) {
        picture.facts.size = size;
        picture.fault = PictureFault::TooLarge;
        return picture;
    }
    const bool isThere = goToFrame(reader, std::min(frame, picture.facts.frames - 1));
    picture.isCutOff = lacksItsEnd(path, picture.facts.format);
    QImage image;
    if (picture.isCutOff && size.isValid() && reader.imageFormat() != QImage::Format_Invalid) {
        // The toolkit takes a picture that fits as it is; in its own, what the file lacks is what was in memory before.
        image = QImage(size, reader.imageFormat());
        image.fill(0);
    }
    if (!isThere || !reader.read(&image) || image.isNull()) {
        picture.fault = PictureFault::Damaged;
        picture.detail = reader.errorString();
        return picture;
    }
    takeFacts(image, picture.facts);
    image.convertTo(QImage::Format_ARGB32);
    picture.fault = image.isNull() ? PictureFault::TooLarge : PictureFault::None;
    picture.image = std::move(image);
    return picture;
}

} // namespace velmora
