#pragma once

#include "folder/sftp/engine/ssh_runs.h"

#include <QProcess>
#include <QTemporaryDir>

namespace velmora::test {

/// A host to compare with: an sshd on the loopback address with keys and configuration of its own, and programs ssh and
/// scp that know it and nothing of the person who runs the test.
class LocalHost {
public:
    LocalHost();
    ~LocalHost();

    /// Why there is no such host here; empty when there is one.
    [[nodiscard]] const QString &lack() const { return m_lack; }

    [[nodiscard]] QString path(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    [[nodiscard]] QString searchPath() const { return path("bin"); }
    /// The folder of that name on the host, which is this machine.
    [[nodiscard]] SshTarget target(const QString &folder) const;

    /// Which key of the host the client knows.
    enum class Known { ItsOwn, Another, None };
    void setKnown(Known known) const;
    /// Puts a script in the place of a program of the host; an empty one takes it away.
    void setHostProgram(const char *name, const QByteArray &script) const;

private:
    [[nodiscard]] bool makeKeys() const;
    void makeConfiguration();
    void makeClients() const;
    [[nodiscard]] bool startServer();

    QTemporaryDir m_folder;
    QString m_lack;
    QString m_user;
    int m_port = 0;
    bool m_madeFolder = false; ///< that sshd wants to exist when it runs as root
    QProcess m_server;
};

} // namespace velmora::test
