#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace velmora {

/// Keeps the keys of a session's actions, where they work in the whole window, from being taken away from text fields
/// outside the session: what is pressed there goes to the field. Lives as long as the session.
class FieldKeys final : public QObject {
    Q_OBJECT
public:
    explicit FieldKeys(QWidget *session);

    bool eventFilter(QObject *target, QEvent *event) override;

private:
    [[nodiscard]] bool isKeyOfSession(const QKeyEvent &event) const;

    QWidget *m_session;
};

} // namespace velmora
