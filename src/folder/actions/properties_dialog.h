#pragma once

#include <QDialog>
#include <QString>

namespace velmora {

/// What the file system says of one file or folder now, in lines.
[[nodiscard]] QString propertiesText(const QString &path);

/// Shows the properties of an entry, of both sides next to each other where it is on both. Opened with open().
class PropertiesDialog final : public QDialog {
    Q_OBJECT
public:
    /// Absolute paths; empty for a side that is not asked for.
    PropertiesDialog(const QString &leftPath, const QString &rightPath, QWidget *parent = nullptr);
};

} // namespace velmora
