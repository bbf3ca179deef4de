#pragma once

#include <QAbstractButton>

namespace velmora {

/// A tile of the home page: answers to a click, Space and Return, and leaves all other keys to the page.
///
/// A disabled tile is shown faded.
class TileButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit TileButton(QWidget *parent = nullptr);

    /// A preferred tile is marked as the one that Return opens from elsewhere.
    [[nodiscard]] bool isPreferred() const noexcept { return m_preferred; }
    void setPreferred(bool preferred);

    /// The opacity in which a tile or a part of it is painted.
    [[nodiscard]] static double opacity(const QWidget &part) { return part.isEnabled() ? 1.0 : 0.3; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    bool m_preferred = false;
};

/// Which of `places`, in reading order, a key leads to from the one at `from`: the neighbour on that side or, at the
/// end of a row, the next in reading order; Home and End lead to the first and the last. From -1 every key leads to the
/// first. The same place when there is none on that side; -1 for any other key or without places.
[[nodiscard]] qsizetype placeAfterKey(const QList<QRect> &places, qsizetype from, int key);

} // namespace velmora
