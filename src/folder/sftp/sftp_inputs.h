#pragma once

#include "vfs/remote/remote_place.h"

#include <QWidget>

class QGridLayout;
class QLineEdit;
class QSpinBox;

namespace velmora {

class PathEdit;

/// The fields of a session on a remote folder: host, port and user in one row, the two folders below.
class SftpInputs final : public QWidget {
    Q_OBJECT
public:
    explicit SftpInputs(QWidget *parent = nullptr);

    [[nodiscard]] RemotePlace place() const;
    /// Fills the fields; starts nothing.
    void setPlace(const RemotePlace &place);
    [[nodiscard]] QString localFolder() const;
    void setLocalFolder(const QString &folder);
    [[nodiscard]] int port() const;
    void setPort(int port);

    void setReadOnly(bool readOnly);
    /// Puts the cursor into the first field that is still empty.
    void focusFirstEmpty();

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    /// A person has chosen a folder, or pressed Return in a field.
    void submitted();

private:
    [[nodiscard]] QLineEdit *addLine(QGridLayout &grid, int row, int column, const QString &label, const char *name);

    QLineEdit *m_host;
    QSpinBox *m_port;
    QLineEdit *m_user;
    QLineEdit *m_remote;
    PathEdit *m_local;
};

} // namespace velmora
