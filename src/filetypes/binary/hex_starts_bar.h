#pragma once

#include "core/sides.h"

#include <QWidget>

#include <optional>

class QLineEdit;
class QPushButton;
class QToolButton;

namespace velmora {

/// The bar in which a person says where the comparison begins on each side, which shifts them against each other.
class HexStartsBar final : public QWidget {
    Q_OBJECT
public:
    explicit HexStartsBar(QWidget *parent = nullptr);

    /// Nothing while a field does not hold an offset.
    [[nodiscard]] std::optional<Sides<qint64>> starts() const;
    void setStarts(const Sides<qint64> &starts);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void compareWanted();
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    Sides<QLineEdit *> m_fields;
    QPushButton *m_reset;
    QToolButton *m_close;
};

} // namespace velmora
