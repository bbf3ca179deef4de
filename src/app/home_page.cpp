#include "app/home_page.h"

#include "app/home_tile.h"
#include "app/home_tile_flow_widget.h"
#include "app/recent_sessions.h"
#include "app/session_kinds.h"
#include "app/tile_flow.h"
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

/// Tiles that are widened until their rows fill a width.
struct FilledRows {
    QSize tile; ///< the least size of a tile
    int tiles = 0;

    [[nodiscard]] int columns(int width) const { return std::clamp((width + gap) / (tile.width() + gap), 1, 12); }

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
    HomeTileFlowWidget *flow = makeSecondaryTiles();
    const FilledRows rows{flow->tileSize(), static_cast<int>(flow->tiles().size())};
    auto *host = new TileFlowHost(flow, rows, column);
    host->setObjectName(QStringLiteral("homeSecondaryHost"));
    auto *parts = new AlignedColumn(rows, column);
    parts->addWidget(makeHeading(column));
    parts->addSpacing(20);
    parts->addWidget(makePrimaryRow(column));
    parts->addSpacing(gap);
    parts->addWidget(host);
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

void HomePage::connectTile(HomeTile *tile)
{
    const SessionKindRow &row = tile->row();
    connect(tile, &QAbstractButton::clicked, this, [this, &row] { Q_EMIT kindChosen(row); });
    connect(tile, &HomeTile::pathsDropped, this,
            [this, &row](const QStringList &paths) { Q_EMIT pathsDropped(row, paths); });
}

} // namespace velmora
