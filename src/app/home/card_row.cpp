#include "app/home/card_row.h"

namespace velmora {

CardRow::CardRow(int gap, int narrowest, QWidget *parent) : QWidget(parent), m_gap(gap), m_narrowest(narrowest)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void CardRow::addCard(QWidget *card)
{
    card->setParent(this);
    m_cards.append(card);
    updateGeometry();
}

int CardRow::heightForWidth(int width) const
{
    const int perRow = columns(width);
    const int rows = (static_cast<int>(m_cards.size()) + perRow - 1) / perRow;
    return rows * (cardHeight() + m_gap) - m_gap;
}

QSize CardRow::sizeHint() const
{
    const int width = static_cast<int>(m_cards.size()) * (m_narrowest + m_gap) - m_gap;
    return {width, heightForWidth(width)};
}

QSize CardRow::minimumSizeHint() const
{
    return {m_narrowest, cardHeight()};
}

void CardRow::resizeEvent(QResizeEvent * /*event*/)
{
    const int perRow = columns(width());
    const int height = cardHeight();
    for (int i = 0; i < m_cards.size(); ++i) {
        // From edge to edge, so that rounding leaves no pixels at the right.
        const int column = i % perRow;
        const int left = (width() + m_gap) * column / perRow;
        const int right = (width() + m_gap) * (column + 1) / perRow - m_gap;
        m_cards[i]->setGeometry(left, i / perRow * (height + m_gap), right - left, height);
    }
}

int CardRow::columns(int width) const
{
    // All or one: two in a row would leave a hole beside the third.
    const int all = static_cast<int>(m_cards.size());
    return width >= all * (m_narrowest + m_gap) - m_gap ? std::max(all, 1) : 1;
}

int CardRow::cardHeight() const
{
    int height = 0;
    for (const QWidget *card : m_cards)
        height = std::max(height, card->sizeHint().height());
    return height;
}

} // namespace velmora
