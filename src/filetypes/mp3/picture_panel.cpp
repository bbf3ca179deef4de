#include "filetypes/mp3/picture_panel.h"

#include "filetypes/mp3/mp3_words.h"
#include "session/translate.h"

#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr int shownSide = 120; // both fit into a small window
constexpr int panelWidth = 200;

/// A picture that becomes smaller where there is little room, whole as it is.
class PictureLabel final : public QLabel {
public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override
    {
        constexpr int least = 40;
        return pixmap().isNull() ? QLabel::minimumSizeHint() : QSize(least, least);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        const QPixmap shown = pixmap();
        if (shown.isNull()) {
            QLabel::paintEvent(event);
            return;
        }
        const QSizeF whole = shown.deviceIndependentSize();
        const QSizeF size = whole.scaled(whole.boundedTo(QSizeF(contentsRect().size())), Qt::KeepAspectRatio);
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(QRectF(contentsRect().topLeft(), size), shown, QRectF(shown.rect()));
    }
};

template <typename Label = QLabel>
Label *textLabel(const char *name, QWidget *parent)
{
    auto *label = new Label(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

PicturePanel::PicturePanel(QWidget *parent)
    : QWidget(parent),
      m_title(textLabel("pictureTitle", this)),
      m_halves{makeHalf("left"), makeHalf("right")},
      m_difference(textLabel("pictureDifference", this))
{
    setObjectName(QStringLiteral("picturePanel"));
    setMinimumWidth(panelWidth);
    QFont bold = m_title->font();
    bold.setWeight(QFont::DemiBold);
    m_title->setFont(bold);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 4, 12, 8);
    column->setSpacing(4);
    column->addWidget(m_title);
    column->addWidget(m_difference);
    for (const Side side : bothSides) {
        column->addSpacing(6);
        column->addWidget(m_halves[side].caption);
        column->addWidget(m_halves[side].picture);
    }
    column->addStretch(1);
}

PicturePanel::Half PicturePanel::makeHalf(const char *name)
{
    const QByteArray side(name);
    Half half{textLabel<PictureLabel>((side + "Picture").constData(), this),
              textLabel((side + "PictureCaption").constData(), this)};
    half.picture->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return half;
}

void PicturePanel::showRow(const SongRow &row)
{
    const SongPicture &any = row.pictures.left ? *row.pictures.left : *row.pictures.right;
    const bool isCommon = row.field.group == SongGroup::Common; // its kind holds in both systems
    m_title->setText(pictureKindText(isCommon ? row.field.item.toInt() : any.kind));
    m_difference->setText(differenceText(row));
    for (const Side side : bothSides)
        showHalf(side, row.pictures[side].get());
}

void PicturePanel::showHalf(Side side, const SongPicture *picture)
{
    const Half &half = m_halves[side];
    const QString name = side == Side::Left ? Velmora::tr("Left") : Velmora::tr("Right");
    half.picture->setVisible(picture);
    if (!picture) {
        half.caption->setText(Velmora::tr("%1: none").arg(name));
        return;
    }
    const ShownPicture view = m_views.view(picture->bytes);
    const QLocale locale;
    QStringList facts{picture->mime};
    if (view.size.isValid())
        facts.append(QStringLiteral("%1 \u00d7 %2").arg(view.size.width()).arg(view.size.height()));
    facts.append(locale.formattedDataSize(picture->bytes.size()));
    half.caption->setText(QStringLiteral("%1: %2").arg(name, facts.join(QStringLiteral(", "))));
    if (view.thumbnail.isNull()) {
        half.picture->setText(Velmora::tr("This picture cannot be shown."));
        return;
    }
    const double dense = devicePixelRatioF();
    const int pixels = int(shownSide * dense);
    QPixmap pixmap = QPixmap::fromImage(view.thumbnail.scaled(view.thumbnail.size().boundedTo({pixels, pixels}),
                                                              Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(dense);
    half.picture->setPixmap(pixmap);
}

QString PicturePanel::differenceText(const SongRow &row) const
{
    const auto &[left, right] = row.pictures;
    if (!left || !right)
        return left ? Velmora::tr("Only in the left file") : Velmora::tr("Only in the right file");
    if (left == right || left->bytes == right->bytes)
        return Velmora::tr("The same picture in both");
    const PictureViews::Difference difference = m_views.difference(left->bytes, right->bytes);
    if (!difference.isKnown)
        return Velmora::tr("Different pictures");
    if (difference.share == 0)
        return Velmora::tr("The same pixels, stored otherwise");
    return Velmora::tr("%1 % of the pixels differ").arg(QLocale().toString(difference.share * 100, 'f', 1));
}

} // namespace velmora
