#include "sftp/local_host.h"

#include "support/files.h"

#include <QRandomGenerator>
#include <QStandardPaths>

namespace velmora::test {

namespace {

constexpr const char *rootFolder = "/run/sshd";

QString programOf(const char *name)
{
    const QString found = QStandardPaths::findExecutable(word(name));
    return found.isEmpty() ? QStandardPaths::findExecutable(word(name), {word("/usr/sbin"), word("/sbin")}) : found;
}

bool runs(const QString &program, const QStringList &arguments, QByteArray *output = nullptr)
{
    QProcess process;
    process.start(program, arguments);
    const bool isDone = process.waitForFinished() && process.exitCode() == 0;
    if (output)
        *output = process.readAllStandardOutput().trimmed();
    return isDone;
}

void makeScript(const QString &path, const QByteArray &script)
{
    if (!makeFile(path, "#!/bin/sh\n" + script + '\n') ||
        !QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
        qFatal("no script");
}

} // namespace

LocalHost::LocalHost()
{
    for (const char *name : {"sshd", "ssh", "scp", "ssh-keygen", "find", "xargs", "sha256sum"}) {
        if (programOf(name).isEmpty())
            m_lack = word("there is no %1 here (openssh-server brings sshd)").arg(word(name));
    }
    if (!m_lack.isEmpty())
        return;
    QByteArray user;
    if (!runs(programOf("id"), {word("-un")}, &user) || !makeKeys() || !QDir().mkpath(path("bin")) ||
        !QDir().mkpath(path("hostbin")))
        qFatal("the host cannot be set up");
    m_user = QString::fromUtf8(user);
    if (m_user == u"root" && !QFileInfo::exists(word(rootFolder)))
        m_madeFolder = QDir().mkdir(word(rootFolder));
    for (int trial = 0; trial < 5; ++trial) {
        m_port = 20'000 + QRandomGenerator::global()->bounded(40'000);
        makeConfiguration();
        if (startServer())
            break;
    }
    makeClients();
    setKnown(Known::ItsOwn);
    QByteArray answer;
    if (!runs(path("bin/ssh"), sshArguments(target({}).place, word("echo here")), &answer) || answer != "here")
        m_lack = word("sshd lets nobody in here: ") + QString::fromUtf8(m_server.readAllStandardOutput());
}

LocalHost::~LocalHost()
{
    m_server.kill();
    m_server.waitForFinished();
    if (m_madeFolder)
        QDir().rmdir(word(rootFolder));
}

bool LocalHost::makeKeys() const
{
    for (const char *name : {"host_key", "other_key", "user_key"}) {
        if (!runs(programOf("ssh-keygen"),
                  {word("-q"), word("-t"), word("ed25519"), word("-N"), QString(), word("-f"), path(name)}))
            return false;
    }
    return true;
}

void LocalHost::makeConfiguration()
{
    const QString text = word("Port %1\nListenAddress 127.0.0.1\nHostKey %2/host_key\nPidFile none\n"
                              "AuthorizedKeysFile %2/user_key.pub\nStrictModes no\nUsePAM no\n"
                              "PasswordAuthentication no\nKbdInteractiveAuthentication no\n"
                              "PermitRootLogin prohibit-password\nSubsystem sftp internal-sftp\n"
                              "SetEnv PATH=%2/hostbin:/usr/bin:/bin\n")
                             .arg(m_port)
                             .arg(m_folder.path());
    if (!makeFile(path("sshd_config"), text.toUtf8()))
        qFatal("no configuration");
}

bool LocalHost::startServer()
{
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start(programOf("sshd"), {word("-D"), word("-e"), word("-f"), path("sshd_config")});
    QByteArray said;
    while (m_server.waitForReadyRead(10'000)) {
        said += m_server.readAllStandardOutput();
        if (said.contains("Server listening")) {
            m_lack.clear();
            return true;
        }
    }
    m_lack = word("sshd does not start here: ") + QString::fromUtf8(said);
    m_server.kill();
    m_server.waitForFinished();
    return false;
}

void LocalHost::makeClients() const
{
    const QString text = word("IdentityFile %1/user_key\nIdentitiesOnly yes\nIdentityAgent none\n"
                              "UserKnownHostsFile %1/known\nGlobalKnownHostsFile /dev/null\n")
                             .arg(m_folder.path());
    if (!makeFile(path("ssh_config"), text.toUtf8()))
        qFatal("no configuration");
    for (const char *name : {"ssh", "scp"})
        makeScript(path("bin/") + word(name),
                   "exec " + programOf(name).toUtf8() + " -F '" + path("ssh_config").toUtf8() + "' \"$@\"");
    // Where ssh looks for what may ask; it says no.
    makeScript(path("bin/false"), "exit 1");
}

SshTarget LocalHost::target(const QString &folder) const
{
    return {{word("127.0.0.1"), m_port, m_user, folder}, searchPath()};
}

void LocalHost::setKnown(Known known) const
{
    const char *key = known == Known::ItsOwn ? "host_key.pub" : "other_key.pub";
    const QByteArray line = "[127.0.0.1]:" + QByteArray::number(m_port) + ' ' + contentsOf(path(key));
    if (!makeFile(path("known"), known == Known::None ? QByteArray() : line))
        qFatal("no known hosts");
}

void LocalHost::setHostProgram(const char *name, const QByteArray &script) const
{
    const QString program = path("hostbin/") + word(name);
    if (script.isEmpty())
        QFile::remove(program);
    else
        makeScript(program, script);
}

} // namespace velmora::test
