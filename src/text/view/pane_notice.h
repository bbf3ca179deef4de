#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;

namespace velmora {

/// A card in the middle of a pane that says why it shows no text, or what to do, with buttons for the ways on.
class PaneNotice final : public QWidget {
    Q_OBJECT
public:
    explicit PaneNotice(QWidget *parent);

    /// Replaces what the card says and removes its buttons.
    void setTexts(const QString &title, const QString &text);
    /// Adds a button; `pressed` is called for as long as the card says the same.
    void addButton(const QString &text, std::function<void()> pressed);

    [[nodiscard]] QString title() const;

    /// Moves to the middle of the parent; to be called when that was resized.
    void place();

    /// Takes up a changed theme.
    void refresh();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *m_title;
    QLabel *m_text;
    QHBoxLayout *m_buttons;
};

} // namespace velmora
