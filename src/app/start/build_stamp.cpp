#include "app/start/build_stamp.h"

/// Defined in a file that the build writes.
extern const char velmoraBuildStamp[];

namespace velmora {

QString buildStamp()
{
    return QString::fromLatin1(velmoraBuildStamp);
}

} // namespace velmora
