#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace velmora {

/// Lets the commands of a session that have Ctrl and a letter be used while a line of text in it has the focus: on some
/// systems such a line takes these keys for moving in it. Those for the clipboard and for undoing stay the line's.
/// Lives as long as the session.
class LineEditKeys final : public QObject {
    Q_OBJECT
public:
    explicit LineEditKeys(QWidget *session);

    bool eventFilter(QObject *target, QEvent *event) override;

private:
    [[nodiscard]] bool isCommand(const QKeyEvent &event) const;

    QWidget *m_session;
};

} // namespace velmora
