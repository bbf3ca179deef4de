#pragma once

#include "app/home/tile_button.h"

namespace velmora {

class HomeTileChip;
struct SessionKindRow;

/// A button of the home page that starts a session of one kind: by a click or a key, or by files and folders dropped on
/// it.
///
/// Object name "homeTile"; the property "homeIconId" holds "new_" and the kind.
class HomeTile : public TileButton {
    Q_OBJECT
public:
    /// `row` lives as long as the program.
    explicit HomeTile(const SessionKindRow &row, QWidget *parent = nullptr);

    [[nodiscard]] const SessionKindRow &row() const noexcept { return m_row; }

    /// The height is half of what the tile looks best with: a tile flow makes its tiles twice as high as they prefer.
    [[nodiscard]] QSize sizeHint() const override;

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    /// Local files or folders, in the order of the drop; never folders where the kind takes files only.
    void pathsDropped(const QStringList &paths);

protected:
    /// Where the icon stands.
    [[nodiscard]] virtual QRect chipRect() const;
    virtual void paintTexts(QPainter &painter);

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void showDrop(const QStringList &paths);
    void endDrop();

    const SessionKindRow &m_row;
    HomeTileChip *m_chip;
    QString m_dropNote; ///< shown in place of everything else: what is wrong with the files above the tile
    bool m_dropTarget = false;
};

/// A large home tile that also says in a sentence what its kind is for.
class HomeCard final : public HomeTile {
    Q_OBJECT
public:
    explicit HomeCard(const SessionKindRow &row, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] QRect chipRect() const override;
    void paintTexts(QPainter &painter) override;
};

} // namespace velmora
