#include "filetypes/image/engine/anti_aliasing.h"

#include <algorithm>

namespace velmora {

namespace {

QRgb pixelAt(const QImage &picture, int x, int y)
{
    return reinterpret_cast<const QRgb *>(picture.constScanLine(y))[x];
}

/// Luminance in thousandths; the weights are those of the YIQ colour space.
int luminance(QRgb colour)
{
    return 299 * qRed(colour) + 587 * qGreen(colour) + 114 * qBlue(colour);
}

/// Calls `see(x, y)` for the up to eight neighbours of a place.
template <typename See>
void forNeighbours(const QImage &picture, int x, int y, See see)
{
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, picture.height() - 1); ++row) {
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, picture.width() - 1); ++column) {
            if (column != x || row != y)
                see(column, row);
        }
    }
}

bool isAtEdge(const QImage &picture, int x, int y)
{
    return x == 0 || y == 0 || x == picture.width() - 1 || y == picture.height() - 1;
}

/// Whether at least three neighbours have the colour of the pixel itself; the edge of a picture counts as one.
bool hasManyAlike(const QImage &picture, int x, int y)
{
    if (x >= picture.width() || y >= picture.height())
        return false;
    int alike = isAtEdge(picture, x, y) ? 1 : 0;
    const QRgb own = pixelAt(picture, x, y);
    forNeighbours(picture, x, y, [&](int column, int row) { alike += pixelAt(picture, column, row) == own ? 1 : 0; });
    return alike > 2;
}

} // namespace

bool looksAntiAliased(const QImage &picture, const QImage &other, int x, int y)
{
    const int own = luminance(pixelAt(picture, x, y));
    int alike = isAtEdge(picture, x, y) ? 1 : 0;
    int darkest = 0;
    int brightest = 0;
    QPoint darkPlace;
    QPoint brightPlace;
    forNeighbours(picture, x, y, [&](int column, int row) {
        const int apart = luminance(pixelAt(picture, column, row)) - own;
        alike += apart == 0 ? 1 : 0;
        if (apart < darkest) {
            darkest = apart;
            darkPlace = {column, row};
        } else if (apart > brightest) {
            brightest = apart;
            brightPlace = {column, row};
        }
    });
    if (alike > 2 || darkest == 0 || brightest == 0)
        return false;
    const auto isSettled = [&](QPoint place) {
        return hasManyAlike(picture, place.x(), place.y()) && hasManyAlike(other, place.x(), place.y());
    };
    return isSettled(darkPlace) || isSettled(brightPlace);
}

} // namespace velmora
