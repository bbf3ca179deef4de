#include "app/home_page.h"

#include "app/home_tile.h"
#include "app/home_tile_flow_widget.h"
#include "app/recent_sessions.h"
#include "app/session_kinds.h"
#include "session/translate.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QLatin1String primaryKinds[] = {QLatin1String("folder"), QLatin1String("text"), QLatin1String("merge")};
constexpr int contentWidth = 1120;
constexpr int sideMargin = 36;
constexpr int gap = 10;

/// Gives a tile flow its own width, widens the tiles until the rows fill it, and takes the height that follows. Inside
/// a layout the flow could grow to more columns but never back to fewer.
class TileFlowHost final : public QWidget {
public:
    using Remainder = std::function<void(int pixels)>;

    TileFlowHost(HomeTileFlowWidget *flow, Remainder remainder, QWidget *parent)
        : QWidget(parent), m_flow(flow), m_remainder(std::move(remainder)), m_fitted(flow->tileSize())
    {
        flow->setParent(this);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

protected:
    void resizeEvent(QResizeEvent * /*event*/) override
    {
        TileFlow flow;
        flow.width = width();
        flow.tile = m_fitted;
        const int columns = flow.columns(static_cast<int>(m_flow->tiles().size()));
        m_flow->setFixedColumns(columns);
        m_flow->setTileSize({(width() + gap) / columns - gap, m_fitted.height()});
        m_flow->setAvailableWidth(width());
        setFixedHeight(m_flow->height());
        m_remainder((width() + gap) % columns);
    }

private:
    HomeTileFlowWidget *m_flow;
    Remainder m_remainder;
    QSize m_fitted;
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

HomePage::HomePage(QWidget *parent) : QWidget(parent), m_recent(new RecentSessions)
{
    setObjectName(QStringLiteral("homePage"));

    auto *scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("homeScroll"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);

    auto *content = new QWidget;
    content->setObjectName(QStringLiteral("homeContent"));
    auto *column = new QWidget(content);
    column->setMaximumWidth(contentWidth);
    auto *parts = new QVBoxLayout(column);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->setSpacing(0);
    parts->addWidget(makeHeading(column));
    parts->addSpacing(20);
    QWidget *primary = makePrimaryRow(column);
    parts->addWidget(primary);
    parts->addSpacing(gap);
    parts->addWidget(makeSecondaryTiles(primary, column));
    parts->addSpacing(20);
    parts->addWidget(m_recent);
    parts->addStretch(1);
    connect(m_recent, &RecentSessions::entryChosen, this, &HomePage::entryChosen);

    auto *centring = new QHBoxLayout(content);
    centring->setContentsMargins(sideMargin, 26, sideMargin, 20);
    centring->addStretch(1);
    centring->addWidget(column, 1000);
    centring->addStretch(1);
    scroll->setWidget(content);

    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
}

void HomePage::setHistory(const QList<SessionHistory::Entry> &history)
{
    m_recent->setHistory(history);
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
    auto *lines = new QVBoxLayout(heading);
    lines->setContentsMargins(2, 0, 0, 0);
    lines->setSpacing(4);
    lines->addWidget(makeLabel(Velmora::tr("Velmora"), 2.2, QFont::DemiBold, heading));
    auto *hint = makeLabel(Velmora::tr("Drag folders or files onto a session icon, or click a session icon to begin:"),
                           1.1, QFont::Normal, heading);
    hint->setObjectName(QStringLiteral("homeHint"));
    lines->addWidget(hint);
    return heading;
}

QWidget *HomePage::makePrimaryRow(QWidget *parent)
{
    auto *row = new QWidget(parent);
    row->setObjectName(QStringLiteral("homePrimaryRow"));
    auto *cards = new QHBoxLayout(row);
    cards->setContentsMargins(0, 0, 0, 0);
    cards->setSpacing(gap);
    for (const QLatin1String kind : primaryKinds) {
        auto *card = new HomeCard(sessionKind(kind), row);
        connectTile(card);
        cards->addWidget(card, 1);
    }
    return row;
}

QWidget *HomePage::makeSecondaryTiles(QWidget *primary, QWidget *parent)
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
    // What stands above and below ends where the rows of small ones do.
    const auto align = [this, row = primary->layout()](int remainder) {
        row->setContentsMargins(0, 0, remainder, 0);
        m_recent->setContentsMargins(0, 0, remainder, 0);
    };
    auto *host = new TileFlowHost(flow, align, parent);
    host->setObjectName(QStringLiteral("homeSecondaryHost"));
    return host;
}

void HomePage::connectTile(HomeTile *tile)
{
    const SessionKindRow &row = tile->row();
    connect(tile, &QAbstractButton::clicked, this, [this, &row] { Q_EMIT kindChosen(row); });
    connect(tile, &HomeTile::pathsDropped, this,
            [this, &row](const QStringList &paths) { Q_EMIT pathsDropped(row, paths); });
}

} // namespace velmora
