#include "app/build_stamp.h"

namespace velmora {

QString buildStamp()
{
    return QStringLiteral(__DATE__ " " __TIME__);
}

} // namespace velmora
