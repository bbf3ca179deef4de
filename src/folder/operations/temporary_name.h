#pragma once

#include <QString>

namespace velmora {

/// A name for a copy that is being made beside its target: ".velmora-", sixteen hexadecimal digits at random, ".tmp".
/// Hidden where names with a dot are, and never the name of anything of a person's.
[[nodiscard]] QString temporaryName();

/// True for a name of that form.
[[nodiscard]] bool isTemporaryName(QStringView name);

} // namespace velmora
