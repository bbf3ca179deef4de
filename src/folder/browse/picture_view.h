#pragma once

#include <QImage>
#include <QWidget>

namespace velmora {

/// A picture in the middle of its room, made smaller where it has too little, on squares that show through.
class PictureView final : public QWidget {
    Q_OBJECT
public:
    explicit PictureView(QWidget *parent = nullptr);

    void setPicture(const QImage &picture);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_picture;
};

} // namespace velmora
