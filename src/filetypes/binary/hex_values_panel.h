#pragma once

#include <QTableWidget>

namespace velmora {

class HexScene;

/// What the bytes at the caret mean, on both sides and in both byte orders.
class HexValuesPanel final : public QTableWidget {
    Q_OBJECT
public:
    /// `scene` outlives the panel.
    explicit HexValuesPanel(HexScene &scene, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refresh();

    HexScene &m_scene;
};

} // namespace velmora
