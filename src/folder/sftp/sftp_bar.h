#pragma once

#include "session/list/list_bar.h"

namespace velmora {

/// The commands of a session on a remote folder.
class SftpBar final : public ListBar {
    Q_OBJECT
public:
    explicit SftpBar(QWidget *session);

    QAction *open = nullptr;
    QAction *compareContents = nullptr;
    QAction *fetch = nullptr;
};

} // namespace velmora
