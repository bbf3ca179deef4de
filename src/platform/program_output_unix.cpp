#include "platform/program_output.h"

namespace velmora {

QString decodeProgramOutput(const QByteArray &output)
{
    return QString::fromLocal8Bit(output);
}

} // namespace velmora
