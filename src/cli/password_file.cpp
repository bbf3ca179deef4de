#include "cli/password_file.h"

#include <QFile>

namespace velmora::cli {

QString takePassword(const Arguments &arguments, QByteArray &password)
{
    const std::optional<QString> path = arguments.value("password-file");
    if (!path)
        return {};
    QFile file(*path);
    constexpr qint64 longest = 4096;
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: cannot read the file").arg(*path);
    password = file.readLine(longest);
    while (password.endsWith('\n') || password.endsWith('\r'))
        password.chop(1);
    return {};
}

} // namespace velmora::cli
