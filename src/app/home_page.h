#pragma once

#include "app/session_history.h"

#include <QWidget>

namespace velmora {

class HomeTile;
class HomeTileFlowWidget;
class RecentSessions;
struct SessionKindRow;

/// The first tab: a tile for every kind of session, the everyday ones large, and the sessions of late.
class HomePage final : public QWidget {
    Q_OBJECT
public:
    explicit HomePage(QWidget *parent = nullptr);

    void setHistory(const QList<SessionHistory::Entry> &history);
    void refreshTheme();

Q_SIGNALS:
    void kindChosen(const SessionKindRow &kind);
    void pathsDropped(const SessionKindRow &kind, const QStringList &paths);
    void entryChosen(quint64 id);

private:
    [[nodiscard]] QWidget *makeHeading(QWidget *parent);
    [[nodiscard]] QWidget *makePrimaryRow(QWidget *parent);
    [[nodiscard]] HomeTileFlowWidget *makeSecondaryTiles();
    void connectTile(HomeTile *tile);

    RecentSessions *m_recent;
};

} // namespace velmora
