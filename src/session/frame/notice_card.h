#pragma once

#include <QWidget>

#include <functional>

class QHBoxLayout;
class QLabel;

namespace velmora {

/// A card in the middle of a view that has nothing to show: why, and what can be done about it.
class NoticeCard final : public QWidget {
    Q_OBJECT
public:
    explicit NoticeCard(QWidget *parent);

    /// Replaces what the card says and removes its buttons. An empty part takes no room.
    void setTexts(const QString &title, const QString &text);
    /// Adds a button; `pressed` is called for as long as the card says the same.
    void addButton(const QString &text, std::function<void()> pressed);

    /// Shows the card with `text` in plain letters, or as a title when it is short, and a button where there is
    /// something to do. What is told again in the same words stays as it is, its button too.
    void tell(const QString &text, const QString &button = {}, std::function<void()> pressed = {});
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

    QLabel *m_title;
    QLabel *m_text;
    QHBoxLayout *m_buttons;
    QRect m_room;
    QString m_told; ///< with its button, by `tell`
};

} // namespace velmora
