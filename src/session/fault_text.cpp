#include "session/fault_text.h"

#include "core/runner.h"
#include "session/translate.h"

namespace velmora {

QString faultText(const RunFault &fault, const QString &withoutMemory)
{
    switch (fault.kind) {
    case RunFault::Kind::None:
        return {};
    case RunFault::Kind::OutOfMemory:
        return withoutMemory;
    case RunFault::Kind::Exception:
        return Velmora::tr("The work ended unexpectedly: %1").arg(fault.what);
    case RunFault::Kind::Unknown:
        break;
    }
    return Velmora::tr("The work ended unexpectedly");
}

} // namespace velmora
