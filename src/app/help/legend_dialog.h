#pragma once

#include <QDialog>

namespace velmora {

/// Explains the colours of folder comparisons.
class LegendDialog final : public QDialog {
    Q_OBJECT
public:
    explicit LegendDialog(QWidget *parent = nullptr);
};

} // namespace velmora
