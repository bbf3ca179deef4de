#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;

namespace velmora {

class ElidedLabel;

/// The line at the foot of a session: what happened last, where the caret is, and the formats of the files beside it,
/// or below where there is no room for both.
class StatusFoot final : public QWidget {
    Q_OBJECT
public:
    explicit StatusFoot(QWidget *parent = nullptr);

    [[nodiscard]] QString message() const;
    void showMessage(const QString &message);
    /// Where the caret stands.
    void showPlace(const QString &place);
    void showFormat(const QString &format);
    /// How many rows differ, and in how many blocks of them; nothing for none.
    void showBlocks(qsizetype rows, qsizetype blocks);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    ElidedLabel *m_message;
    QLabel *m_place;
    QLabel *m_blocks;
    ElidedLabel *m_format;
    QBoxLayout *m_layout;
};

} // namespace velmora
