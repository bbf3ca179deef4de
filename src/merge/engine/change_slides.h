#pragma once

#include "merge/engine/shortest_edit.h"

#include <span>

namespace velmora {

/// Moves each run of changed lines of `lines` to where it is to stand, as long as it says the same: a run that ends in
/// the line before it may as well begin with that line. Runs that meet become one. A run goes down as far as it can,
/// unless on its way it stands where the other text has changed lines, too: then to the last such place.
///
/// `changed` and `others` are marks as of `EditMarks`, of `lines` and of the other text.
void slideChanges(std::span<const qint32> lines, std::vector<quint8> &changed, const std::vector<quint8> &others,
                  CancelPoll &poll);

} // namespace velmora
