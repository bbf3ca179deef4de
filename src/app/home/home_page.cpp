#include "app/home/home_page.h"

#include "app/home/card_row.h"
#include "app/home/home_tile.h"
#include "app/home/home_tile_flow_widget.h"
#include "app/home/session_search.h"
#include "app/home/tile_flow.h"
#include "app/library/recent_sessions.h"
#include "app/session_kinds.h"
#include "session/translate.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QLatin1String primaryKinds[] = {QLatin1String("folder"), QLatin1String("text"), QLatin1String("merge")};
constexpr int contentWidth = 1120;
constexpr int sideMargin = 36;
constexpr int gap = 10;
constexpr int filterWidth = 320;
constexpr int narrowestCard = 240;

/// Tiles that are widened until their rows fill a width.
struct FilledRows {
    QSize tile; ///< the least size of a tile
    int tiles = 0;

    /// As many as the width holds, or fewer where that takes no more rows and leaves a fuller last one.
    [[nodiscard]] int columns(int width) const
    {
        const int most = std::clamp((width + gap) / (tile.width() + gap), 1, 12);
        const int rows = (tiles + most - 1) / most;
        return rows > 0 ? (tiles + rows - 1) / rows : most;
    }

    /// The pixels of `width` that no whole number of wider tiles fills. A width without them has as many columns.
    [[nodiscard]] int remainder(int width) const { return (width + gap) % columns(width); }

    [[nodiscard]] TileFlow arranged(int width) const
    {
        TileFlow flow;
        flow.width = width;
        flow.fixedColumns = columns(width);
        flow.tile = {(width + gap) / flow.fixedColumns - gap, tile.height()};
        return flow;
    }

    [[nodiscard]] int height(int width) const { return arranged(width).extent(tiles).height(); }
};

/// Gives a tile flow its own width and asks for the height that follows. Inside a layout the flow could grow to more
/// columns but never back to fewer.
class TileFlowHost final : public QWidget {
public:
    TileFlowHost(HomeTileFlowWidget *flow, const FilledRows &rows, QWidget *parent)
        : QWidget(parent), m_flow(flow), m_rows(rows)
    {
        flow->setParent(this);
        QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
    }

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return m_rows.height(width); }
    [[nodiscard]] QSize sizeHint() const override { return {contentWidth, m_rows.height(contentWidth)}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {m_rows.tile.width(), m_rows.height(contentWidth)}; }

protected:
    void resizeEvent(QResizeEvent * /*event*/) override
    {
        const TileFlow flow = m_rows.arranged(width());
        m_flow->setFixedColumns(flow.fixedColumns);
        m_flow->setTileSize(flow.tile);
        m_flow->setAvailableWidth(width());
    }

private:
    HomeTileFlowWidget *m_flow;
    FilledRows m_rows;
};

/// A column in which everything ends where the rows of tiles do.
///
/// Its height is a function of its width alone. Were margins or heights set in answer to a resize, a scroll area whose
/// bar takes some of the width could show and hide the bar for ever.
class AlignedColumn final : public QVBoxLayout {
public:
    AlignedColumn(const FilledRows &rows, QWidget *parent) : QVBoxLayout(parent), m_rows(rows)
    {
        setContentsMargins(0, 0, 0, 0);
        setSpacing(0);
    }

    [[nodiscard]] int heightForWidth(int width) const override
    {
        return QVBoxLayout::heightForWidth(width - m_rows.remainder(width));
    }
    [[nodiscard]] int minimumHeightForWidth(int width) const override
    {
        return QVBoxLayout::minimumHeightForWidth(width - m_rows.remainder(width));
    }
    void setGeometry(const QRect &rect) override
    {
        QVBoxLayout::setGeometry(rect.adjusted(0, 0, -m_rows.remainder(rect.width()), 0));
    }

private:
    FilledRows m_rows;
};

QLabel *makeLabel(const QString &text, qreal scale, QFont::Weight weight, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    label->setFont(font);
    label->setWordWrap(true);
    return label;
}

bool isPrimary(const SessionKindRow &row)
{
    return std::find(std::begin(primaryKinds), std::end(primaryKinds), row.id) != std::end(primaryKinds);
}

} // namespace

HomePage::HomePage(QWidget *parent)
    : QWidget(parent), m_filter(new QLineEdit), m_recent(new RecentSessions), m_scroll(new QScrollArea(this))
{
    setObjectName(QStringLiteral("homePage"));

    m_scroll->setObjectName(QStringLiteral("homeScroll"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFocusPolicy(Qt::NoFocus);

    auto *content = new QWidget;
    content->installEventFilter(this);
    content->setObjectName(QStringLiteral("homeContent"));
    auto *column = new QWidget(content);
    column->setMaximumWidth(contentWidth);
    HomeTileFlowWidget *flow = makeSecondaryTiles();
    const FilledRows rows{flow->tileSize(), static_cast<int>(flow->tiles().size())};
    auto *host = new TileFlowHost(flow, rows, column);
    host->setObjectName(QStringLiteral("homeSecondaryHost"));
    auto *parts = new AlignedColumn(rows, column);
    parts->addWidget(makeHeading(column));
    parts->addSpacing(16);
    parts->addWidget(makePrimaryRow(column));
    parts->addSpacing(gap);
    parts->addWidget(host);
    parts->addSpacing(16);
    parts->addWidget(m_recent);
    parts->addStretch(1);
    connect(m_recent, &RecentSessions::entryChosen, this, &HomePage::entryChosen);
    // What was looked for has been found.
    connect(this, &HomePage::entryChosen, m_filter, &QLineEdit::clear);
    connect(this, &HomePage::kindChosen, m_filter, &QLineEdit::clear);
    connect(this, &HomePage::pathsDropped, m_filter, &QLineEdit::clear);

    auto *centring = new QHBoxLayout(content);
    centring->setContentsMargins(sideMargin, 20, sideMargin, 16);
    centring->addStretch(1);
    centring->addWidget(column, 1000);
    centring->addStretch(1);
    m_scroll->setWidget(content);

    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_scroll);
    setFocusProxy(m_filter);
    chainFocus();
}

void HomePage::setHistory(const QList<SessionHistory::Entry> &history)
{
    m_recent->setHistory(history);
    applyFilter();
}

void HomePage::refreshTheme()
{
    const QList<HomeTile *> tiles = findChildren<HomeTile *>();
    for (HomeTile *tile : tiles)
        tile->refreshTheme();
}

QWidget *HomePage::makeHeading(QWidget *parent)
{
    auto *heading = new QWidget(parent);
    auto *lines = new QVBoxLayout;
    lines->setSpacing(4);
    lines->addWidget(makeLabel(Velmora::tr("Velmora"), 2.2, QFont::DemiBold, heading));
    auto *hint = makeLabel(Velmora::tr("Drag folders or files onto a session icon, or click a session icon to begin:"),
                           1.1, QFont::Normal, heading);
    hint->setObjectName(QStringLiteral("homeHint"));
    lines->addWidget(hint);

    m_filter->setObjectName(QStringLiteral("homeFilter"));
    m_filter->setPlaceholderText(Velmora::tr("Find a session type or a recent session"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    // The text in it is short of nothing in any language, and leaves room for the button that clears.
    const int wholeText = m_filter->fontMetrics().horizontalAdvance(m_filter->placeholderText()) + 40;
    m_filter->setMinimumSize(wholeText, 30);
    m_filter->setMaximumWidth(std::max(filterWidth, wholeText));
    connect(m_filter, &QLineEdit::textChanged, this, &HomePage::applyFilter);
    auto *row = new QHBoxLayout(heading);
    row->setContentsMargins(2, 0, 0, 0);
    row->setSpacing(2 * gap);
    row->addLayout(lines, 3);
    row->addWidget(m_filter, 2, Qt::AlignBottom);
    return heading;
}

QWidget *HomePage::makePrimaryRow(QWidget *parent)
{
    auto *row = new CardRow(gap, narrowestCard, parent);
    row->setObjectName(QStringLiteral("homePrimaryRow"));
    for (const QLatin1String kind : primaryKinds) {
        auto *card = new HomeCard(sessionKind(kind), row);
        connectTile(card);
        row->addCard(card);
    }
    return row;
}

HomeTileFlowWidget *HomePage::makeSecondaryTiles()
{
    auto *flow = new HomeTileFlowWidget;
    flow->setObjectName(QStringLiteral("homeTileFlow"));
    for (const SessionKindRow &row : sessionKinds()) {
        if (isPrimary(row))
            continue;
        auto *tile = new HomeTile(row);
        connectTile(tile);
        flow->addTile(tile);
    }
    flow->fitTileSizeToText();
    return flow;
}

void HomePage::applyFilter()
{
    const QString words = m_filter->text().simplified();
    m_recent->setFilter(words);
    const QList<HomeTile *> tiles = findChildren<HomeTile *>();
    for (HomeTile *tile : tiles)
        tile->setEnabled(kindMatches(tile->row(), words));
    chainFocus();
    QList<TileButton *> found = tilesInOrder();
    for (TileButton *tile : std::as_const(found))
        tile->setPreferred(!words.isEmpty() && tile == found.constFirst());
    for (HomeTile *tile : tiles) {
        if (!tile->isEnabled())
            tile->setPreferred(false);
    }
}

bool HomePage::eventFilter(QObject *watched, QEvent *event)
{
    // Keys that no tile and not the line wanted pass here, before the scroll area would scroll by them.
    if (event->type() == QEvent::KeyPress && takeKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool HomePage::takeKey(QKeyEvent &event)
{
    const QList<TileButton *> tiles = tilesInOrder();
    const bool plain = !(event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier));
    if (!plain)
        return false;
    if (event.key() == Qt::Key_Escape) {
        m_filter->clear();
        m_filter->setFocus();
        return true;
    }
    if ((event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) && m_filter->hasFocus()) {
        if (!m_filter->text().trimmed().isEmpty() && !tiles.isEmpty())
            tiles.constFirst()->click();
        return true;
    }
    QList<QRect> places;
    for (const TileButton *tile : tiles)
        places.append({tile->mapTo(m_scroll->widget(), QPoint()), tile->size()});
    const qsizetype from = tiles.indexOf(qobject_cast<TileButton *>(focusWidget()));
    const qsizetype next = placeAfterKey(places, from, event.key());
    if (next >= 0) {
        focusTile(tiles[next]);
        return true;
    }
    const bool isText = !event.text().isEmpty() && event.text().front().isPrint();
    if (!m_filter->hasFocus() && (isText || event.key() == Qt::Key_Backspace)) {
        m_filter->setFocus();
        QCoreApplication::sendEvent(m_filter, &event);
        return true;
    }
    return false;
}

QList<TileButton *> HomePage::tilesInOrder() const
{
    QList<TileButton *> tiles;
    const QList<TileButton *> all = findChildren<TileButton *>();
    for (TileButton *tile : all) {
        if (tile->isEnabled() && !tile->isHidden())
            tiles.append(tile);
    }
    const auto place = [this](const TileButton *tile) { return tile->mapTo(m_scroll->widget(), QPoint()); };
    std::stable_sort(tiles.begin(), tiles.end(), [&place](const TileButton *a, const TileButton *b) {
        const QPoint here = place(a);
        const QPoint there = place(b);
        return here.y() != there.y() ? here.y() < there.y() : here.x() < there.x();
    });
    return tiles;
}

void HomePage::chainFocus()
{
    QWidget *last = m_filter;
    for (const char *place : {"homePrimaryRow", "homeTileFlow", "recentSessions"}) {
        const QList<TileButton *> tiles = findChild<QWidget *>(QLatin1String(place))->findChildren<TileButton *>();
        for (TileButton *tile : tiles) {
            setTabOrder(last, tile);
            last = tile;
        }
    }
}

void HomePage::focusTile(TileButton *tile)
{
    tile->setFocus(Qt::TabFocusReason);
    m_scroll->ensureWidgetVisible(tile);
}

void HomePage::connectTile(HomeTile *tile)
{
    const SessionKindRow &row = tile->row();
    connect(tile, &QAbstractButton::clicked, this, [this, &row] { Q_EMIT kindChosen(row); });
    connect(tile, &HomeTile::pathsDropped, this,
            [this, &row](const QStringList &paths) { Q_EMIT pathsDropped(row, paths); });
}

} // namespace velmora
