#pragma once

#include <QWidget>

#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;

namespace velmora {

/// What a card says, and its buttons. An empty text takes no room.
struct Notice {
    struct Button {
        QString text;
        std::function<void()> pressed; ///< called for as long as the card says the same
    };

    QString title; ///< in large letters
    QString text;
    std::vector<Button> buttons = {};
};

/// A card in the middle of a view that has nothing to show: why, and what can be done about it.
class NoticeCard final : public QWidget {
    Q_OBJECT
public:
    explicit NoticeCard(QWidget *parent);

    /// Shows the card with this notice. What is told again in the same words stays as it is, its buttons too.
    void tell(const Notice &notice);
    /// Hides the card, which says nothing any more.
    void clear();

    [[nodiscard]] QString title() const;

    /// The part of the parent in whose middle it stands; all of it without.
    void setRoom(const QRect &room);
    /// Moves to the middle of its room; to be called when the parent was resized.
    void place();

    /// Takes up a changed theme.
    void refresh();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QRect room() const;
    void setTexts(const QString &title, const QString &text);
    void setButtons(const std::vector<Notice::Button> &buttons);

    QLabel *m_title;
    QLabel *m_text;
    QHBoxLayout *m_buttons;
    QRect m_room;
    QStringList m_told; ///< the words of the notice
};

} // namespace velmora
