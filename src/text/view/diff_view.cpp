#include "text/view/diff_view.h"

#include "session/frame/notice_card.h"
#include "text/view/diff_pane.h"
#include "text/view/merge_splitter.h"
#include "text/view/overview_strip.h"
#include "text/view/pane_painter.h"
#include "text/view/text_font.h"

#include <QGridLayout>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace velmora {

namespace {

constexpr qreal smallestPointSize = 6;
constexpr qreal largestPointSize = 40;
constexpr int wheelRows = 3;
constexpr int wheelColumns = 6;
constexpr int wheelStep = 120; // eighths of a degree

} // namespace

DiffView::DiffView(QWidget *parent)
    : QWidget(parent),
      m_left(new DiffPane(m_scene, Side::Left)),
      m_right(new DiffPane(m_scene, Side::Right)),
      m_splitter(new MergeSplitter(m_scene)),
      m_overview(new OverviewStrip(m_scene, this)),
      m_vertical(new QScrollBar(Qt::Vertical, this)),
      m_horizontal(new QScrollBar(Qt::Horizontal, this)),
      m_leftNotice(new NoticeCard(m_left)),
      m_rightNotice(new NoticeCard(m_right))
{
    m_splitter->addWidget(m_left);
    m_splitter->addWidget(m_right);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setObjectName(QStringLiteral("diffSplitter"));

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(m_splitter, 0, 0);
    grid->addWidget(m_overview, 0, 1);
    grid->addWidget(m_vertical, 0, 2);
    grid->addWidget(m_horizontal, 1, 0);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);

    connect(m_vertical, &QScrollBar::valueChanged, this, &DiffView::scrollVertically);
    connect(m_horizontal, &QScrollBar::valueChanged, this,
            [this](int column) { m_scene.scrollTo(m_scene.top(), column); });
    connect(&m_scene, &DiffScene::documentChanged, this, &DiffView::fitViewport);
    connect(&m_scene, &DiffScene::documentChanged, this, &DiffView::fitScrollBars);
    connect(&m_scene, &DiffScene::metricsChanged, this, &DiffView::fitScrollBars);
    connect(&m_scene, &DiffScene::scrolled, this, &DiffView::followScene);
    for (DiffPane *shown : {m_left, m_right}) {
        connect(shown, &DiffPane::resized, this, &DiffView::fitViewport);
        connect(shown, &DiffPane::resized, this, &DiffView::panesMoved);
        connect(shown, &DiffPane::contextMenuWanted, this,
                [this, shown](QPoint at) { Q_EMIT contextMenuWanted(shown->side(), at); });
    }
    m_leftNotice->hide();
    m_rightNotice->hide();
    setFocusProxy(m_left);
    setFontPointSize(m_usualPoints);
    refreshTheme();
}

DiffView::~DiffView() = default;

void DiffView::switchPane()
{
    const Side side = m_left->hasFocus() || m_right->hasFocus() ? otherSide(activeSide()) : activeSide();
    pane(side).setFocus(Qt::ShortcutFocusReason);
}

Side DiffView::focusedSide() const
{
    if (m_left->hasFocus() || m_right->hasFocus())
        return m_right->hasFocus() ? Side::Right : Side::Left;
    return activeSide();
}

void DiffView::showNotice(Side side, bool shown)
{
    notice(side).setVisible(shown);
    placeNotices();
}

qreal DiffView::fontPointSize() const
{
    return m_scene.font().pointSizeF();
}

void DiffView::setFontPointSize(qreal size)
{
    m_scene.setFont(textFont(m_fontFamily, std::clamp(size, smallestPointSize, largestPointSize)));
    fitViewport();
    Q_EMIT fontSizeChanged();
}

void DiffView::setUsualFont(const QString &family, qreal points)
{
    m_fontFamily = family;
    m_usualPoints = points;
    setFontPointSize(fontPointSize());
}

double DiffView::leftShare() const
{
    const QList<int> sizes = m_splitter->sizes();
    const int both = sizes.at(0) + sizes.at(1);
    return both > 0 ? double(sizes.at(0)) / both : 0.5;
}

void DiffView::setLeftShare(double share)
{
    // The splitter spreads what room there is in proportion.
    constexpr int parts = 10'000;
    const int left = int(std::clamp(share, 0.1, 0.9) * parts);
    m_splitter->setSizes({left, parts - left});
}

void DiffView::zoomBy(int steps)
{
    setFontPointSize(fontPointSize() + steps);
}

void DiffView::resetZoom()
{
    setFontPointSize(m_usualPoints);
}

void DiffView::refreshTheme()
{
    m_leftNotice->refresh();
    m_rightNotice->refresh();
    m_overview->refresh();
    update();
}

void DiffView::fitViewport()
{
    const int room = std::min(m_left->textArea().width(), m_right->textArea().width()) - paneMetrics::textIndent;
    m_scene.setViewport(m_left->height(), std::max(room, 1));
    placeNotices();
}

void DiffView::fitScrollBars()
{
    const QSignalBlocker verticalBlocker(m_vertical);
    const QSignalBlocker horizontalBlocker(m_horizontal);
    m_vertical->setRange(0, int(m_scene.maximumTop().index));
    m_vertical->setPageStep(int(m_scene.layout().rowsPerPage(m_scene.viewportHeight())));
    m_horizontal->setRange(0, int(m_scene.maximumColumn()));
    m_horizontal->setPageStep(int(m_scene.columnsPerPage()));
    m_horizontal->setSingleStep(wheelColumns);
    followScene();
}

void DiffView::followScene()
{
    const QSignalBlocker verticalBlocker(m_vertical);
    const QSignalBlocker horizontalBlocker(m_horizontal);
    m_vertical->setValue(int(m_scene.top().index));
    m_horizontal->setValue(int(m_scene.column()));
}

void DiffView::scrollVertically(int index)
{
    // The bar counts rows; below the last of its steps there may be more lines of a long one.
    const RowPlace last = m_scene.maximumTop();
    m_scene.scrollTo(index >= last.index ? last : RowPlace{index, 0}, m_scene.column());
}

void DiffView::placeNotices()
{
    m_leftNotice->place();
    m_rightNotice->place();
}

void DiffView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        m_overview->refresh();
    QWidget::changeEvent(event);
}

void DiffView::wheelEvent(QWheelEvent *event)
{
    QPoint angle = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ShiftModifier) && angle.x() == 0)
        angle = angle.transposed();
    m_wheelRest += angle;
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoomBy(m_wheelRest.y() / wheelStep);
        m_wheelRest.ry() %= wheelStep;
    } else {
        const int rows = m_wheelRest.y() * wheelRows / wheelStep;
        const int columns = m_wheelRest.x() * wheelColumns / wheelStep;
        m_scene.scrollTo(m_scene.layout().moved(m_scene.top(), -rows), m_scene.column() - columns);
        m_wheelRest -= QPoint(columns * wheelStep / wheelColumns, rows * wheelStep / wheelRows);
    }
    event->accept();
}

} // namespace velmora
