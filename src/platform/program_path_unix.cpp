#include "platform/program_path.h"

#include <QFileInfo>

namespace velmora {

QString programPath()
{
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
}

} // namespace velmora
