#pragma once

#include "core/sides.h"
#include "vfs/tree_source.h"

#include <QDialog>
#include <QString>

namespace velmora {

/// What the file system says of one file or folder now, in lines; of another tree what that knows, and what it is.
[[nodiscard]] QString propertiesText(const TreeFolder &entry);

/// Shows the properties of an entry, of both sides next to each other where it is on both. Opened with open().
class PropertiesDialog final : public QDialog {
    Q_OBJECT
public:
    /// Without a path for a side that is not asked for.
    explicit PropertiesDialog(const Sides<TreeFolder> &entries, QWidget *parent = nullptr);
};

} // namespace velmora
