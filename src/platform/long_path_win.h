#pragma once

#include <QDir>
#include <QString>

#include <string>

namespace velmora {

/// The form of an absolute path that is not bound to 260 characters and is taken as it stands. One without a drive is
/// of the current one.
[[nodiscard]] inline std::wstring longPath(const QString &path)
{
    QString native = path;
    native.replace(u'/', u'\\');
    if (!native.startsWith(QLatin1String("\\\\?\\")) && !native.startsWith(QLatin1String("\\\\.\\"))) {
        if (native.startsWith(QLatin1String("\\\\")))
            native = QLatin1String("\\\\?\\UNC\\") + native.mid(2);
        else
            native.prepend(QLatin1String("\\\\?\\") +
                           (native.startsWith(u'\\') ? QDir::currentPath().left(2) : QString()));
    }
    return native.toStdWString();
}

} // namespace velmora
