#include "platform/process_end.h"

#include <unistd.h>

namespace velmora {

void endProcessNow(int status)
{
    _exit(status);
}

} // namespace velmora
