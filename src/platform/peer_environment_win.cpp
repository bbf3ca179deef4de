#include "platform/peer_environment.h"

namespace velmora {

bool peersShowTheirEnvironment() noexcept
{
    return false;
}

std::optional<QProcessEnvironment> environmentOfTwin(qintptr /*descriptor*/)
{
    return std::nullopt;
}

} // namespace velmora
