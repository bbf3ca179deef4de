#pragma once

#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QString>

#include <array>

#include <sys/xattr.h>

namespace velmora::test {

inline constexpr char accessListName[] = "system.posix_acl_access";
inline constexpr char defaultListName[] = "system.posix_acl_default";

/// An access list as the kernel takes it: owner rwx, who has to get into folders with it, user 12345 `user`, group
/// `group`, mask rw-, others `other`.
inline QByteArray accessListOf(char user, char group, char other)
{
    struct Entry {
        char tag;
        char rights;
        quint32 id;
    };
    const quint32 nobody = ~quint32(0);
    const std::array<Entry, 5> entries{
        {{1, 7, nobody}, {2, user, 12'345}, {4, group, nobody}, {16, 6, nobody}, {32, other, nobody}}};
    QByteArray bytes("\x02\0\0\0", 4);
    for (const Entry &entry : entries) {
        for (const char byte : {entry.tag, '\0', entry.rights, '\0'})
            bytes += byte;
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes += char(entry.id >> shift & 0xFFU);
    }
    return bytes;
}

/// False where the file system takes no such attribute.
inline bool setAttribute(const QString &path, const char *name, const QByteArray &value)
{
    return ::setxattr(QFile::encodeName(path).constData(), name, value.constData(), std::size_t(value.size()), 0) == 0;
}

/// The attributes "user.*" and access lists.
inline QMap<QByteArray, QByteArray> attributesOf(const QString &path)
{
    const QByteArray file = QFile::encodeName(path);
    QByteArray names(64 << 10, '\0');
    names.resize(std::max<qsizetype>(::listxattr(file.constData(), names.data(), std::size_t(names.size())), 0));
    QMap<QByteArray, QByteArray> attributes;
    for (const QByteArray &name : names.split('\0')) {
        if (!name.startsWith("user.") && !name.startsWith("system.posix_acl_"))
            continue;
        QByteArray value(64 << 10, '\0');
        const ssize_t size = ::getxattr(file.constData(), name.constData(), value.data(), std::size_t(value.size()));
        attributes.insert(name, value.left(qsizetype(size)));
    }
    return attributes;
}

} // namespace velmora::test
