#pragma once

#include <QWidget>

class QBoxLayout;

namespace velmora {

class ElidedLabel;

/// The line at the foot of a session: what happened last, and the formats of the files beside it, or below where there
/// is no room for both.
class StatusFoot final : public QWidget {
    Q_OBJECT
public:
    explicit StatusFoot(QWidget *parent = nullptr);

    [[nodiscard]] QString message() const;
    void showMessage(const QString &message);
    void showFormat(const QString &format);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    ElidedLabel *m_message;
    ElidedLabel *m_format;
    QBoxLayout *m_layout;
};

} // namespace velmora
