#pragma once

#include "filetypes/registry/engine/registry_tree.h"

#include <QDialog>

namespace velmora {

/// Shows what is going to be written into the live registry, as a `.reg` file has it, before it is.
class RegistryPreview final : public QDialog {
    Q_OBJECT
public:
    /// `place`: the key that is written to.
    RegistryPreview(const RegistryTree &patch, const QString &place, QWidget *parent);
};

} // namespace velmora
