#pragma once

#include "session/session_bar.h"

class QSpinBox;

namespace velmora {

/// The commands of an image session.
class ImageBar final : public SessionBar {
    Q_OBJECT
public:
    explicit ImageBar(QWidget *session);

    QAction *zoomIn = nullptr;
    QAction *zoomOut = nullptr;
    QAction *fit = nullptr;
    QAction *originalSize = nullptr;
    QAction *properties = nullptr;
    QAction *exportReport = nullptr;
    QAction *nextView = nullptr; ///< of the place of the map

    /// Offers the frames of animations, from 1 on; nothing for a single one.
    void setFrameCount(int count);
    /// Counted from 0.
    [[nodiscard]] int frame() const;

Q_SIGNALS:
    void frameChosen();

private:
    void addZoom();
    void addFrames();

    QSpinBox *m_frame = nullptr;
    QList<QAction *> m_frameParts;
};

} // namespace velmora
