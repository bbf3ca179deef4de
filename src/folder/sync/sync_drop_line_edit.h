#pragma once

#include <QLineEdit>

namespace velmora {

/// The line for the path of a folder: one that is dropped there fills it, and of a file the folder that it is in.
/// Several at once are left to what is behind the line.
class SyncDropLineEdit final : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

Q_SIGNALS:
    /// The line has a new path by a drop.
    void folderDropped();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};

} // namespace velmora
