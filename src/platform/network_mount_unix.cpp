#include "platform/network_mount.h"

#include <QFile>

namespace velmora {

namespace {

/// File systems whose files are elsewhere. "autofs" stands for those that are mounted when somebody looks.
bool isNetworkFileSystem(const QByteArray &type)
{
    static constexpr const char *types[] = {"afs",   "autofs",    "ceph",   "cifs",  "coda", "davfs",
                                            "gfs2",  "glusterfs", "lustre", "ncpfs", "nfs",  "nfs4",
                                            "ocfs2", "orangefs",  "smb3",   "smbfs"};
    static constexpr const char *overFuse[] = {"fuse.cephfs",     "fuse.davfs2",    "fuse.glusterfs",
                                               "fuse.gvfsd-fuse", "fuse.rclone",    "fuse.s3fs",
                                               "fuse.sshfs",      "fuse.curlftpfs", "fuse.kio-fuse"};
    const auto isNamed = [&type](const char *name) { return type == name; };
    return std::any_of(std::begin(types), std::end(types), isNamed) ||
           std::any_of(std::begin(overFuse), std::end(overFuse), isNamed);
}

/// Blanks, tabs, line feeds and backslashes stand in the list of mounts as a backslash and three octal digits.
QString unescaped(const QByteArray &field)
{
    QByteArray name;
    for (qsizetype at = 0; at < field.size(); ++at) {
        bool isNumber = false;
        const uint code = field[at] == '\\' ? field.mid(at + 1, 3).toUInt(&isNumber, 8) : 0;
        if (isNumber)
            at += 3;
        name += isNumber ? static_cast<char>(code) : field[at];
    }
    return QFile::decodeName(name);
}

bool liesIn(const QString &path, const QString &folder)
{
    return folder == QLatin1String("/") || path == folder || path.startsWith(folder + u'/');
}

} // namespace

QString networkMountOf(const QString &path)
{
    QFile file(QStringLiteral("/proc/self/mountinfo"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString mount;
    bool isNetwork = false;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype dash = fields.indexOf("-"); // optional fields stand before it
        if (fields.size() < 5 || dash < 0 || dash + 1 >= fields.size())
            continue;
        const QString point = unescaped(fields[4]);
        // Of two mounts at one place the later one hides the other.
        if (liesIn(path, point) && point.size() >= mount.size()) {
            mount = point;
            isNetwork = isNetworkFileSystem(fields[dash + 1]);
        }
    }
    return isNetwork ? mount : QString();
}

} // namespace velmora
