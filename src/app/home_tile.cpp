#include "app/home_tile.h"

#include "app/dropped_paths.h"
#include "app/session_kinds.h"
#include "app/tile_frame.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QMimeData>

namespace velmora {

namespace {

constexpr int chipSize = 64;
constexpr int margin = 14;
constexpr int captionGap = 8;

QFont titleFont(const QFont &base)
{
    QFont font = base;
    font.setPointSizeF(base.pointSizeF() * 1.25);
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

/// Shows a kind's icon. The button under it gets the mouse.
class HomeTileChip final : public QWidget {
public:
    HomeTileChip(const SessionKindRow &row, QWidget *parent) : QWidget(parent), m_kind(row.id)
    {
        setObjectName(QStringLiteral("homeTileChip"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFixedSize(chipSize, chipSize);
        refreshTheme();
    }

    void refreshTheme()
    {
        m_icon = sessionKindIcon(m_kind);
        update();
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        m_icon.paint(&painter, rect());
    }

private:
    QString m_kind;
    QIcon m_icon;
};

HomeTile::HomeTile(const SessionKindRow &row, QWidget *parent)
    : QAbstractButton(parent), m_row(row), m_chip(new HomeTileChip(row, this))
{
    setObjectName(QStringLiteral("homeTile"));
    setProperty("homeIconId", QString(QLatin1String("new_") + row.id));
    setText(Velmora::tr(row.displayName));
    setToolTip(Velmora::tr(row.summary));
    setAccessibleDescription(toolTip());
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

QSize HomeTile::sizeHint() const
{
    const int whole = margin + chipSize + captionGap + fontMetrics().height() + margin;
    return {fontMetrics().horizontalAdvance(text()) + 2 * margin, (whole + 1) / 2};
}

void HomeTile::refreshTheme()
{
    m_chip->refreshTheme();
    update();
}

QRect HomeTile::chipRect() const
{
    const int content = chipSize + captionGap + fontMetrics().height();
    return {(width() - chipSize) / 2, (height() - content) / 2, chipSize, chipSize};
}

void HomeTile::paintTexts(QPainter &painter)
{
    const int top = chipRect().bottom() + captionGap;
    const QRect caption(margin / 2, top, width() - margin, height() - top);
    painter.drawText(caption, Qt::AlignHCenter | Qt::AlignTop,
                     fontMetrics().elidedText(text(), Qt::ElideRight, caption.width()));
}

void HomeTile::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    paintTileFrame(painter, *this, m_dropTarget);
    paintTexts(painter);
}

void HomeTile::resizeEvent(QResizeEvent *event)
{
    QAbstractButton::resizeEvent(event);
    m_chip->setGeometry(chipRect());
}

void HomeTile::changeEvent(QEvent *event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        m_chip->setGeometry(chipRect());
    }
}

void HomeTile::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void HomeTile::dragEnterEvent(QDragEnterEvent *event)
{
    if (droppedPaths(event->mimeData()).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setDropTarget(true);
}

void HomeTile::dragLeaveEvent(QDragLeaveEvent * /*event*/)
{
    setDropTarget(false);
}

void HomeTile::dropEvent(QDropEvent *event)
{
    setDropTarget(false);
    const QStringList paths = droppedPaths(event->mimeData());
    if (paths.isEmpty())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT pathsDropped(paths);
}

void HomeTile::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void HomeTile::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

void HomeTile::setDropTarget(bool target)
{
    m_dropTarget = target;
    update();
}

HomeCard::HomeCard(const SessionKindRow &row, QWidget *parent) : HomeTile(row, parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip({});
}

QSize HomeCard::sizeHint() const
{
    const int texts = QFontMetrics(titleFont(font())).height() + 4 + 3 * fontMetrics().lineSpacing();
    return {280, 2 * margin + std::max(chipSize, texts)};
}

QSize HomeCard::minimumSizeHint() const
{
    return {220, sizeHint().height()};
}

QRect HomeCard::chipRect() const
{
    return {margin + 2, (height() - chipSize) / 2, chipSize, chipSize};
}

void HomeCard::paintTexts(QPainter &painter)
{
    const QFont heading = titleFont(font());
    const QFontMetrics headingMetrics(heading);
    const int left = chipRect().right() + margin + 2;
    const int available = width() - left - margin;
    const QString summary = Velmora::tr(row().summary);
    const QRect summaryBounds =
        fontMetrics().boundingRect(QRect(0, 0, available, height()), Qt::AlignLeft | Qt::TextWordWrap, summary);
    const int content = headingMetrics.height() + 4 + summaryBounds.height();
    const int top = std::max((height() - content) / 2, margin / 2);

    painter.setFont(heading);
    painter.drawText(QRect(left, top, available, headingMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                     headingMetrics.elidedText(text(), Qt::ElideRight, available));
    painter.setFont(font());
    painter.setPen(blended(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.72));
    painter.drawText(
        QRect(left, top + headingMetrics.height() + 4, available, height() - top - headingMetrics.height() - 8),
        Qt::AlignLeft | Qt::TextWordWrap, summary);
}

} // namespace velmora
