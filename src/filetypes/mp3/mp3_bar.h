#pragma once

#include "session/fields/fields_bar.h"

namespace velmora {

/// The commands of an MP3 session.
class Mp3Bar final : public FieldsBar {
    Q_OBJECT
public:
    explicit Mp3Bar(QWidget *session);

    QAction *editing = nullptr; ///< can be checked
    QAction *copyToRight = nullptr;
    QAction *copyToLeft = nullptr;
    QAction *copyAllToRight = nullptr;
    QAction *copyAllToLeft = nullptr;
    QAction *undo = nullptr;
    QAction *redo = nullptr;
    QAction *save = nullptr;
};

} // namespace velmora
