#include "fuzz/targets.h"

using namespace velmora;

/// VELMORA_FUZZ_TARGET names the function; what it throws ends the program, which is what libFuzzer looks for.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    fuzz::VELMORA_FUZZ_TARGET(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
