#include "session/pane/pane_view.h"

#include "session/frame/notice_card.h"
#include "session/pane/pane_painter.h"
#include "session/pane/text_font.h"
#include "session/pane/text_pane.h"

#include <QGridLayout>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QWheelEvent>

#include <algorithm>
#include <limits>

namespace velmora {

namespace {

constexpr qreal smallestPointSize = 6;
constexpr qreal largestPointSize = 40;
constexpr int wheelRows = 3;
constexpr int wheelColumns = 6;
constexpr int wheelStep = 120; // eighths of a degree

} // namespace

PaneView::PaneView(int panes, const QList<PanePair> &compared, QWidget *parent)
    : QWidget(parent),
      m_scene(panes, compared),
      m_vertical(new QScrollBar(Qt::Vertical, this)),
      m_horizontal(new QScrollBar(Qt::Horizontal, this))
{
    connect(m_vertical, &QScrollBar::valueChanged, this, &PaneView::scrollVertically);
    connect(m_horizontal, &QScrollBar::valueChanged, this,
            [this](int column) { m_scene.scrollTo(m_scene.top(), column); });
    connect(&m_scene, &PaneScene::documentChanged, this, &PaneView::fitViewport);
    connect(&m_scene, &PaneScene::documentChanged, this, &PaneView::fitScrollBars);
    connect(&m_scene, &PaneScene::metricsChanged, this, &PaneView::fitScrollBars);
    connect(&m_scene, &PaneScene::scrolled, this, &PaneView::followScene);
    for (int index = 0; index < panes; ++index) {
        auto *shown = new TextPane(m_scene, index, this);
        connect(shown, &TextPane::resized, this, &PaneView::fitViewport);
        connect(shown, &TextPane::resized, this, &PaneView::panesMoved);
        connect(shown, &TextPane::contextMenuWanted, this,
                [this, index](QPoint at) { Q_EMIT contextMenuWanted(index, at); });
        m_panes.push_back(shown);
        m_notices.push_back(new NoticeCard(shown));
        m_notices.back()->hide();
    }
    setFocusProxy(m_panes.front());
    setFontPointSize(m_usualPoints);
}

PaneView::~PaneView() = default;

void PaneView::arrange(QWidget *panes, QWidget *beside)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(panes, 0, 0);
    if (beside)
        grid->addWidget(beside, 0, 1);
    grid->addWidget(m_vertical, 0, 2);
    grid->addWidget(m_horizontal, 1, 0);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
}

void PaneView::arrangeInRow()
{
    auto *row = new QSplitter(Qt::Horizontal, this);
    fill(*row);
    arrange(row, nullptr);
}

void PaneView::fill(QSplitter &splitter)
{
    for (TextPane *shown : m_panes) {
        splitter.addWidget(shown);
        splitter.setStretchFactor(splitter.count() - 1, 1);
    }
    splitter.setChildrenCollapsible(false);
}

const TextPane *PaneView::paneWithFocus() const
{
    const auto focused =
        std::find_if(m_panes.begin(), m_panes.end(), [](const TextPane *shown) { return shown->hasFocus(); });
    return focused != m_panes.end() ? *focused : nullptr;
}

PaneIndex PaneView::focusedPane() const
{
    return paneWithFocus() ? paneWithFocus()->index() : activePane();
}

void PaneView::switchPane()
{
    int next = paneWithFocus() ? (activePane().number() + 1) % paneCount() : activePane().number();
    while (!pane(next).isVisibleTo(this) && next != activePane().number())
        next = (next + 1) % paneCount();
    pane(next).setFocus(Qt::ShortcutFocusReason);
}

void PaneView::showNotice(PaneIndex pane, bool shown)
{
    notice(pane).setVisible(shown);
    placeNotices();
}

qreal PaneView::fontPointSize() const
{
    return m_scene.font().pointSizeF();
}

void PaneView::setFontPointSize(qreal size)
{
    m_scene.setFont(textFont(m_fontFamily, std::clamp(size, smallestPointSize, largestPointSize)));
    fitViewport();
    Q_EMIT fontSizeChanged();
}

void PaneView::setUsualFont(const QString &family, qreal points)
{
    m_fontFamily = family;
    m_usualPoints = points;
    setFontPointSize(fontPointSize());
}

void PaneView::zoomBy(int steps)
{
    setFontPointSize(fontPointSize() + steps);
}

void PaneView::resetZoom()
{
    setFontPointSize(m_usualPoints);
}

void PaneView::refreshTheme()
{
    for (NoticeCard *shown : m_notices)
        shown->refresh();
    update();
}

void PaneView::fitViewport()
{
    int room = std::numeric_limits<int>::max();
    int height = room;
    for (const TextPane *shown : m_panes) {
        if (!shown->isVisibleTo(this))
            continue;
        room = std::min(room, shown->textArea().width() - paneMetrics::textIndent);
        height = std::min(height, shown->height());
    }
    m_scene.setViewport(height, std::max(room, 1));
    placeNotices();
}

void PaneView::fitScrollBars()
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

void PaneView::followScene()
{
    const QSignalBlocker verticalBlocker(m_vertical);
    const QSignalBlocker horizontalBlocker(m_horizontal);
    m_vertical->setValue(int(m_scene.top().index));
    m_horizontal->setValue(int(m_scene.column()));
}

void PaneView::scrollVertically(int index)
{
    // The bar counts rows; below the last of its steps there may be more lines of a long one.
    const RowPlace last = m_scene.maximumTop();
    m_scene.scrollTo(index >= last.index ? last : RowPlace{index, 0}, m_scene.column());
}

void PaneView::placeNotices()
{
    for (NoticeCard *shown : m_notices)
        shown->place();
}

void PaneView::wheelEvent(QWheelEvent *event)
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
