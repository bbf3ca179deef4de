#include "app/library/recent_sessions.h"

#include "app/home/session_search.h"
#include "app/home/tile_button.h"
#include "app/home/tile_frame.h"
#include "app/session_kinds.h"
#include "core/visible_name.h"
#include "session/shown_path.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace velmora {

namespace {

constexpr int columns = 3;
constexpr int usual = columns; // one row: the sessions panel has the rest
constexpr int mostFound = 3 * columns;
constexpr int gap = 10;
constexpr int margin = 12;
constexpr int iconExtent = 24;

int tileHeight(const QWidget &tile)
{
    return 2 * tile.fontMetrics().height() + 2 + 2 * 8;
}

/// One remembered session: its name, and below it where its sides are.
class RecentTile final : public TileButton {
public:
    RecentTile(const SessionRecord &record, QWidget *parent) : TileButton(parent), m_kind(record.type)
    {
        for (const QString &path : {record.paths.base, record.paths.left, record.paths.right}) {
            if (!path.isEmpty())
                m_places.append(shownPath(path));
        }
        setObjectName(QStringLiteral("recentSession"));
        setText(visibleName(record.name));
        setToolTip(m_places.join(u'\n'));
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override { return {200, tileHeight(*this)}; }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        paintTileFrame(painter, *this);
        const QRect icon(margin, (height() - iconExtent) / 2, iconExtent, iconExtent);
        sessionKindIcon(m_kind).paint(&painter, icon);

        const int left = icon.right() + margin;
        const int available = width() - left - margin;
        const int lineHeight = fontMetrics().height();
        painter.drawText(QRect(left, 8, available, lineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(text(), Qt::ElideRight, available));
        painter.setPen(blended(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.65));
        painter.drawText(QRect(left, 8 + lineHeight + 2, available, lineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                         places(available));
    }

private:
    /// The places in one line of at most this width. Each loses its beginning where all do not fit.
    [[nodiscard]] QString places(int width) const
    {
        const auto separator = QStringLiteral("  ·  ");
        QStringList shown = m_places;
        if (fontMetrics().horizontalAdvance(shown.join(separator)) > width) {
            const int gaps = static_cast<int>(shown.size() - 1) * fontMetrics().horizontalAdvance(separator);
            for (QString &place : shown)
                place = fontMetrics().elidedText(place, Qt::ElideLeft, (width - gaps) / static_cast<int>(shown.size()));
        }
        return shown.join(separator);
    }

    QString m_kind;
    QStringList m_places;
};

/// The newest entries that hold all `words`, newest first, each session once.
QList<SessionHistory::Entry> newest(const QList<SessionHistory::Entry> &history, const QString &words)
{
    const qsizetype most = words.isEmpty() ? usual : mostFound;
    QList<SessionHistory::Entry> result;
    for (auto entry = history.crbegin(); entry != history.crend() && result.size() < most; ++entry) {
        if (!recordMatches(entry->record, words))
            continue;
        const bool known = std::any_of(result.begin(), result.end(), [&entry](const SessionHistory::Entry &other) {
            return other.record.type == entry->record.type && other.record.paths == entry->record.paths;
        });
        if (!known)
            result.append(*entry);
    }
    return result;
}

} // namespace

RecentSessions::RecentSessions(QWidget *parent)
    : QWidget(parent), m_grid(new QGridLayout(this)), m_nothing(new QLabel(this))
{
    setObjectName(QStringLiteral("recentSessions"));
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(gap);
    auto *heading = new QLabel(Velmora::tr("Recent sessions"), this);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setWeight(QFont::DemiBold);
    heading->setFont(font);
    m_grid->addWidget(heading, 0, 0, 1, columns);
    m_nothing->setObjectName(QStringLiteral("recentNothing"));
    m_nothing->setForegroundRole(QPalette::PlaceholderText);
    m_nothing->setWordWrap(true);
    m_nothing->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_nothing->setMinimumHeight(tileHeight(*this)); // so that nothing moves when the first session comes
    m_grid->addWidget(m_nothing, 1, 0, 1, columns);
    for (int column = 0; column < columns; ++column)
        m_grid->setColumnStretch(column, 1);
    rebuild();
}

void RecentSessions::setHistory(const QList<SessionHistory::Entry> &history)
{
    m_history = history;
    rebuild();
}

void RecentSessions::setFilter(const QString &words)
{
    m_words = words;
    rebuild();
}

void RecentSessions::rebuild()
{
    const auto old = findChildren<TileButton *>(QStringLiteral("recentSession"));
    for (TileButton *tile : old) {
        m_grid->removeWidget(tile);
        // It may be the one whose click led here.
        tile->hide();
        tile->setObjectName({});
        tile->deleteLater();
    }
    const QList<SessionHistory::Entry> shown = newest(m_history, m_words);
    for (int i = 0; i < shown.size(); ++i) {
        auto *tile = new RecentTile(shown[i].record, this);
        m_grid->addWidget(tile, 1 + i / columns, i % columns);
        connect(tile, &QAbstractButton::clicked, this, [this, id = shown[i].id] { Q_EMIT entryChosen(id); });
        tile->show();
    }
    m_nothing->setText(
        m_history.isEmpty()
            ? Velmora::tr("What you compare is remembered: it will be here, and in the panel on the left.")
            : Velmora::tr("No recent session has all of these words."));
    m_nothing->setVisible(shown.isEmpty());
}

} // namespace velmora
