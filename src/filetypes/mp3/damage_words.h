#pragma once

#include "filetypes/mp3/engine/tag_damage.h"

#include <QString>

namespace velmora {

/// What is wrong with the tags of a file and what becomes of that, in a sentence. `file`: its name as it is shown.
[[nodiscard]] QString damageText(const TagDamage &damage, const QString &file);

} // namespace velmora
