#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace velmora {

/// Settles who gets a key while a text field has the focus. Outside the session the field does, though an action of the
/// session works with it in the whole window. In a line of text within the session, actions with Ctrl and a letter do:
/// on some systems such a line takes these keys for moving in it. Those for the clipboard and for undoing stay the
/// line's. Lives as long as the session.
class FieldKeys final : public QObject {
    Q_OBJECT
public:
    explicit FieldKeys(QWidget *session);

    bool eventFilter(QObject *target, QEvent *event) override;

private:
    [[nodiscard]] bool isKeyOfWindow(const QKeyEvent &event) const;
    [[nodiscard]] bool isCommandInLine(const QKeyEvent &event) const;

    QWidget *m_session;
};

} // namespace velmora
