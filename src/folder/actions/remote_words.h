#pragma once

#include "vfs/remote/ssh_call.h"

#include <QString>

namespace velmora {

/// A message, and what is said beside it.
struct RemoteWords {
    QString text;
    QString detail;
};

/// Why nothing can be asked of a place; empty where something can.
[[nodiscard]] QString faultText(RemotePlaceFault fault);
/// Why `program`, ssh or scp, did not do its work for `place`.
[[nodiscard]] RemoteWords faultWords(const SshEnd &end, const QString &program, const RemotePlace &place);
/// Both as one sentence, with the address.
[[nodiscard]] QString remoteFaultText(const RemoteFault &fault);

} // namespace velmora
