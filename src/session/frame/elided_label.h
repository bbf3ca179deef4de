#pragma once

#include <QLabel>

namespace velmora {

/// A line of plain text that never makes its window wider: where there is no room for all of it, it ends in an ellipsis
/// and its tool tip says the whole.
class ElidedLabel final : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(const QString &text = {}, QWidget *parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] bool isCut() const;
};

} // namespace velmora
