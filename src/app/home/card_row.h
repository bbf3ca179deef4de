#pragma once

#include <QList>
#include <QWidget>

namespace velmora {

/// Places cards beside each other with equal widths, or below each other where they would become too narrow for their
/// texts. Its height is a function of its width.
class CardRow final : public QWidget {
    Q_OBJECT
public:
    /// `gap` is the distance between two cards, `narrowest` the width that a card in a row has at least.
    CardRow(int gap, int narrowest, QWidget *parent = nullptr);

    /// Takes ownership.
    void addCard(QWidget *card);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] int columns(int width) const;
    [[nodiscard]] int cardHeight() const;

    QList<QWidget *> m_cards;
    int m_gap;
    int m_narrowest;
};

} // namespace velmora
