#include "app/help/picture_icon.h"

#include <QApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace velmora {

namespace {

class PictureEngine final : public QIconEngine {
public:
    explicit PictureEngine(QString path) : m_path(std::move(path))
    {
        QImageReader reader(m_path);
        for (int i = 0; i < std::max(reader.imageCount(), 1); ++i) {
            if ((i == 0 || reader.jumpToImage(i)) && reader.size().isValid())
                m_sizes.append(reader.size());
        }
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal scale = painter->device()->devicePixelRatio();
        const QPixmap picture = scaledPixmap(rect.size() * scale, mode, state, scale);
        const QSize size = picture.deviceIndependentSize().toSize();
        painter->drawPixmap(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, rect), picture);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State /*state*/, qreal scale) override
    {
        QPixmap picture = decoded(indexFor(size));
        if (picture.width() > size.width() || picture.height() > size.height())
            picture = picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        if (mode != QIcon::Normal) {
            const QStyleOption option;
            picture = QApplication::style()->generatedIconPixmap(mode, picture, &option);
        }
        picture.setDevicePixelRatio(scale);
        return picture;
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override { return m_sizes; }
    bool isNull() override { return m_sizes.isEmpty(); }
    [[nodiscard]] QIconEngine *clone() const override { return new PictureEngine(*this); }

private:
    [[nodiscard]] int indexFor(const QSize &size) const
    {
        const auto holds = [](const QSize &a, const QSize &b) {
            return a.width() >= b.width() && a.height() >= b.height();
        };
        int best = -1;
        for (int i = 0; i < m_sizes.size(); ++i) {
            const bool larger = best < 0 || holds(m_sizes[i], m_sizes[best]);
            if (best < 0 || (holds(m_sizes[best], size) ? holds(m_sizes[i], size) && !larger : larger))
                best = i;
        }
        return best;
    }

    [[nodiscard]] QPixmap decoded(int index)
    {
        if (index < 0)
            return {};
        QPixmap &picture = m_decoded[index];
        if (picture.isNull()) {
            QImageReader reader(m_path);
            if (index == 0 || reader.jumpToImage(index))
                picture = QPixmap::fromImageReader(&reader);
        }
        return picture;
    }

    QString m_path;
    QList<QSize> m_sizes;
    QHash<int, QPixmap> m_decoded;
};

} // namespace

QIcon pictureIcon(const QString &path)
{
    return QIcon(new PictureEngine(path));
}

} // namespace velmora
