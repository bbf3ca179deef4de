#pragma once

#include "merge/model/merge_part.h"

#include <QString>

namespace velmora {

/// What a part is, in a few words: "changed on the left".
[[nodiscard]] QString partText(const MergePart &part);

/// What the result has for it: "taken from the left".
[[nodiscard]] QString choiceText(const MergePart &part);

/// Who decided that; empty while nobody has.
[[nodiscard]] QString deciderText(const MergePart &part);

/// Why a settled part is worth a look; empty when it is not.
[[nodiscard]] QString warningText(const MergePart &part);

} // namespace velmora
