#pragma once

#include "core/side.h"
#include "session/frame/path_edit.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace velmora {

/// The head of one side of a folder comparison: its path, the button that asks for another, and the one that goes to
/// the folder around.
class FolderCompareSidePane final : public QWidget {
    Q_OBJECT
public:
    FolderCompareSidePane(Side side, QWidget *parent = nullptr);

    [[nodiscard]] QString path() const;
    void setPath(const QString &path);
    [[nodiscard]] PathEdit &edit() { return *m_edit; }

    /// What takes the keyboard, from left to right.
    [[nodiscard]] QList<QWidget *> focusParts() const;

    /// Shows that nothing may be written on this side.
    void setReadOnly(bool readOnly);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void browseRequested();
    void submitted();
    void upRequested();

private:
    PathEdit *m_edit;
    QToolButton *m_up;
    QLabel *m_lock;
};

} // namespace velmora
