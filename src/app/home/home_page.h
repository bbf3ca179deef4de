#pragma once

#include "app/library/session_history.h"

#include <QWidget>

class QLineEdit;
class QScrollArea;

namespace velmora {

class HomeTile;
class HomeTileFlowWidget;
class RecentSessions;
class TileButton;
struct SessionKindRow;

/// The first tab: a tile for every kind of session, the everyday ones large, and the sessions of late.
///
/// What is typed, wherever the focus is on the page, goes into a line that finds kinds and sessions by words: tiles
/// that do not match are faded, and Return opens the first that does. Arrow keys, Home and End walk the tiles.
class HomePage final : public QWidget {
    Q_OBJECT
public:
    explicit HomePage(QWidget *parent = nullptr);

    void setHistory(const QList<SessionHistory::Entry> &history);
    void refreshTheme();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void kindChosen(const SessionKindRow &kind);
    void pathsDropped(const SessionKindRow &kind, const QStringList &paths);
    void entryChosen(quint64 id);

private:
    [[nodiscard]] QWidget *makeHeading(QWidget *parent);
    [[nodiscard]] QWidget *makePrimaryRow(QWidget *parent);
    [[nodiscard]] HomeTileFlowWidget *makeSecondaryTiles();
    void connectTile(HomeTile *tile);
    void applyFilter();
    [[nodiscard]] bool takeKey(QKeyEvent &event);
    /// The tiles that the keyboard reaches, in reading order.
    [[nodiscard]] QList<TileButton *> tilesInOrder() const;
    /// Lets the Tab key go from the line through the tiles in reading order; new ones stand last of the whole window.
    void chainFocus();
    void focusTile(TileButton *tile);

    QLineEdit *m_filter;
    RecentSessions *m_recent;
    QScrollArea *m_scroll;
};

} // namespace velmora
