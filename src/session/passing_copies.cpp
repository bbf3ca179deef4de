#include "session/passing_copies.h"

#include <QDir>

namespace velmora {

namespace {

QString beginOfCopies()
{
    return QDir::tempPath() + QLatin1String("/velmora-copies-");
}

} // namespace

QString passingCopiesTemplate()
{
    return beginOfCopies() + QLatin1String("XXXXXX");
}

bool isPassingCopy(const QString &path)
{
    // Those of hosts have a name of their own.
    return path.startsWith(beginOfCopies()) || path.startsWith(QDir::tempPath() + QLatin1String("/velmora-scp-"));
}

} // namespace velmora
