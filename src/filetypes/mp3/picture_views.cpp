#include "filetypes/mp3/picture_views.h"

#include <QBuffer>
#include <QImageReader>

namespace velmora {

namespace {

constexpr int thumbnailSide = 480; // twice what is shown, for dense screens
constexpr qint64 mostPixels = 50'000'000;
constexpr int mostPictures = 64;

QImage decoded(const SongPicture &picture, QSize &size)
{
    QByteArray bytes = picture.bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    size = reader.size();
    if (size.isValid() && qint64(size.width()) * size.height() > mostPixels)
        return {};
    const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32);
    if (!image.isNull())
        size = image.size();
    return image;
}

PictureViews::Difference compared(const QImage &left, const QImage &right)
{
    if (left.isNull() || left.size() != right.size())
        return {};
    qint64 different = 0;
    for (int y = 0; y < left.height(); ++y) {
        const auto *one = reinterpret_cast<const QRgb *>(left.constScanLine(y));
        const auto *other = reinterpret_cast<const QRgb *>(right.constScanLine(y));
        for (int x = 0; x < left.width(); ++x)
            different += one[x] != other[x] ? 1 : 0;
    }
    return {true, double(different) / (double(left.width()) * left.height())};
}

} // namespace

PictureViews::PictureViews(const QList<SongRow> &rows, const CancelFlag &cancel)
{
    for (const SongRow &row : rows) {
        if (cancel.isCancelled() || m_views.size() >= mostPictures)
            return;
        Sides<QImage> images;
        for (const Side side : bothSides) {
            const std::shared_ptr<const SongPicture> &picture = row.pictures[side];
            if (!picture)
                continue;
            ShownPicture view;
            images[side] = decoded(*picture, view.size);
            if (!images[side].isNull())
                view.thumbnail = images[side].scaled(images[side].size().boundedTo({thumbnailSide, thumbnailSide}),
                                                     Qt::KeepAspectRatio, Qt::SmoothTransformation);
            m_views.insert(picture->bytes, view);
        }
        if (row.pictures.left && row.pictures.right)
            m_differences.insert({row.pictures.left->bytes, row.pictures.right->bytes},
                                 compared(images.left, images.right));
    }
}

} // namespace velmora
