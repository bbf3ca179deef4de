#pragma once

#include <QScrollArea>

class QLabel;

namespace velmora {

class HomeTile;
class HomeTileFlowWidget;
struct SessionKindRow;

/// The first tab: a tile for every kind of session, the everyday ones large.
class HomePage final : public QWidget {
    Q_OBJECT
public:
    explicit HomePage(QWidget *parent = nullptr);

    void refreshTheme();

Q_SIGNALS:
    void kindChosen(const SessionKindRow &kind);
    void pathsDropped(const SessionKindRow &kind, const QStringList &paths);

private:
    [[nodiscard]] QWidget *makeHeading(QWidget *parent);
    [[nodiscard]] QWidget *makePrimaryRow(QWidget *parent);
    [[nodiscard]] QWidget *makeSecondaryTiles(QWidget *primary, QWidget *parent);
    void connectTile(HomeTile *tile);
};

} // namespace velmora
