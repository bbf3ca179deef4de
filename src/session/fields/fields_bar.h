#pragma once

#include "session/list/list_bar.h"

namespace velmora {

/// The commands of a session that compares the fields of two files. A kind with more of its own derives from it.
class FieldsBar : public ListBar {
    Q_OBJECT
public:
    explicit FieldsBar(QWidget *session);
};

} // namespace velmora
