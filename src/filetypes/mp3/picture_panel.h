#pragma once

#include "filetypes/mp3/picture_views.h"

#include <QWidget>

class QLabel;

namespace velmora {

/// The pictures of one row, that of the left file above that of the right one, and how they differ.
class PicturePanel final : public QWidget {
    Q_OBJECT
public:
    explicit PicturePanel(QWidget *parent = nullptr);

    void setViews(PictureViews views) { m_views = std::move(views); }
    void showRow(const SongRow &row);

private:
    struct Half {
        QLabel *picture = nullptr;
        QLabel *caption = nullptr;
    };
    [[nodiscard]] Half makeHalf(const char *name);
    void showHalf(Side side, const SongPicture *picture);
    [[nodiscard]] QString differenceText(const SongRow &row) const;

    PictureViews m_views;
    QLabel *m_title;
    Sides<Half> m_halves;
    QLabel *m_difference;
};

} // namespace velmora
