#include "app/home/home_tile.h"

#include "app/home/tile_frame.h"
#include "app/session_kinds.h"
#include "app/window/dropped_paths.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPainter>

namespace velmora {

namespace {

constexpr int chipSize = 64;
constexpr int margin = 14;
constexpr int captionGap = 8;

bool holdsFolder(const QStringList &paths)
{
    return std::any_of(paths.begin(), paths.end(), [](const QString &path) { return QFileInfo(path).isDir(); });
}

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
        painter.setOpacity(TileButton::opacity(*this));
        m_icon.paint(&painter, rect());
    }

private:
    QString m_kind;
    QIcon m_icon;
};

HomeTile::HomeTile(const SessionKindRow &row, QWidget *parent)
    : TileButton(parent), m_row(row), m_chip(new HomeTileChip(row, this))
{
    setObjectName(QStringLiteral("homeTile"));
    setProperty("homeIconId", QString(QLatin1String("new_") + row.id));
    setText(Velmora::tr(row.displayName));
    setToolTip(Velmora::tr(row.summary));
    setAccessibleDescription(toolTip());
    setAcceptDrops(true);
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
    return {(width() - chipSize) / 2, margin, chipSize, chipSize};
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
    if (m_dropNote.isEmpty())
        paintTexts(painter);
    else
        painter.drawText(rect().adjusted(margin / 2, margin / 2, -margin / 2, -margin / 2),
                         Qt::AlignCenter | Qt::TextWordWrap, m_dropNote);
}

void HomeTile::resizeEvent(QResizeEvent *event)
{
    TileButton::resizeEvent(event);
    m_chip->setGeometry(chipRect());
}

void HomeTile::changeEvent(QEvent *event)
{
    TileButton::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        m_chip->setGeometry(chipRect());
    }
}

void HomeTile::dragEnterEvent(QDragEnterEvent *event)
{
    const QStringList paths = droppedPaths(event->mimeData());
    if (paths.isEmpty())
        return;
    // Also what will be refused, or the tile would not hear of the end of the drag.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    showDrop(paths);
}

void HomeTile::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(m_dropTarget);
}

void HomeTile::dragLeaveEvent(QDragLeaveEvent * /*event*/)
{
    endDrop();
}

void HomeTile::dropEvent(QDropEvent *event)
{
    endDrop();
    const QStringList paths = droppedPaths(event->mimeData());
    if (paths.isEmpty() || (m_row.filesOnly && holdsFolder(paths))) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT pathsDropped(paths);
}

void HomeTile::showDrop(const QStringList &paths)
{
    m_dropTarget = !m_row.filesOnly || !holdsFolder(paths);
    if (!m_dropTarget)
        m_dropNote = Velmora::tr("Takes files, not folders");
    else if (paths.size() > m_row.sides)
        m_dropNote = Velmora::tr("Takes %1 of the %2").arg(m_row.sides).arg(paths.size());
    m_chip->setVisible(m_dropNote.isEmpty());
    update();
}

void HomeTile::endDrop()
{
    m_dropTarget = false;
    m_dropNote.clear();
    m_chip->show();
    update();
}

HomeCard::HomeCard(const SessionKindRow &row, QWidget *parent) : HomeTile(row, parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip({});
}

QSize HomeCard::sizeHint() const
{
    constexpr int lines = 3;
    const int texts = QFontMetrics(titleFont(font())).height() + 4 + lines * fontMetrics().lineSpacing();
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
    const QString summary = accessibleDescription(); // in the language of the title, always
    const QRect summaryBounds =
        fontMetrics().boundingRect(QRect(0, 0, available, height()), Qt::AlignLeft | Qt::TextWordWrap, summary);
    const int content = headingMetrics.height() + 4 + summaryBounds.height();
    const int top = std::max((height() - content) / 2, margin / 2);

    painter.setFont(heading);
    painter.drawText(QRect(left, top, available, headingMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                     headingMetrics.elidedText(text(), Qt::ElideRight, available));
    painter.setFont(font());
    painter.setPen(blended(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.72));
    const QRect rest(left, top + headingMetrics.height() + 4, available, height() - top - headingMetrics.height() - 8);
    painter.drawText(rest, Qt::AlignLeft | Qt::TextWordWrap, summary);
}

} // namespace velmora
