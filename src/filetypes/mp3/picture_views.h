#pragma once

#include "core/cancel_flag.h"
#include "filetypes/mp3/engine/song_compare.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>

#include <utility>

namespace velmora {

/// A picture out of a tag as it is shown.
struct ShownPicture {
    QImage thumbnail; ///< null where it cannot be decoded, or not within bounds
    QSize size;       ///< of the whole picture; invalid where not even that is known
};

/// What the pictures in two songs look like; made on a worker.
class PictureViews {
public:
    /// The pixels that differ between two pictures.
    struct Difference {
        bool isKnown = false; ///< both were decoded and are of one size
        double share = 0;     ///< 0 to 1
    };

    PictureViews() = default;
    /// Decodes the pictures of the rows, of very many only the first ones.
    PictureViews(const QList<SongRow> &rows, const CancelFlag &cancel);

    // By their bytes, as a picture that was copied into other tags is the same one.
    [[nodiscard]] ShownPicture view(const QByteArray &picture) const { return m_views.value(picture); }
    [[nodiscard]] Difference difference(const QByteArray &left, const QByteArray &right) const
    {
        return m_differences.value({left, right});
    }

private:
    QHash<QByteArray, ShownPicture> m_views;
    QHash<std::pair<QByteArray, QByteArray>, Difference> m_differences;
};

} // namespace velmora
