#pragma once

#include "session/fields/fields_bar.h"

class QMenu;

namespace velmora {

/// The commands of a registry session.
class RegistryBar final : public FieldsBar {
    Q_OBJECT
public:
    explicit RegistryBar(QWidget *session);

    QAction *noise = nullptr;
    QAction *searchAllKeys = nullptr; ///< for the words of the filter
    QAction *encoding = nullptr;      ///< of files of version 4, with an empty menu
    QAction *savePatch = nullptr;     ///< what makes the left side into the right one
    QAction *saveReturn = nullptr;    ///< and the way back
    QAction *saveLeft = nullptr;
    QAction *saveRight = nullptr;
    QAction *writeLeft = nullptr; ///< into the live registry, to make the left side like the right one
    QAction *writeRight = nullptr;

private:
    void addSaving();
    QAction *addMenu(const Look &look, QMenu *menu);
};

} // namespace velmora
