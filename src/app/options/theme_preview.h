#pragma once

#include <QWidget>

namespace velmora {

/// A small comparison of two texts, painted in the colours of the theme that the application wears.
class ThemePreview final : public QWidget {
    Q_OBJECT
public:
    explicit ThemePreview(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace velmora
