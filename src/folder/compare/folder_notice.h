#pragma once

#include <QFrame>

#include <functional>

class QLabel;
class QPushButton;

namespace velmora {

/// A few words in the middle of a view that has nothing to show: why, and what can be done about it.
class FolderNotice final : public QFrame {
    Q_OBJECT
public:
    explicit FolderNotice(QWidget *parent = nullptr);

    /// Shows `text`, with a button where there is something to do. Calling it again with the same text changes nothing
    /// that a person sees.
    void tell(const QString &text, const QString &button = {}, std::function<void()> action = {});
    void clear();
    [[nodiscard]] QString text() const;

    /// The part of the parent in whose middle it stands.
    void setRoom(const QRect &room);

private:
    void place();

    QLabel *m_text;
    QPushButton *m_button;
    std::function<void()> m_action;
    QRect m_room;
};

} // namespace velmora
